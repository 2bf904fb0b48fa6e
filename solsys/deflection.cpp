#include "solsys/deflection.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <string_view>

#include "core/constants.h"

namespace solsys {
namespace {

struct Row {
    std::string_view body;
    double inverse_mass, mass_sun, two_gm_c2_au, limiter, radius_km, distance_au, limb_mas,
        reach_1_mas_deg, reach_01_mas_deg;
    int used;
};
constexpr Row kRows[] = {
#include "deflection_constants.inc"
};
static_assert(kRows[0].body == "sun" && kRows[1].body == "jupiter" &&
              kRows[2].body == "saturn");

constexpr const Row& row(Deflector d) { return kRows[static_cast<std::size_t>(d)]; }

constexpr double kNowhere = 1e-10;  // au: an observer this near a centre sees no bending

}  // namespace

BendingConstants bending_constants(Deflector which, bool on_earth) {
    const Row& r = row(which);
    const double radius = r.radius_km / kAuKm;
    return {r.two_gm_c2_au, on_earth ? r.limiter : 0, on_earth ? 0 : 0.25 * radius * radius};
}

int deflector_number(const SSO_ID& body) {
    constexpr std::int32_t kNumbers[] = {10, 5, 6};  // among the planets
    if (body.type != SSO_PLNT) return -1;
    const auto* found = std::find(std::begin(kNumbers), std::end(kNumbers), body.number);
    return found == std::end(kNumbers) ? -1 : static_cast<int>(found - kNumbers);
}

Vec3 deflected(Vec3 p, Vec3 path, double tau, const DeflectingBody& body, bool on_earth) {
    // Time since the light was nearest to the body, and the body's place then.
    const double since =
        std::max(0.0, std::min(tau, -dot(p, body.to_observer) * kLightDayPerAu));
    const Vec3 to_observer = body.to_observer + since * body.velocity;
    const double em = norm(to_observer);
    if (!(em > kNowhere)) return p;
    const Vec3 e = (1 / em) * to_observer;
    const Vec3 q = tau < kStarLightTime ? unit(to_observer + path) : p;

    const BendingConstants constants = bending_constants(body.which, on_earth);
    const double least = constants.limiter + constants.limb / (em * em);
    const Vec3 sum = q + e;
    const double one_plus_cosine = std::max(dot(sum, sum) / 2, least);
    return unit(p +
                (constants.two_gm / em / one_plus_cosine) * (dot(p, q) * e - dot(p, e) * q));
}

Vec3 deflected(Vec3 p, Vec3 path, double tau, const DeflectingBodies& bodies,
               const SSO_ID& source) {
    const int self = deflector_number(source);
    for (const DeflectingBody& body : bodies.farthest_first) {
        if (self == static_cast<int>(body.which)) continue;
        p = deflected(p, path, tau, body, bodies.on_earth);
    }
    return p;
}

}  // namespace solsys
