#include "apps/solsys/site.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <charconv>
#include <cmath>

#include "apps/solsys/failure.h"
#include "apps/solsys/text.h"
#include "solsys/sso_id.h"

namespace app {
namespace {

constexpr double kDegree = 0.017453292519943295;
constexpr double kAuM = 149597870700.0;

struct City {
    const char* name;
    const char* country;
    double latitude_deg, longitude_deg, elevation_m;
    const char* zone;
};
constexpr City kCities[] = {
#include "cities.inc"
};

Site site_of(const City& city) {
    return {fmt::format("{} ({})", city.name, city.country), city.latitude_deg,
            city.longitude_deg, city.elevation_m, city.zone};
}

}  // namespace

Site parse_site(const std::string& text) {
    double values[3] = {0, 0, 0};
    int count = 0;
    const char* at = text.data();
    const char* const end = at + text.size();
    while (count < 3) {
        while (at != end && *at == ' ') ++at;
        if (at != end && *at == '+') ++at;
        const auto [stop, error] = std::from_chars(at, end, values[count]);
        if (error != std::errc{}) break;
        ++count;
        at = stop;
        if (at == end || *at != ',') break;
        ++at;
    }
    // The negated comparisons also refuse what is not a number.
    if (count < 2 || at != end || !(std::fabs(values[0]) <= 90) ||
        !(std::fabs(values[1]) <= 360) || !(values[2] >= -12000 && values[2] <= 1e9))
        throw BadInput(fmt::format(
            "'{}' is no site: use LAT,LON[,HEIGHT_M] in degrees north and east and metres",
            text));
    return {fmt::format("{:.4f}, {:.4f}", values[0], values[1]), values[0], values[1],
            values[2], "UTC"};
}

Site find_city(const std::string& name) {
    const std::string wanted = folded(name);
    std::vector<std::string> close;
    for (const City& city : kCities) {
        if (wanted == folded(city.name) ||
            wanted == folded(fmt::format("{},{}", city.name, city.country)))
            return site_of(city);
        if (!wanted.empty() && folded(city.name).find(wanted) != std::string::npos &&
            close.size() < 5)
            close.emplace_back(city.name);
    }
    throw BadInput(close.empty()
                       ? fmt::format("no city '{}' in the list: use --site LAT,LON", name)
                       : fmt::format("no city '{}'; perhaps {}", name, fmt::join(close, ", ")));
}

OBSERVER observer_at(const Site& site) {
    OBSERVER observer;
    observer.kind = LOCATION_SURFACE;
    observer.body_type = SSO_PLNT;
    observer.body_number = 3;
    observer.location[0] = site.height_m / kAuM;
    observer.location[1] = site.longitude_deg * kDegree;
    observer.location[2] = site.latitude_deg * kDegree;
    return observer;
}

OBSERVER geocentric_observer() {
    OBSERVER observer;
    observer.kind = LOCATION_BODY_FIXED;
    observer.body_type = SSO_PLNT;
    observer.body_number = 3;
    return observer;
}

}  // namespace app
