// solsys info: what is known of a body.
#include <fmt/format.h>

#include <cmath>
#include <memory>

#include "apps/solsys/bodies.h"
#include "apps/solsys/commands.h"
#include "apps/solsys/failure.h"
#include "apps/solsys/options.h"
#include "apps/solsys/place.h"

namespace app {
namespace {

constexpr double kAuKm = 149597870.7;
constexpr double kSecondsPerDay = 86400.0;
constexpr double kSunMassKg = 1.98841e30;  // GM of the Sun over G (CODATA 2018)
constexpr double kSunGm = 0.00029591220828411956;

struct Fact {
    std::string key, title;
    Cell value;
    Shown shown;
};

// Physical values that are not known are -1, or 0 where 0 has no meaning.
Cell known(double value) { return value > 0 ? Cell(value) : Cell(); }

Shown general(int digits, const char* unit) {
    return
        [digits, unit](double value) { return fmt::format("{:.{}g} {}", value, digits, unit); };
}

// A length of time in the unit that people use for it; negative is retrograde.
std::string shown_days(double days) {
    const double length = std::fabs(days);
    if (length < 3) return fmt::format("{:.5g} h", days * 24);
    if (length < 1000) return fmt::format("{:.6g} d", days);
    return fmt::format("{:.6g} d ({:.4g} years)", days, days / 365.25);
}

std::vector<Fact> facts_of(CSWSolSys& model, const Body& body) {
    const SSO_ID& id = body.id;
    const SSO_ID parent = model.GetCentralBodyID(id);
    std::vector<SSO_ID> moons;
    const int moon_count = model.GetMoonsListFor(id, &moons);

    double flattening = 0;
    const double radius = model.GetRadiEq(id, &flattening);
    const double gm = model.GetGravity(id);
    const double volume =
        4.0 / 3 * std::acos(-1.0) * std::pow(radius * 1e3, 3) * (1 - flattening);
    const double mass = gm / kSunGm * kSunMassKg;
    const double gravity = gm * kAuKm * kAuKm * kAuKm / (kSecondsPerDay * kSecondsPerDay) *
                           1e3 / (radius * radius);
    double axes[3] = {0, 0, 0};
    const bool rotates = model.GetPolarAxes(id, axes) && (axes[0] != 0 || axes[1] != 0);
    const auto pole = [&](int i) { return rotates ? Cell(axes[i] * kDegrees) : Cell(); };
    const double turn = 360 * std::floor(axes[2] * kDegrees / 360);

    return {
        {"id", "", code_of(id), nullptr},
        {"name", "Body", body.name, nullptr},
        {"parent", "Moves about", id == parent ? Cell() : Cell(name_of(parent)), nullptr},
        {"moons", "Moons", static_cast<long long>(moon_count), nullptr},
        {"radius_km", "Equatorial radius", known(radius), general(6, "km")},
        {"flattening", "Flattening", flattening, fixed(5)},
        {"gm_km3_s2", "GM",
         known(gm * kAuKm * kAuKm * kAuKm / (kSecondsPerDay * kSecondsPerDay)),
         general(6, "km\u00b3/s\u00b2")},
        {"mass_kg", "Mass", known(mass), general(4, "kg")},
        {"density_kg_m3", "Mean density", gm > 0 && radius > 0 ? Cell(mass / volume) : Cell(),
         general(4, "kg/m\u00b3")},
        {"surface_gravity_m_s2", "Surface gravity",
         gm > 0 && radius > 0 ? Cell(gravity * 1e0) : Cell(), general(3, "m/s\u00b2")},
        {"orbital_period_days", "Orbital period",
         id == parent ? Cell() : known(model.GetOrbitalPeriod(id)), shown_days},
        {"rotation_period_days", "Rotation period", known(model.GetPeriodRotation(id)),
         shown_days},
        {"solar_day_days", "Solar day",
         id == parent || !(model.GetPeriodRotation(id) > 0) ? Cell()
                                                            : Cell(model.GetSolarDay(id)),
         shown_days},
        {"pole_ra_deg", "Pole, right ascension", pole(0), general(7, "\u00b0 (J2000)")},
        {"pole_dec_deg", "Pole, declination", pole(1), general(7, "\u00b0 (J2000)")},
        {"prime_meridian_deg", "Prime meridian now",
         rotates ? Cell(axes[2] * kDegrees - turn) : Cell(), general(7, "\u00b0")},
    };
}

void run(const std::vector<std::string>& names, const Options& options) {
    CSWSolSys model;
    open_model(model, options);
    const Format format = options.format();
    const Tt tt = tt_from_utc(parse_time(options.time.empty() ? "now" : options.time));
    move_to(model, tt);

    std::vector<std::vector<Fact>> bodies;
    for (const std::string& name : names) {
        const Body body = parse_body(name);
        if (!model.CheckSSO(&body.id))
            throw BadInput(fmt::format("no body '{}' in the catalogue", name));
        bodies.push_back(facts_of(model, body));
    }
    if (format == Format::kTable) {
        for (const auto& facts : bodies) {
            for (const Fact& fact : facts) {
                const std::string text = text_of(fact.value, fact.shown);
                if (!fact.title.empty() && !text.empty())
                    fmt::print("{:<22} {}\n", fact.title, text);
            }
            if (&facts != &bodies.back()) fmt::print("\n");
        }
        return;
    }
    std::vector<Column> columns;
    for (const Fact& fact : bodies.front())
        columns.push_back({fact.key, fact.title, fact.shown});
    Report report(std::move(columns));
    for (const auto& facts : bodies) {
        std::vector<Cell> row;
        for (const Fact& fact : facts) row.push_back(fact.value);
        report.add(std::move(row));
    }
    report.print(format);
}

}  // namespace

void add_info(CLI::App& main) {
    auto options = std::make_shared<Options>();
    auto names = std::make_shared<std::vector<std::string>>();
    CLI::App* command = main.add_subcommand("info", "What is known of a body");
    command->add_option("body", *names, "Names (jupiter, io) or codes (plnt:5, moon:501)")
        ->required();
    add_instant_options(*command, *options);
    add_output_options(*command, *options);
    command->footer("Examples:\n  solsys info saturn\n  solsys info io europa --json");
    command->callback([options, names] { run(*names, *options); });
}

}  // namespace app
