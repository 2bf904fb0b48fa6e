#include "sky/small_bodies.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <map>
#include <string_view>

#include "io/orbit_records.h"
#include "sky/units.h"
#include "solsys/sky/orbits.h"

namespace solsys::sky {
namespace {

using solsys_io::Comet;
using solsys_io::MinorPlanet;

struct MinorPlanetRow {
    unsigned number;
    const char* name;
    double epoch_jd, a_au, e, i_deg, node_deg, peri_deg, mean_anomaly_deg, n_deg_day;
    double h_mag, g_slope;
    const char* slope_source;
    int reference;
};
constexpr MinorPlanetRow kMinorPlanets[] = {
#include "asteroids_sample.inc"
};

struct CometRow {
    const char* designation;
    double epoch_jd, q_au, e, i_deg, node_deg, peri_deg, perihelion_jd;
    double h_mag, k_mag;
    int reference;
};
constexpr CometRow kComets[] = {
#include "comets_sample.inc"
};

template <std::size_t N>
void copy_name(const char* text, char (&out)[N]) {
    const std::string_view name(text);
    const std::size_t length = std::min(name.size(), N - 1);
    std::copy_n(name.begin(), length, out);
    out[length] = '\0';
}

MinorPlanet planet_of(const MinorPlanetRow& row) {
    MinorPlanet planet;
    planet.epoch = row.epoch_jd;
    planet.a = row.a_au;
    planet.e = row.e;
    planet.i = row.i_deg / kDegrees;
    planet.node = row.node_deg / kDegrees;
    planet.peri = row.peri_deg / kDegrees;
    planet.M = row.mean_anomaly_deg / kDegrees;
    planet.n = row.n_deg_day / kDegrees;
    planet.H = static_cast<float>(row.h_mag);
    planet.G = static_cast<float>(row.g_slope);
    planet.number = row.number;
    copy_name(row.name, planet.name);
    return planet;
}

Comet comet_of(const CometRow& row) {
    Comet comet;
    comet.epoch = row.epoch_jd;
    comet.perihelion_time = row.perihelion_jd;
    comet.q = row.q_au;
    comet.e = row.e;
    comet.i = row.i_deg / kDegrees;
    comet.node = row.node_deg / kDegrees;
    comet.peri = row.peri_deg / kDegrees;
    comet.H = static_cast<float>(row.h_mag);
    comet.K = static_cast<float>(row.k_mag);
    copy_name(row.designation, comet.name);
    return comet;
}

// "(4)vesta" and "4vesta" without the number in front; the number alone stays.
std::string_view without_number(std::string_view wanted, unsigned number) {
    for (const std::string& front :
         {"(" + std::to_string(number) + ")", std::to_string(number)})
        if (wanted.size() > front.size() && wanted.starts_with(front))
            return wanted.substr(front.size());
    return wanted;
}

}  // namespace

bool is_called(const MinorPlanet& planet, const std::string& wanted) {
    if (wanted.empty()) return false;
    const std::string name = folded(planet.name);
    if (planet.number > 0) {
        if (wanted == std::to_string(planet.number) ||
            wanted == "(" + std::to_string(planet.number) + ")")
            return true;
        // A number that is not the body's own is no part of its name.
        if (!all_digits(wanted) && without_number(wanted, planet.number) == name) return true;
    }
    return wanted == name || (planet.packed[0] != '\0' && wanted == folded(planet.packed));
}

bool is_called(const Comet& comet, const std::string& wanted) {
    if (wanted.empty()) return false;
    const std::string full = folded(comet.name);
    const std::string whole = full.substr(0, full.find('('));  // "1p/halley", "c/1995o1"
    if (wanted == full || wanted == whole) return true;
    const std::size_t slash = whole.find('/');
    if (slash == std::string::npos) return false;
    const std::string before = whole.substr(0, slash);
    // A periodic comet's number, and its name alone; a year is a name to nobody.
    if (before.size() > 1 && (wanted == before || wanted == whole.substr(slash + 1)))
        return true;
    // The discoverers in brackets, where the designation stands in front.
    return before.size() == 1 && whole.size() + 2 < full.size() &&
           wanted == full.substr(whole.size() + 1, full.size() - whole.size() - 2);
}

std::string name_of(const MinorPlanet& planet) {
    return planet.name[0] != '\0' ? planet.name : "(" + std::to_string(planet.number) + ")";
}

std::string name_of(const Comet& comet) {
    // What a periodic comet's name has in brackets tells orbits apart, not comets.
    const std::string name(comet.name);
    const bool periodic = !name.empty() && name[0] >= '0' && name[0] <= '9';
    const std::size_t bracket = name.find(" (");
    return periodic && bracket != std::string::npos ? name.substr(0, bracket) : name;
}

std::optional<MinorPlanet> sample_minor_planet(const std::string& text) {
    const std::string wanted = folded(text);
    for (const MinorPlanetRow& row : kMinorPlanets)
        if (const MinorPlanet planet = planet_of(row); is_called(planet, wanted)) return planet;
    return std::nullopt;
}

std::optional<SampleComet> sample_comet(const std::string& text, double near_jd) {
    const std::string wanted = folded(text);
    std::optional<SampleComet> best;
    for (const CometRow& row : kComets) {
        const Comet comet = comet_of(row);
        if (is_called(comet, wanted) && (!best || std::fabs(comet.epoch - near_jd) <
                                                      std::fabs(best->comet.epoch - near_jd)))
            best = SampleComet{comet, static_cast<int>(&row - kComets) + 1};
    }
    return best;
}

std::optional<SampleComet> sample_comet(int number) {
    if (number < 1 || number > static_cast<int>(std::size(kComets))) return std::nullopt;
    return SampleComet{comet_of(kComets[number - 1]), number};
}

Body body_of(const MinorPlanet& planet) {
    Body body(SSO_ID(SSO_ASTR, static_cast<std::int32_t>(planet.number)), name_of(planet),
              solsys_io::to_record(planet));
    body.elements_epoch = planet.epoch;
    return body;
}

Body body_of(const Comet& comet, int number) {
    Body body(SSO_ID(SSO_COMT, number), name_of(comet), solsys_io::to_record(comet));
    body.elements_epoch = comet.epoch;
    return body;
}

std::vector<Body> small_bodies(const Instant& near) {
    std::vector<Body> bodies;
    for (const MinorPlanetRow& row : kMinorPlanets) bodies.push_back(body_of(planet_of(row)));
    std::map<std::string, Body> comets;  // by name: several orbits of one
    for (std::size_t i = 0; i < std::size(kComets); ++i) {
        const Body body = body_of(comet_of(kComets[i]), static_cast<int>(i) + 1);
        const auto [known, added] = comets.emplace(body.name, body);
        const auto age = [&](const Body& b) {
            return std::fabs(b.elements_epoch - near.jd_tt());
        };
        if (!added && age(body) < age(known->second)) known->second = body;
    }
    for (const auto& [name, body] : comets) bodies.push_back(body);
    return bodies;
}

void suggest_small_bodies(Suggestions& suggestions) {
    for (const MinorPlanetRow& row : kMinorPlanets) suggestions.consider(row.name);
    for (const CometRow& row : kComets) {
        const std::string name = name_of(comet_of(row));
        suggestions.consider(name.substr(name.find('/') + 1));
    }
}

}  // namespace solsys::sky
