// Risings, passages, conjunctions, gatherings, the diary.
#include <cmath>

#include "c_api/support.h"

using namespace solsys::c;
namespace sky = solsys::sky;

namespace {

constexpr size_t kMostAltitudes = 16;
constexpr double kThousandYears = 366000;  // day: of searches that nothing stops

sky::Span short_span(solsys_instant from, solsys_instant to) {
    const sky::Span span = span_of(from, to);
    if (!(span.days() <= kThousandYears))
        refuse(SOLSYS_BAD_ARGUMENT, "to: more than a thousand years after from");
    return span;
}

sky::ConjunctionWay way_of(int32_t way) {
    if (way < SOLSYS_BY_RIGHT_ASCENSION || way > SOLSYS_CLOSEST)
        refuse(SOLSYS_BAD_ARGUMENT, "way: 0 by right ascension, 1 by longitude or 2 closest");
    return static_cast<sky::ConjunctionWay>(way);
}

solsys_diary_event record_of(const sky::DiaryEvent& e) {
    solsys_diary_event r{};
    r.at = c_instant(e.at);
    r.kind = e.kind;
    r.constellation = e.constellation.value_or(-1);
    copy(e.text, r.text);
    if (e.first) copy(e.first->name, r.first);
    if (e.second) copy(e.second->name, r.second);
    r.separation_deg = number(e.separation_deg);
    r.position_angle_deg = number(e.position_angle_deg);
    r.elongation_deg = number(e.elongation_deg);
    r.magnitude = number(e.magnitude);
    r.second_magnitude = number(e.second_magnitude);
    r.distance_au = number(e.distance_au);
    r.longitude_deg = number(e.longitude_deg);
    r.latitude_deg = number(e.latitude_deg);
    r.hours_to_perigee = number(e.hours_to_perigee);
    r.hours_to_apogee = number(e.hours_to_apogee);
    r.zhr = number(e.zhr);
    r.moon_illuminated = number(e.moon_illuminated);
    for (size_t i = 0; i < e.contacts.size(); ++i) r.contacts[i] = c_instant(e.contacts[i]);
    r.azimuth_deg = number(e.azimuth_deg);
    r.altitude_deg = number(e.altitude_deg);
    return r;
}

// What is asked of the sky of a site.
struct AtSite {
    solsys_model* model;
    const solsys_site* from;
    const solsys_body* body;
    sky::Span span;
};

void risings(const AtSite& of, solsys_control* control, solsys_list*& out,
             int32_t* up_at_start) {
    const sky::Body& body = given(of.body, "body").body;
    const sky::Site here = site(of.from);
    sky::Risings found = sky::risings(given(of.model, "model").model, here, body, of.span,
                                      sky::horizon_of(here, body), control_of(control));
    if (!found.known)
        refuse(SOLSYS_NOT_COMPUTABLE, body.name + " cannot be computed where the span starts");
    if (up_at_start != nullptr) *up_at_start = found.up_at_start;
    hand_out(std::move(found.rows), out);
    refuse_if_stopped(control);
}

struct Levels {
    const solsys_altitude* first;
    size_t count;
};

void passages(const AtSite& of, const Levels& altitudes, solsys_control* control,
              solsys_list*& out) {
    if (altitudes.count > kMostAltitudes)
        refuse(SOLSYS_BAD_ARGUMENT, "altitude_count: at most 16");
    std::vector<sky::Altitude> levels;
    for (const solsys_altitude& a : array(altitudes.first, altitudes.count, "altitudes"))
        levels.push_back({finite(a.degrees, "altitudes"), a.upper_limb != 0});
    hand_out(sky::passages(given(of.model, "model").model, site(of.from),
                           given(of.body, "body").body, levels, of.span, control_of(control)),
             out);
    refuse_if_stopped(control);
}

}  // namespace

solsys_status solsys_horizon_of(const solsys_site* from, const solsys_body* body,
                                solsys_altitude* out) {
    return call([&] {
        const sky::Altitude a = sky::horizon_of(site(from), given(body, "body").body);
        given(out, "out") = {a.degrees, a.upper_limb};
    });
}

solsys_status solsys_risings(solsys_model* model, const solsys_site* from_site,
                             const solsys_body* body, solsys_instant from, solsys_instant to,
                             solsys_list** out, int32_t* up_at_start) {
    return call([&] {
        solsys_list*& handle = way_out(out);
        risings({model, from_site, body, short_span(from, to)}, nullptr, handle, up_at_start);
    });
}

solsys_status solsys_watched_risings(solsys_model* model, const solsys_site* from_site,
                                     const solsys_body* body, solsys_instant from,
                                     solsys_instant to, solsys_control* control,
                                     solsys_list** out, int32_t* up_at_start) {
    return call([&] {
        solsys_list*& handle = way_out(out);
        risings({model, from_site, body, span_of(from, to)}, control, handle, up_at_start);
    });
}

solsys_status solsys_get_rising(const solsys_list* list, size_t row, solsys_rising* out) {
    return call([&] {
        const auto& day = row_of<sky::Rising>(list, row);
        solsys_rising r{};
        r.rise = c_instant(day.rise);
        r.transit = c_instant(day.transit);
        r.set = c_instant(day.set);
        r.rise_azimuth_deg = day.rise ? day.rise_azimuth_deg : NAN;
        r.transit_altitude_deg = day.transit ? day.transit_altitude_deg : NAN;
        r.set_azimuth_deg = day.set ? day.set_azimuth_deg : NAN;
        r.astronomical_dawn = c_instant(day.astronomical_dawn);
        r.nautical_dawn = c_instant(day.nautical_dawn);
        r.civil_dawn = c_instant(day.civil_dawn);
        r.civil_dusk = c_instant(day.civil_dusk);
        r.nautical_dusk = c_instant(day.nautical_dusk);
        r.astronomical_dusk = c_instant(day.astronomical_dusk);
        put(r, out);
    });
}

solsys_status solsys_passages(solsys_model* model, const solsys_site* from_site,
                              const solsys_body* body, const solsys_altitude* altitudes,
                              size_t altitude_count, solsys_instant from, solsys_instant to,
                              solsys_list** out) {
    return call([&] {
        solsys_list*& handle = way_out(out);
        passages({model, from_site, body, short_span(from, to)}, {altitudes, altitude_count},
                 nullptr, handle);
    });
}

solsys_status solsys_watched_passages(solsys_model* model, const solsys_site* from_site,
                                      const solsys_body* body, const solsys_altitude* altitudes,
                                      size_t altitude_count, solsys_instant from,
                                      solsys_instant to, solsys_control* control,
                                      solsys_list** out) {
    return call([&] {
        solsys_list*& handle = way_out(out);
        passages({model, from_site, body, span_of(from, to)}, {altitudes, altitude_count},
                 control, handle);
    });
}

solsys_status solsys_get_passage(const solsys_list* list, size_t row, solsys_passage* out) {
    return call([&] {
        const auto& p = row_of<sky::Passage>(list, row);
        given(out, "out") = {c_instant(p.at), p.azimuth_deg, static_cast<int32_t>(p.which),
                             p.rising};
    });
}

solsys_status solsys_conjunctions(solsys_model* model, const solsys_body* first,
                                  const solsys_body* second, solsys_instant from,
                                  solsys_instant to, int32_t way, double closest_limit_deg,
                                  solsys_control* control, solsys_list** out) {
    return call([&] {
        solsys_list*& handle = way_out(out);
        hand_out(sky::conjunctions(given(model, "model").model, given(first, "first").body,
                                   given(second, "second").body, span_of(from, to), way_of(way),
                                   finite(closest_limit_deg, "closest_limit_deg"),
                                   control_of(control)),
                 handle);
        refuse_if_stopped(control);
    });
}

solsys_status solsys_get_conjunction(const solsys_list* list, size_t row,
                                     solsys_conjunction* out) {
    return call([&] {
        const auto& c = row_of<sky::Conjunction>(list, row);
        given(out, "out") = {c_instant(c.at), c.separation_deg, c.position_angle_deg,
                             c.elongation_deg};
    });
}

solsys_status solsys_gatherings(solsys_model* model, const solsys_body* const* bodies,
                                size_t body_count, solsys_instant from, solsys_instant to,
                                double limit_deg, solsys_control* control, solsys_list** out) {
    return call([&] {
        solsys_list*& handle = way_out(out);
        std::vector<sky::Body> all;
        for (const solsys_body* body : array(bodies, body_count, "bodies"))
            all.push_back(given(body, "bodies").body);
        hand_out(sky::gatherings(given(model, "model").model, all, span_of(from, to),
                                 finite(limit_deg, "limit_deg"), control_of(control)),
                 handle);
        refuse_if_stopped(control);
    });
}

solsys_status solsys_get_gathering(const solsys_list* list, size_t row, solsys_gathering* out) {
    return call([&] {
        const auto& g = row_of<sky::Gathering>(list, row);
        given(out, "out") = {
            c_instant(g.at),          g.radius_deg,           g.ra_deg,        g.dec_deg,
            c_instant(g.within.from), c_instant(g.within.to), g.elongation_deg};
    });
}

solsys_status solsys_diary(solsys_model* model, solsys_instant from, solsys_instant to,
                           const int32_t* kinds, size_t kind_count, solsys_control* control,
                           solsys_list** out) {
    return call([&] {
        solsys_list*& handle = way_out(out);
        sky::DiaryOptions options;
        for (const int32_t kind : array(kinds, kinds != nullptr ? kind_count : 0, "kinds")) {
            if (sky::name_of_kind(kind).empty())
                refuse(SOLSYS_BAD_ARGUMENT, "kinds: no kind " + std::to_string(kind));
            options.kinds.push_back(kind);
        }
        hand_out(sky::diary(given(model, "model").model, span_of(from, to), options,
                            control_of(control)),
                 handle);
        refuse_if_stopped(control);
    });
}

solsys_status solsys_get_diary_event(const solsys_list* list, size_t row,
                                     solsys_diary_event* out) {
    return call([&] { put(record_of(row_of<sky::DiaryEvent>(list, row)), out); });
}

solsys_status solsys_diary_kind_name(int32_t kind, char* buffer, size_t size) {
    return call([&] {
        const std::string_view name = sky::name_of_kind(kind);
        if (name.empty())
            refuse(SOLSYS_NOT_FOUND, "no kind " + std::to_string(kind) + ": 1 to 32");
        write(name, buffer, size);
    });
}

int32_t solsys_diary_kind(const char* name) {
    set_message("");
    return name != nullptr ? sky::find_kind(name) : 0;
}
