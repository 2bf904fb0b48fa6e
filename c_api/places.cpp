// Places at the model's instant, and batches of them.
#include <cstddef>

#include "c_api/support.h"

using namespace solsys::c;
namespace sky = solsys::sky;

// Arrays of the caller's are filled in place: the records are those of the layer below.
static_assert(sizeof(solsys_place) == sizeof(sky::Place) &&
              offsetof(solsys_place, light_time_days) == offsetof(sky::Place, light_time_days));
static_assert(sizeof(solsys_horizontal) == sizeof(sky::Horizontal) &&
              offsetof(solsys_horizontal, altitude_deg) ==
                  offsetof(sky::Horizontal, altitude_deg));
static_assert(sizeof(sky::StateVector) == 6 * sizeof(double));

namespace {

solsys_place c_place(const sky::Place& p) {
    return {p.ra_deg, p.dec_deg, p.distance_au, p.light_time_days};
}
sky::Place place_of(const solsys_place* p) {
    given(p, "apparent");
    return {p->ra_deg, p->dec_deg, p->distance_au, p->light_time_days};
}

template <class T>
const T& computed(const std::optional<T>& value, const sky::Body& body) {
    if (!value)
        refuse(SOLSYS_NOT_COMPUTABLE, body.name + " cannot be computed at the model's instant");
    return *value;
}

// Rows and columns of a batch.
struct Table {
    std::vector<sky::Body> bodies;
    std::vector<sky::Instant> instants;
};

// The counts are compared before anything is read: an absurd one reads nothing.
size_t times(size_t a, size_t b) {
    if (b != 0 && a > SIZE_MAX / b)
        refuse(SOLSYS_BAD_ARGUMENT, "the counts: beyond all memory");
    return a * b;
}
void check_product(size_t rows, size_t columns, size_t out_count) {
    if (times(rows, columns) != out_count)
        refuse(SOLSYS_BAD_ARGUMENT, "out_count: it is not " + std::to_string(rows) + " times " +
                                        std::to_string(columns));
}

std::vector<sky::Instant> instants_of(const solsys_instant* first, size_t count) {
    std::vector<sky::Instant> instants;
    instants.reserve(array(first, count, "instants").size());
    for (size_t i = 0; i < count; ++i) instants.push_back(instant(first[i], "instants"));
    return instants;
}

Table table_of(const solsys_body* const* bodies, size_t body_count,
               const solsys_instant* instants, size_t instant_count) {
    Table table;
    table.bodies.reserve(array(bodies, body_count, "bodies").size());
    for (size_t b = 0; b < body_count; ++b)
        table.bodies.push_back(given(bodies[b], "bodies").body);
    table.instants = instants_of(instants, instant_count);
    return table;
}

template <class T, class Plain>
std::span<T> filled(Plain* out, size_t count) {
    array(out, count, "out");
    return {reinterpret_cast<T*>(out), count};
}

void tell_done(sky::Result<std::size_t> result, size_t* done, const solsys_control* control) {
    if (!result) refuse(SOLSYS_BAD_ARGUMENT, result.message());
    if (done != nullptr) *done = *result;
    refuse_if_stopped(control);
}

template <class T, class Batch, class Plain>
solsys_status batch(Batch fill, solsys_model* model, const solsys_body* const* bodies,
                    size_t body_count, const solsys_instant* instants, size_t instant_count,
                    Plain* out, size_t out_count, size_t* done, solsys_control* control) {
    return call([&] {
        sky::Model& m = given(model, "model").model;
        check_product(body_count, instant_count, out_count);
        const Table table = table_of(bodies, body_count, instants, instant_count);
        tell_done(fill(m, table.bodies, table.instants, filled<T>(out, out_count),
                       control_of(control)),
                  done, control);
    });
}

}  // namespace

solsys_status solsys_apparent_place(solsys_model* model, const solsys_body* body,
                                    solsys_place* out) {
    return call([&] {
        sky::Model& m = given(model, "model").model;
        const sky::Body& b = given(body, "body").body;
        given(out, "out") = c_place(computed(sky::apparent_place(m, b), b));
    });
}

solsys_status solsys_astrometric_place(solsys_model* model, const solsys_body* body,
                                       solsys_place* out) {
    return call([&] {
        sky::Model& m = given(model, "model").model;
        const sky::Body& b = given(body, "body").body;
        given(out, "out") = c_place(computed(sky::astrometric_place(m, b), b));
    });
}

solsys_status solsys_heliocentric_state(solsys_model* model, const solsys_body* body,
                                        double* out) {
    return call([&] {
        sky::Model& m = given(model, "model").model;
        const sky::Body& b = given(body, "body").body;
        given(out, "out");
        const auto state = computed(sky::heliocentric_state(m, b), b);
        std::copy(state.begin(), state.end(), out);
    });
}

solsys_status solsys_horizontal_of(const solsys_model* model, const solsys_place* apparent,
                                   solsys_horizontal* out) {
    return call([&] {
        const auto h = sky::horizontal_of(given(model, "model").model, place_of(apparent));
        given(out, "out") = {h.azimuth_deg, h.altitude_deg};
    });
}

solsys_status solsys_ecliptic_of(const solsys_model* model, const solsys_place* apparent,
                                 solsys_lon_lat* out) {
    return call([&] {
        const auto c = sky::ecliptic_of(given(model, "model").model, place_of(apparent));
        given(out, "out") = {c.lon_deg, c.lat_deg};
    });
}

solsys_status solsys_galactic_of(const solsys_model* model, const solsys_place* apparent,
                                 solsys_lon_lat* out) {
    return call([&] {
        const auto c = sky::galactic_of(given(model, "model").model, place_of(apparent));
        given(out, "out") = {c.lon_deg, c.lat_deg};
    });
}

solsys_status solsys_appearance_of(solsys_model* model, const solsys_body* body,
                                   solsys_appearance* out) {
    return call([&] {
        sky::Model& m = given(model, "model").model;
        const sky::Body& b = given(body, "body").body;
        const sky::Appearance looks =
            sky::appearance_of(m, b, computed(sky::apparent_place(m, b), b));
        solsys_appearance record{};
        record.magnitude = number(looks.magnitude);
        record.phase_angle_deg = number(looks.phase_angle_deg);
        record.illuminated_fraction = number(looks.illuminated_fraction);
        record.elongation_deg = number(looks.elongation_deg);
        record.bright_limb_deg = number(looks.bright_limb_deg);
        record.angular_diameter_arcsec = number(looks.angular_diameter_arcsec);
        copy(looks.constellation, record.constellation);
        put(record, out);
    });
}

solsys_status solsys_constellation_at(const solsys_model* model, double ra_deg, double dec_deg,
                                      int32_t* index) {
    return call([&] {
        const int found =
            sky::constellation_at(given(model, "model").model, finite(ra_deg, "ra_deg"),
                                  finite(dec_deg, "dec_deg"))
                .index;
        given(index, "index") = found;
    });
}

solsys_status solsys_constellation_name(int32_t index, char* name, size_t name_size,
                                        char* abbreviation, size_t short_size) {
    return call([&] {
        const sky::Constellation found = sky::constellation_number(index);
        if (found.index < 0)
            refuse(SOLSYS_NOT_FOUND, "no constellation " + std::to_string(index) + ": 0 to 87");
        if (name != nullptr) write(found.name, name, name_size);
        if (abbreviation != nullptr) write(found.abbreviation, abbreviation, short_size);
    });
}

solsys_status solsys_apparent_places(solsys_model* model, const solsys_body* const* bodies,
                                     size_t body_count, const solsys_instant* instants,
                                     size_t instant_count, solsys_place* out, size_t out_count,
                                     size_t* done, solsys_control* control) {
    return batch<sky::Place>(sky::apparent_places, model, bodies, body_count, instants,
                             instant_count, out, out_count, done, control);
}

solsys_status solsys_astrometric_places(solsys_model* model, const solsys_body* const* bodies,
                                        size_t body_count, const solsys_instant* instants,
                                        size_t instant_count, solsys_place* out,
                                        size_t out_count, size_t* done,
                                        solsys_control* control) {
    return batch<sky::Place>(sky::astrometric_places, model, bodies, body_count, instants,
                             instant_count, out, out_count, done, control);
}

solsys_status solsys_heliocentric_states(solsys_model* model, const solsys_body* const* bodies,
                                         size_t body_count, const solsys_instant* instants,
                                         size_t instant_count, double* out, size_t out_count,
                                         size_t* done, solsys_control* control) {
    // Not a whole number of states: one too few, which the count then tells.
    return batch<sky::StateVector>(
        sky::heliocentric_states, model, bodies, body_count, instants, instant_count, out,
        out_count % 6 == 0 ? out_count / 6 : SIZE_MAX, done, control);
}

solsys_status solsys_magnitudes(solsys_model* model, const solsys_body* const* bodies,
                                size_t body_count, const solsys_instant* instants,
                                size_t instant_count, double* out, size_t out_count,
                                size_t* done, solsys_control* control) {
    return batch<double>(sky::magnitudes, model, bodies, body_count, instants, instant_count,
                         out, out_count, done, control);
}

solsys_status solsys_horizontals(solsys_model* model, const solsys_site* sites,
                                 size_t site_count, const solsys_body* const* bodies,
                                 size_t body_count, const solsys_instant* instants,
                                 size_t instant_count, solsys_horizontal* out, size_t out_count,
                                 size_t* done, solsys_control* control) {
    return call([&] {
        sky::Model& m = given(model, "model").model;
        check_product(times(site_count, body_count), instant_count, out_count);
        std::vector<sky::Site> from;
        for (const solsys_site& one : array(sites, site_count, "sites"))
            from.push_back(site(&one, "sites"));
        const Table table = table_of(bodies, body_count, instants, instant_count);
        tell_done(
            sky::horizontals(m, from, table.bodies, table.instants,
                             filled<sky::Horizontal>(out, out_count), control_of(control)),
            done, control);
    });
}

solsys_status solsys_constellations(solsys_model* model, const solsys_instant* instants,
                                    size_t instant_count, const solsys_place* places,
                                    size_t place_count, int8_t* out, size_t* done,
                                    solsys_control* control) {
    return call([&] {
        sky::Model& m = given(model, "model").model;
        if (instant_count == 0 ? place_count != 0 : place_count % instant_count != 0)
            refuse(SOLSYS_BAD_ARGUMENT, "place_count: no rows of one place per instant");
        const auto at = instants_of(instants, instant_count);
        tell_done(sky::constellations(m, at, filled<const sky::Place>(places, place_count),
                                      array(out, place_count, "out"), control_of(control)),
                  done, control);
    });
}

solsys_status solsys_separations(const solsys_place* first, size_t first_count,
                                 const solsys_place* second, size_t second_count, double* out,
                                 size_t out_count) {
    return call([&] {
        tell_done(sky::separations(filled<const sky::Place>(first, first_count),
                                   filled<const sky::Place>(second, second_count),
                                   array(out, out_count, "out")),
                  nullptr, nullptr);
    });
}
