// solsys sky: what is where now.
#include <fmt/format.h>

#include <memory>

#include "apps/solsys/appearance.h"
#include "apps/solsys/bodies.h"
#include "apps/solsys/commands.h"
#include "apps/solsys/options.h"
#include "apps/solsys/place.h"
#include "apps/solsys/sky_drawing.h"
#include "apps/solsys/sky_view.h"

namespace app {
namespace {

const SSO_ID kSkyBodies[] = {{SSO_PLNT, 10}, {SSO_MOON, 301}, {SSO_PLNT, 1}, {SSO_PLNT, 2},
                             {SSO_PLNT, 4},  {SSO_PLNT, 5},   {SSO_PLNT, 6}, {SSO_PLNT, 7},
                             {SSO_PLNT, 8},  {SSO_PLNT, 9}};

// The sixteen winds.
std::string compass_point(double azimuth_deg) {
    static const char* const points[] = {"N", "NNE", "NE", "ENE", "E", "ESE", "SE", "SSE",
                                         "S", "SSW", "SW", "WSW", "W", "WNW", "NW", "NNW"};
    return points[static_cast<int>(azimuth_deg / 22.5 + 0.5) % 16];
}

void run(const Options& options, const std::string& svg) {
    const Site site = chosen_site(options).value_or(find_city("Greenwich"));
    const Zone zone = chosen_zone(options, site);
    const Utc utc = parse_time(options.time.empty() ? "now" : options.time);
    const Format format = options.format();

    CSWSolSys model;
    open_model(model, options);
    place_observer(model, site);
    const Tt tt = tt_from_utc(utc);
    move_to(model, tt);

    std::vector<Column> columns{{"id", "", nullptr},
                                {"name", "Body", nullptr},
                                {"time_utc", "", nullptr},
                                {"jd_tt", "", nullptr},
                                {"azimuth_deg", "Azimuth", fixed(1)},
                                {"", "", nullptr},
                                {"altitude_deg", "Altitude", fixed(1)},
                                {"above_horizon", "Up", nullptr},
                                {"ra_deg", "RA", shown_hours},
                                {"dec_deg", "Dec", shown_degrees},
                                {"distance_au", "Distance au", fixed(4)},
                                {"light_time_days", "", nullptr}};
    add_appearance_columns(columns, true);
    Report report(std::move(columns));
    for (const SSO_ID& id : kSkyBodies) {
        const Place place = apparent_place(model, id);
        const Horizontal sky = horizontal_of(model, place);
        std::vector<Cell> row{
            code_of(id),      name_of(id),          iso_utc(utc),
            tt.jd(),          sky.azimuth_deg,      compass_point(sky.azimuth_deg),
            sky.altitude_deg, sky.altitude_deg > 0, place.ra_deg,
            place.dec_deg,    place.distance_au,    place.light_time_days};
        add_appearance_cells(row, appearance_of(model, id, place));
        report.add(std::move(row));
    }
    if (!svg.empty())
        draw_sky(view_sky(model), site.name,
                 fmt::format("{} ({})", zone.date_time(utc), zone.name()))
            .save(svg);
    if (format == Format::kTable)
        fmt::print("The sky of {} on {} ({})\n\n", site.name, zone.date_time(utc), zone.name());
    report.print(format);
}

}  // namespace

void add_sky(CLI::App& main) {
    auto options = std::make_shared<Options>();
    auto svg = std::make_shared<std::string>();
    CLI::App* command =
        main.add_subcommand("sky", "What is where now: Sun, Moon and planets over a site");
    add_instant_options(*command, *options);
    add_site_options(*command, *options);
    add_ephemeris_option(*command, *options);
    add_output_options(*command, *options);
    command->add_option("--svg", *svg, "Draw the visible hemisphere into this file, too");
    command->footer(
        "Without a site: Greenwich. Altitudes are without refraction.\n"
        "Examples:\n"
        "  solsys sky --city Tokyo\n"
        "  solsys sky --site 69.65,18.96 --time 2026-12-24T18:00 --tz +01:00\n"
        "  solsys sky --city Nairobi --svg sky.svg");
    command->callback([options, svg] { run(*options, *svg); });
}

}  // namespace app
