#include <charconv>
#include <cmath>
#include <map>
#include <optional>

#include "io/orbit_records.h"
#include "sky/text.h"
#include "sky/units.h"
#include "solsys/sky/orbits.h"
#include "solsys/sky/zone.h"

namespace solsys::sky {
namespace {

// Ends the reading of elements; becomes a Failure at the door.
struct Refused {
    std::string message;
};

constexpr double kGauss = 0.01720209895;  // rad/day at 1 au
constexpr double kFarthestOrbit = 1e6;    // au
constexpr double kLargestEccentricity = 100;

// key=value, key=value ...
class Assignments {
  public:
    explicit Assignments(const std::string& text) {
        for (std::size_t at = 0; at <= text.size();) {
            const std::size_t comma = std::min(text.find(',', at), text.size());
            add(text.substr(at, comma - at));
            at = comma + 1;
        }
    }

    [[nodiscard]] bool has(const std::string& key) const { return values_.contains(key); }
    [[nodiscard]] std::string text(const std::string& key) const { return values_.at(key); }

    [[nodiscard]] double number(const std::string& key) const {
        if (!has(key)) throw Refused{"the elements lack " + key};
        const std::string& value = values_.at(key);
        double number = 0;
        const char* const end = value.data() + value.size();
        const auto [stop, error] = std::from_chars(value.data(), end, number);
        if (error != std::errc{} || stop != end || !std::isfinite(number))
            throw Refused{key + "=" + value + ": not a number"};
        return number;
    }
    // In [least, greatest].
    [[nodiscard]] double number(const std::string& key, double least, double greatest) const {
        const double value = number(key);
        if (value < least || value > greatest)
            throw Refused{key + "=" + values_.at(key) + ": must be between " + fixed(least, 0) +
                          " and " + fixed(greatest, 0)};
        return value;
    }
    [[nodiscard]] double length(const std::string& key) const {
        const double value = number(key, 0, kFarthestOrbit);
        if (value == 0) throw Refused{key + "=0: no orbit"};
        return value;
    }
    // A Julian date in TT, as jd:2459800.5 or a calendar date.
    [[nodiscard]] double instant(const std::string& key) const {
        if (!has(key)) throw Refused{"the elements lack " + key};
        // "2020-07-03.68": decimals of a day behind a date.
        std::string value = values_.at(key);
        double part = 0;
        const std::size_t point = value.find('.');
        if (point != std::string::npos && value.find_first_of(":T") == std::string::npos &&
            value.find('-', 1) != std::string::npos) {
            const char* const end = value.data() + value.size();
            if (std::from_chars(value.data() + point, end, part).ptr != end)
                throw Refused{key + "=" + value + ": not a date"};
            value.resize(point);
        }
        const auto date = parse_time(value);
        if (!date) throw Refused{key + ": " + date.message()};
        return date->jd_utc() + part;  // read as TT: no scale is changed
    }

  private:
    void add(const std::string& item) {
        const std::size_t equals = item.find('=');
        std::string key = item.substr(0, equals);
        std::erase(key, ' ');
        static const char* const known[] = {"epoch", "a",  "q", "e", "i", "node", "peri",
                                            "M",     "tp", "H", "G", "K", "name"};
        for (const char* name : known) {
            if (key != name || equals == std::string::npos) continue;
            if (!values_.emplace(key, item.substr(equals + 1)).second)
                throw Refused{key + " is given twice"};
            return;
        }
        throw Refused{
            in_quotes(item) +
            " is no element: use epoch, a or q, e, i, node, peri, M or tp, H, G or K, "
            "name"};
    }

    std::map<std::string, std::string> values_;
};

// The time of perihelion from the mean anomaly at the epoch.
double perihelion_time(const Assignments& in, double epoch, double q, double e) {
    const double degrees = in.number("M");
    if (e == 1) throw Refused{"a parabola has no mean anomaly: give tp"};
    const double M = e < 1 ? std::remainder(degrees, 360) : degrees;
    const double a = q / std::fabs(1 - e);
    return epoch - M / kDegrees / (kGauss / (a * std::sqrt(a)));
}

solsys_io::Comet orbit_in(const Assignments& in) {
    solsys_io::Comet orbit;
    orbit.e = in.number("e", 0, kLargestEccentricity);
    if (in.has("a") == in.has("q")) throw Refused{"the elements need either a or q"};
    if (in.has("M") == in.has("tp")) throw Refused{"the elements need either M or tp"};
    if (in.has("a") && orbit.e >= 1) throw Refused{"an open orbit has no a: give q"};
    orbit.q = in.has("q") ? in.length("q") : in.length("a") * (1 - orbit.e);
    orbit.i = in.number("i", 0, 180) / kDegrees;
    orbit.node = in.number("node", -360, 360) / kDegrees;
    orbit.peri = in.number("peri", -360, 360) / kDegrees;
    if (in.has("tp")) {
        orbit.perihelion_time = in.instant("tp");
        orbit.epoch = in.has("epoch") ? in.instant("epoch") : orbit.perihelion_time;
    } else {
        orbit.epoch = in.instant("epoch");
        orbit.perihelion_time = perihelion_time(in, orbit.epoch, orbit.q, orbit.e);
    }
    return orbit;
}

Body body_in(const std::string& text) {
    const Assignments in(text);
    const solsys_io::Comet orbit = orbit_in(in);
    if (in.has("G") && in.has("K")) throw Refused{"G is of minor planets, K of comets"};
    const auto magnitude = [&](const char* key, float otherwise) {
        return in.has(key) ? static_cast<float>(in.number(key, -99, 99)) : otherwise;
    };
    const std::string name = in.has("name") ? in.text("name") : "object";
    const Elements elements = solsys_io::to_elements(orbit);
    if (in.has("K") || orbit.e >= 1 || (in.has("tp") && !in.has("G"))) {
        CometRecord comet;
        comet.elements = elements;
        comet.H = magnitude("H", comet.H);
        comet.K = magnitude("K", comet.K);
        Body body(SSO_ID(SSO_COMT, 0), name, comet);
        body.elements_epoch = orbit.epoch;
        return body;
    }
    AsteroidRecord asteroid;
    asteroid.elements = elements;
    asteroid.H = magnitude("H", asteroid.H);
    asteroid.G = magnitude("G", asteroid.G);
    Body body(SSO_ID(SSO_ASTR, 0), name, asteroid);
    body.elements_epoch = orbit.epoch;
    return body;
}

}  // namespace

Result<Body> parse_elements(const std::string& text) {
    try {
        return body_in(text);
    } catch (const Refused& refused) {
        return Failure{refused.message};
    }
}

}  // namespace solsys::sky
