#include "solsys/sky/facts.h"

#include <cmath>
#include <vector>

#include "core/answer_or.h"
#include "core/constants.h"
#include "sky/text.h"
#include "sky/units.h"
#include "solsys/body_frames.h"
#include "solsys/catalogue_table.h"

namespace solsys::sky {
namespace {

constexpr double kSunMassKg = 1.98841e30;  // GM of the Sun over G (CODATA 2018)
constexpr double kLeastDensity = 100;      // kg/m^3

// Physical values that are not known are -1, or 0 where 0 has no meaning.
std::optional<double> known(double value) {
    return value > 0 ? std::optional(value) : std::nullopt;
}

// The catalogue's GM of Rhea is a thousandth of what it should be: what makes a body lighter
// than any that is known is not told.
void add_mass(double gm, double radius_km, BodyFacts& facts) {
    if (!(gm > 0)) return;
    const double gm_km = gm * kAuKm * kAuKm * kAuKm / (kSecondsPerDay * kSecondsPerDay);
    const double mass_kg = gm / kSunGm * kSunMassKg;
    if (radius_km > 0) {
        const double volume_m3 =
            4.0 / 3 * kPi * std::pow(radius_km * 1e3, 3) * (1 - facts.flattening);
        const double density = mass_kg / volume_m3;
        if (density < kLeastDensity) return;
        facts.density_kg_m3 = density;
        facts.surface_gravity_m_s2 = gm_km * 1e3 / (radius_km * radius_km);
    }
    facts.gm_km3_s2 = gm_km;
    facts.mass_kg = mass_kg;
}

// Turns of a satellite's prime meridian take so long [day]; none without rotation elements.
std::optional<double> turn_of_meridian(const SSO_ID& id) {
    constexpr double kStep = 0.01;  // day
    const BodyRow* row = id.type == SSO_MOON ? catalogue_row(id.number) : nullptr;
    double ra = 0, dec = 0, before = 0, after = 0;
    if (row == nullptr || row->rotation == nullptr ||
        !row->rotation(kJ2000Day, 0, id.number, &ra, &dec, &before) ||
        !row->rotation(kJ2000Day, kStep, id.number, &ra, &dec, &after))
        return std::nullopt;
    return known(kStep * kTwoPi / std::fabs(std::remainder(after - before, kTwoPi)));
}

// The catalogue gives Titan another satellite's period, Phoebe a round one, Charon none: where
// the prime meridian turns otherwise it is believed.
void add_periods(CSWSolSys& model, const SSO_ID& id, BodyFacts& facts) {
    constexpr double kAgreement = 0.01;
    const auto adopted = known(model.GetPeriodRotation(id));
    const auto turn = turn_of_meridian(id);
    const bool agree = adopted && (!turn || std::fabs(*adopted / *turn - 1) < kAgreement);
    facts.rotation_period_days = agree ? adopted : turn;
    if (!facts.parent || !facts.rotation_period_days) return;
    const auto day = known(model.GetSolarDay(id));
    if (agree || !day) {
        facts.solar_day_days = day;
        return;
    }
    const double rotated = adopted.value_or(model.GetOrbitalPeriod(id));
    facts.solar_day_days =
        solar_day(*turn, model.GetOrbitalPeriod(facts.parent->id), *day < rotated);
}

void add_rotation(CSWSolSys& model, const SSO_ID& id, BodyFacts& facts) {
    add_periods(model, id, facts);
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
