// solsys moons: a planet's satellites beside it.
#include <fmt/format.h>

#include <algorithm>
#include <memory>

#include "apps/solsys/bodies.h"
#include "apps/solsys/commands.h"
#include "apps/solsys/failure.h"
#include "apps/solsys/moon_events.h"
#include "apps/solsys/moons_drawing.h"
#include "apps/solsys/options.h"
#include "apps/solsys/place.h"
#include "apps/solsys/satellite_view.h"

namespace app {
namespace {

struct Request {
    Options options;
    std::string planet;
    bool all = false;
    double days = 0;
    std::string svg;
    bool events = false, mutual = false;
};

// The satellites that a small telescope, or the planet's fame, brings to mind.
int well_known(int planet) {
    switch (planet) {
        case 5:
            return 4;
        case 6:
            return 8;
        case 7:
            return 5;
        case 8:
            return 1;
        default:
            return 5;
    }
}

std::vector<SSO_ID> moons_of(CSWSolSys& model, const Body& planet, bool all) {
    std::vector<SSO_ID> moons;
    model.GetMoonsListFor(planet.id, &moons);
    if (moons.empty()) throw NothingFound(fmt::format("{} has no satellites", planet.name));
    if (!all)
        moons.resize(std::min<std::size_t>(
            moons.size(), static_cast<std::size_t>(well_known(planet.id.number))));
    return moons;
}

Configuration configuration_at(CSWSolSys& model, const SSO_ID& planet,
                               const std::vector<SSO_ID>& moons, Utc utc) {
    move_to(model, tt_from_utc(utc));
    Configuration configuration{utc, view_planet(model, planet), {}};
    for (const SSO_ID& moon : moons)
        configuration.moons.push_back(view_satellite(model, configuration.planet, moon));
    return configuration;
}

Report report_of(const Configuration& configuration) {
    Report report({{"id", "", nullptr},
                   {"name", "Satellite", nullptr},
                   {"time_utc", "", nullptr},
                   {"east_arcsec", "East \"", fixed(2)},
                   {"north_arcsec", "North \"", fixed(2)},
                   {"x_radii", "x radii", fixed(3)},
                   {"y_radii", "y radii", fixed(3)},
                   {"separation_radii", "Separation", fixed(3)},
                   {"", "Side", nullptr},
                   {"in_front", "", nullptr},
                   {"on_disk", "", nullptr},
                   {"behind_disk", "", nullptr},
                   {"in_shadow", "", nullptr},
                   {"in_penumbra", "", nullptr},
                   {"shadow_on_disk", "", nullptr},
                   {"", "Phenomenon", nullptr}});
    for (const SatelliteView& moon : configuration.moons)
        report.add({code_of(moon.id), name_of(moon.id), iso_utc(configuration.utc),
                    moon.east_arcsec, moon.north_arcsec, moon.x_radii, moon.y_radii,
                    moon.separation_radii, std::string(moon.in_front ? "near" : "far"),
                    moon.in_front, moon.on_disk, moon.behind_disk, moon.in_shadow,
                    moon.in_penumbra, moon.shadow_on_disk, moon.phenomenon()});
    return report;
}

void draw(CSWSolSys& model, const Request& request, const Body& planet,
          const std::vector<SSO_ID>& moons, Utc utc) {
    const Zone zone = chosen_zone(request.options, chosen_site(request.options));
    const std::string when = fmt::format("{} ({})", zone.date_time(utc), zone.name());
    if (request.days == 0) {
        draw_configuration(configuration_at(model, planet.id, moons, utc),
                           fmt::format("{} and its moons, {}", planet.name, when))
            .save(request.svg);
        return;
    }
    // Fine enough for the fastest satellite to be a smooth curve.
    double period = 1e9;
    for (const SSO_ID& moon : moons) period = std::min(period, model.GetOrbitalPeriod(moon));
    const double step =
        std::max(std::min(period / 60, request.days / 200), request.days / 20000);
    std::vector<Configuration> instants;
    for (int i = 0; i * step < request.days; ++i)
        instants.push_back(configuration_at(model, planet.id, moons, plus_days(utc, i * step)));
    instants.push_back(configuration_at(model, planet.id, moons, plus_days(utc, request.days)));
    draw_waves(instants, zone, fmt::format("{}'s moons from {}", planet.name, when))
        .save(request.svg);
}

void run(const Request& request) {
    if (request.events || request.mutual) {
        list_moon_events(request.options, request.planet, request.mutual);
        return;
    }
    const Body planet = parse_body(request.planet);
    if (planet.id.type != SSO_PLNT)
        throw BadInput(fmt::format("'{}' is no planet", request.planet));
    if (!(request.days >= 0 && request.days <= 3660))
        throw BadInput("--days is between 0 and 3660");
    if (request.days > 0 && request.svg.empty()) throw BadInput("--days needs --svg FILE");
    const auto site = chosen_site(request.options);
    const Format format = request.options.format();
    const Utc utc = parse_time(request.options.time.empty() ? "now" : request.options.time);

    CSWSolSys model;
    open_model(model, request.options);
    if (!model.CheckSSO(&planet.id))
        throw BadInput(fmt::format("no body '{}' in the catalogue", request.planet));
    place_observer(model, site);
    const std::vector<SSO_ID> moons = moons_of(model, planet, request.all);

    const Configuration now = configuration_at(model, planet.id, moons, utc);
    if (format == Format::kTable)
        fmt::print(
            "{}: equatorial radius {:.2f}\", north pole at position angle {:.1f}\u00b0\n\n",
            planet.name, now.planet.radius_arcsec, now.planet.pole_angle_deg);
    report_of(now).print(format);
    if (!request.svg.empty()) draw(model, request, planet, moons, utc);
}

}  // namespace

void add_moons(CLI::App& main) {
    auto request = std::make_shared<Request>();
    CLI::App* command =
        main.add_subcommand("moons", "A planet's satellites beside it, and pictures of them");
    command->add_option("planet", request->planet, "A planet, such as jupiter")->required();
    command->add_flag("--all", request->all, "All satellites, not the well-known ones alone");
    command->add_option("--svg", request->svg, "Draw the configuration into a file");
    command->add_option("--days", request->days,
                        "Draw the satellites' paths over this many days");
    command->add_flag("--events", request->events,
                      "List transits, shadows, occultations and eclipses from --from to --to");
    command->add_flag("--mutual", request->mutual,
                      "List those of the satellites among each other, too");
    add_instant_options(*command, request->options);
    add_span_options(*command, request->options);
    add_site_options(*command, request->options);
    add_ephemeris_option(*command, request->options);
    add_output_options(*command, request->options);
    command->footer(
        "x runs along the planet's equator, y towards its north pole, in equatorial radii.\n"
        "Examples:\n"
        "  solsys moons jupiter\n"
        "  solsys moons jupiter --events --from 2026-12-01 --to 2026-12-08\n"
        "  solsys moons saturn --time 2026-12-01 --svg saturn.svg\n"
        "  solsys moons jupiter --time 2026-12-01 --days 16 --svg waves.svg");
    command->callback([request] { run(*request); });
}

}  // namespace app
