#include "solsys/sky/facts.h"

#include <cmath>
#include <vector>

#include "core/answer_or.h"
#include "core/constants.h"
#include "sky/text.h"
#include "sky/units.h"

namespace solsys::sky {
namespace {

constexpr double kSunMassKg = 1.98841e30;  // GM of the Sun over G (CODATA 2018)

// Physical values that are not known are -1, or 0 where 0 has no meaning.
std::optional<double> known(double value) {
    return value > 0 ? std::optional(value) : std::nullopt;
}

void add_mass(double gm, double radius_km, BodyFacts& facts) {
    if (!(gm > 0)) return;
    const double gm_km = gm * kAuKm * kAuKm * kAuKm / (kSecondsPerDay * kSecondsPerDay);
    facts.gm_km3_s2 = gm_km;
    facts.mass_kg = gm / kSunGm * kSunMassKg;
    if (!(radius_km > 0)) return;
    const double volume_m3 =
        4.0 / 3 * kPi * std::pow(radius_km * 1e3, 3) * (1 - facts.flattening);
    facts.density_kg_m3 = *facts.mass_kg / volume_m3;
    facts.surface_gravity_m_s2 = gm_km * 1e3 / (radius_km * radius_km);
}

void add_rotation(CSWSolSys& model, const SSO_ID& id, BodyFacts& facts) {
    facts.rotation_period_days = known(model.GetPeriodRotation(id));
    if (facts.parent && facts.rotation_period_days)
        facts.solar_day_days = model.GetSolarDay(id);
    double axes[3] = {0, 0, 0};
    if (!model.GetPolarAxes(id, axes) || (axes[0] == 0 && axes[1] == 0)) return;
    facts.pole_ra_deg = axes[0] * kDegrees;
    facts.pole_dec_deg = axes[1] * kDegrees;
    const double turned = axes[2] * kDegrees;
    facts.prime_meridian_deg = turned - 360 * std::floor(turned / 360);
}

}  // namespace

Result<BodyFacts> facts_of(Model& model, const Body& body) {
    CSWSolSys& classic = model.classic();
    if (!classic.CheckSSO(&body.id))
        return Failure{"no body " + in_quotes(body.name) + " in the catalogue"};
    BodyFacts facts;
    facts.body = body;
    const SSO_ID parent = classic.GetCentralBodyID(body.id);
    if (!(parent == body.id)) facts.parent = Body(parent);
    const MemoryWatch memory;
    std::vector<SSO_ID> moons;
    facts.moons = classic.GetMoonsListFor(body.id, &moons);
    memory.check();
    const double radius_km = classic.GetRadiEq(body.id, &facts.flattening);
    facts.radius_km = known(radius_km);
    add_mass(classic.GetGravity(body.id), radius_km, facts);
    if (facts.parent) facts.orbital_period_days = known(classic.GetOrbitalPeriod(body.id));
    add_rotation(classic, body.id, facts);
    return facts;
}

}  // namespace solsys::sky
