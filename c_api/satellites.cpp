// Satellites of the Earth by their element sets, and their passes.
#include <cmath>

#include "c_api/support.h"

using namespace solsys::c;
namespace sky = solsys::sky;

namespace {

constexpr double kHighestHorizon = 89;

solsys_satellite_place c_place(const std::optional<sky::SatellitePlace>& p) {
    if (!p) return {c_instant(std::nullopt), NAN, NAN, NAN, NAN, NAN, NAN, NAN};
    return {c_instant(p->at), p->azimuth_deg, p->altitude_deg,     p->range_km,
            p->height_km,     p->sun_visible, p->sun_altitude_deg, number(p->magnitude)};
}

// A satellite of a list, with a standard magnitude of the caller's unless that is NaN.
sky::Satellite satellite_of(const solsys_list* list, size_t row, double standard_magnitude) {
    sky::Satellite satellite = row_of<sky::Satellite>(list, row);
    if (!std::isnan(standard_magnitude))
        satellite.standard_magnitude = finite(standard_magnitude, "standard_magnitude");
    return satellite;
}

void hand_out_satellites(sky::SatelliteList&& found, solsys_list*& handle) {
    if (found.satellites.empty())
        refuse(SOLSYS_NOT_FOUND,
               found.problems.empty() ? "no element sets in the text" : found.problems.front());
    hand_out(std::move(found.satellites), handle);
}

}  // namespace

solsys_status solsys_parse_satellites(const char* sets, solsys_list** out) {
    return call([&] {
        solsys_list*& handle = way_out(out);
        hand_out_satellites(sky::parse_satellites(text(sets, "text")), handle);
    });
}

solsys_status solsys_read_satellites(const char* path, solsys_list** out) {
    return call([&] {
        solsys_list*& handle = way_out(out);
        hand_out_satellites(value_of(sky::read_satellites(std::string(text(path, "path")))),
                            handle);
    });
}

solsys_status solsys_get_satellite(const solsys_list* list, size_t row, solsys_satellite* out) {
    return call([&] {
        const auto& satellite = row_of<sky::Satellite>(list, row);
        solsys_satellite r{};
        copy(satellite.name, r.name);
        r.epoch = c_instant(satellite.epoch());
        r.period_minutes = satellite.period_minutes();
        r.standard_magnitude = number(satellite.standard_magnitude);
        put(r, out);
    });
}

solsys_status solsys_satellite_at(solsys_model* model, const solsys_site* from,
                                  const solsys_list* satellites, size_t row,
                                  double standard_magnitude, solsys_instant t,
                                  solsys_satellite_place* out) {
    return call([&] {
        const auto place =
            sky::satellite_place(given(model, "model").model, site(from),
                                 satellite_of(satellites, row, standard_magnitude), instant(t));
        if (!place) refuse(SOLSYS_NOT_COMPUTABLE, "the satellite has no state at the instant");
        given(out, "out") = c_place(place);
    });
}

solsys_status solsys_passes(solsys_model* model, const solsys_site* from_site,
                            const solsys_list* satellites, size_t row,
                            double standard_magnitude, solsys_instant from, solsys_instant to,
                            double horizon_deg, double culmination_deg, solsys_control* control,
                            solsys_list** out) {
    return call([&] {
        solsys_list*& handle = way_out(out);
        if (!(horizon_deg >= -10 && horizon_deg <= kHighestHorizon))
            refuse(SOLSYS_BAD_ARGUMENT, "horizon_deg: -10 to 89 degrees");
        hand_out(
            sky::passes(given(model, "model").model, site(from_site),
                        satellite_of(satellites, row, standard_magnitude), span_of(from, to),
                        {horizon_deg, finite(culmination_deg, "culmination_deg")},
                        control_of(control)),
            handle);
        refuse_if_stopped(control);
    });
}

solsys_status solsys_get_pass(const solsys_list* list, size_t row, solsys_pass* out) {
    return call([&] {
        const auto& pass = row_of<sky::Pass>(list, row);
        solsys_pass r{};
        r.rise = c_place(pass.rise);
        r.culmination = c_place(pass.culmination);
        r.set = c_place(pass.set);
        r.best = c_place(pass.best);
        put(r, out);
    });
}
