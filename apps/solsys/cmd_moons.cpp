// solsys moons: a planet's satellites beside it.
#include <fmt/format.h>

#include <algorithm>
#include <memory>

#include "apps/solsys/columns.h"
#include "apps/solsys/commands.h"
#include "apps/solsys/failure.h"
#include "apps/solsys/long_search.h"
#include "apps/solsys/moon_events.h"
#include "apps/solsys/picture.h"
#include "draw/moons_picture.h"
#include "solsys/sky/satellites.h"

namespace app {
namespace {

using solsys::draw::Configuration;

struct MoonsRequest {
    Options options;
    PictureOptions picture;
    std::string planet;
    bool all = false;
    std::optional<double> days;
    bool events = false, mutual = false;
};

struct MoonRow {
    sky::SatelliteView moon;
    sky::Instant at;
};

Configuration configuration_at(sky::Model& model, const sky::Body& planet,
                               const std::vector<sky::Body>& moons, const sky::Instant& t) {
    move_to(model, t);
    const auto refuse = [&](const sky::Body& body) {
        return BadInput(fmt::format("{} cannot be computed on {}: {}", body.name, t.iso(0),
                                    span_of_source(model)));
    };
    const auto disk = sky::view_planet(model, planet);
    if (!disk) throw refuse(planet);
    Configuration configuration{t, *disk, {}};
    for (const sky::Body& moon : moons) {
        const auto view = sky::view_satellite(model, *disk, moon);
        if (!view) throw refuse(moon);
        configuration.moons.push_back(*view);
    }
    return configuration;
}

std::vector<Column<MoonRow>> moon_columns(const Setting& setting) {
    const auto number = [](const char* name, const char* title, int decimals,
                           double sky::SatelliteView::*member) {
        return Column<MoonRow>{name, title, title[0] ? fixed(decimals) : Shown(),
                               [member](const MoonRow& row) { return Cell(row.moon.*member); }};
    };
    const auto flag = [](const char* name, bool sky::SatelliteView::*member) {
        return Column<MoonRow>{name, "", nullptr,
                               [member](const MoonRow& row) { return Cell(row.moon.*member); }};
    };
    std::vector<Column<MoonRow>> columns{
        {"id", "", nullptr,
         [](const MoonRow& row) { return Cell(sky::code_of(row.moon.moon.id)); }},
        {"name", "Satellite", nullptr,
         [](const MoonRow& row) { return Cell(row.moon.moon.name); }}};
    add_time_columns(columns, setting, "");
    using View = sky::SatelliteView;
    const std::vector<Column<MoonRow>> more{
        number("east_arcsec", "East \"", 2, &View::east_arcsec),
        number("north_arcsec", "North \"", 2, &View::north_arcsec),
        number("x_radii", "x radii", 3, &View::x_radii),
        number("y_radii", "y radii", 3, &View::y_radii),
        number("separation_radii", "Separation", 3, &View::separation_radii),
        number("distance_au", "", 6, &View::distance_au),
        {"", "Side", nullptr,
         [](const MoonRow& row) {
             return Cell(std::string(row.moon.in_front ? "near" : "far"));
         }},
        flag("in_front", &View::in_front),
        flag("on_disk", &View::on_disk),
        flag("behind_disk", &View::behind_disk),
        flag("in_shadow", &View::in_shadow),
        flag("in_penumbra", &View::in_penumbra),
        flag("shadow_on_disk", &View::shadow_on_disk),
        {"", "Phenomenon", nullptr,
         [](const MoonRow& row) { return text_cell(row.moon.phenomenon()); }}};
    columns.insert(columns.end(), more.begin(), more.end());
    return columns;
}

// Days that show the slowest satellite of the table going round once, in whole ones.
double fitting_days(sky::Model& model, const std::vector<sky::Body>& moons) {
    double longest = 1;
    for (const sky::Body& moon : moons)
        longest = std::max(longest, model.classic().GetOrbitalPeriod(moon.id));
    return std::clamp(std::ceil(longest), 2.0, 40.0);
}

solsys::draw::Svg waves(sky::Model& model, const MoonsRequest& request, const Setting& setting,
                        const sky::Body& planet, const std::vector<sky::Body>& moons,
                        const sky::Instant& t) {
    const double days = *request.days > 0 ? *request.days : fitting_days(model, moons);
    // Fine enough for the fastest satellite to be a smooth curve, and no finer than the page.
    double period = 1e9;
    for (const sky::Body& moon : moons)
        period = std::min(period, model.classic().GetOrbitalPeriod(moon.id));
    const double step = std::max(std::min(period / 60, days / 200), days / 4000);
    std::vector<Configuration> instants;
    LongSearch search;
    for (int i = 0; i * step < days; ++i) {
        if (!search.go_on(i * step / days)) throw NothingFound("stopped: no picture");
        instants.push_back(configuration_at(model, planet, moons, t.plus_days(i * step)));
    }
    instants.push_back(configuration_at(model, planet, moons, t.plus_days(days)));
    const std::string title = fmt::format("{}'s moons from {} ({})", planet.name,
                                          setting.zone.date_time(t), setting.zone.name());
    return solsys::draw::draw_waves(instants, setting.zone, title, request.picture.light);
}

void draw(sky::Model& model, const MoonsRequest& request, const Setting& setting,
          const sky::Body& planet, const std::vector<sky::Body>& moons,
          const Configuration& now) {
    if (request.days) {
        write_picture(waves(model, request, setting, planet, moons, now.at).str(),
                      request.picture);
        return;
    }
    const std::string title = fmt::format("{} and its moons, {} ({})", planet.name,
                                          setting.zone.date_time(now.at), setting.zone.name());
    write_picture(solsys::draw::draw_configuration(now, title, request.picture.light).str(),
                  request.picture);
}

sky::Body planet_of(const MoonsRequest& request) {
    const sky::Body planet = need(sky::find_body(request.planet));
    if (planet.id.type != SSO_PLNT)
        throw BadInput(fmt::format("'{}' is no planet", request.planet));
    if (planet.id == SSO_ID(SSO_PLNT, 3))
        throw BadInput("the Moon is not seen beside the Earth: use position moon or info moon");
    return planet;
}

void check(const MoonsRequest& request) {
    check_picture_options(request.picture);
    const Options& options = request.options;
    if (request.days && !request.picture.wanted())
        throw BadInput("--days needs --svg or --png");
    if (request.mutual && !request.events) throw BadInput("--mutual needs --events");
    if (!request.events && (options.from || options.to))
        throw BadInput("--from and --to need --events; --time is the instant seen");
    if (request.events && (request.picture.wanted() || options.time || request.all))
        throw BadInput("--events is a list from --from to --to: no --time, --all or picture");
}

void run(const MoonsRequest& request) {
    check(request);
    const sky::Body planet = planet_of(request);
    const Setting setting = setting_of(request.options);
    if (request.events)
        return list_moon_events(request.options, setting, planet, request.mutual);
    const sky::Instant t = instant_of(request.options, setting);
    sky::Model model = model_of(request.options, setting);
    const std::vector<sky::Body> moons = sky::moons_of(model, planet, request.all);
    if (moons.empty()) throw NothingFound(fmt::format("{} has no satellites", planet.name));

    const Configuration now = configuration_at(model, planet, moons, t);
    if (!request.picture.to_output()) {
        Table<MoonRow> table(setting.format, moon_columns(setting), setting.context(model));
        for (const sky::SatelliteView& moon : now.moons) table.add({moon, t});
        if (setting.format == Format::kTable)
            fmt::print(
                "{} on {} ({}): equatorial radius {:.2f}\", north pole at position angle "
                "{:.1f}\u00b0\n\n",
                planet.name, setting.zone.date_time(t), setting.zone.name(),
                now.planet.radius_arcsec, now.planet.pole_angle_deg);
        table.finish();
    }
    if (request.picture.wanted()) draw(model, request, setting, planet, moons, now);
}

}  // namespace

void add_moons(CommandLine& main) {
    auto request = std::make_shared<MoonsRequest>();
    Command command =
        main.add("moons", "A planet's satellites beside it, and pictures of them");
    command.word("planet", request->planet, "A planet, such as jupiter");
    command.flag("--all", request->all, "All satellites, not the well-known ones alone");
    add_picture_options(command, request->picture, "Draw the configuration");
    command.number("--days", request->days, {0.0, 3660.0},
                   "Draw the satellites' paths over so many days (0: by their periods)");
    command.flag("--events", request->events,
                 "List transits, shadows, occultations and eclipses from --from to --to");
    command.flag("--mutual", request->mutual,
                 "With --events: also those of the satellites among each other");
    add_instant_option(command, request->options);
    add_span_options(command, request->options, "a week on");
    add_site_options(command, request->options);
    add_model_options(command, request->options);
    add_output_options(command, request->options);
    command.footer(
        "x runs along the planet's equator, y towards its north pole, in equatorial radii.\n"
        "Examples:\n"
        "  solsys moons jupiter\n"
        "  solsys moons saturn --time 2026-12-01 --svg saturn.svg\n"
        "  solsys moons jupiter --time 2026-12-01 --days 16 --svg waves.svg");
    command.run([request] { run(*request); });
}

}  // namespace app
