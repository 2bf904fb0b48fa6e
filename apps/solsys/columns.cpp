#include "apps/solsys/columns.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

#include "apps/solsys/failure.h"
#include "solsys/de_ephemeris.h"
#include "solsys/sky/orbits.h"

namespace app {

std::string shown_elongation(double degrees) {
    if (degrees == 0) return "";
    return fmt::format("{:.1f} {}", std::fabs(degrees), degrees < 0 ? 'W' : 'E');
}

std::string shown_distance(double au) {
    constexpr double kAuPerLightYear = 63241.077;
    return au < kAuPerLightYear / 100 ? fmt::format("{:.7f} au", au)
                                      : fmt::format("{:.2f} ly", au / kAuPerLightYear);
}

std::string compass_point(double azimuth_deg) {
    static const char* const points[] = {"N", "NNE", "NE", "ENE", "E", "ESE", "SE", "SSE",
                                         "S", "SSW", "SW", "WSW", "W", "WNW", "NW", "NNW"};
    return points[static_cast<int>(azimuth_deg / 22.5 + 0.5) % 16];
}

std::string span_of_source(const sky::Model& model) {
    const auto date = [](double jd) {
        return sky::to_string(sky::Zone().date(sky::Instant::from_tt(jd)));
    };
    if (!model.classic().HasEphemeris())
        return "the built-in theory serves the years -3000 to 3000";
    const double* const range = DE_Ephemeris::getTimeRange();
    return fmt::format("the ephemeris file serves {} to {}", date(range[0]), date(range[1]));
}

void make_known(sky::Model& model, const sky::Body& body) {
    need(model.add(body));
    if (body.has_elements()) need(sky::integrate(model, body));
}

std::vector<sky::Body> bodies_called(const std::vector<std::string>& names,
                                     const sky::Instant& near) {
    std::vector<sky::Body> bodies;
    for (const std::string& name : names) {
        if (name.empty()) throw BadInput("the name of a body is empty");
        const std::vector<sky::Body> called = need(sky::find_bodies(name, near));
        bodies.insert(bodies.end(), called.begin(), called.end());
    }
    return bodies;
}

}  // namespace app
