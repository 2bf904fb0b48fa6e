// solsys sky: what is where now.
#include <fmt/format.h>

#include <algorithm>
#include <memory>

#include "apps/solsys/columns.h"
#include "apps/solsys/commands.h"
#include "apps/solsys/failure.h"
#include "apps/solsys/picture.h"
#include "draw/sky_picture.h"
#include "solsys/sky/chart.h"

namespace app {
namespace {

struct SkyRequest {
    Options options;
    PictureOptions picture;
    std::optional<double> limit;
};

struct SkyRow {
    sky::Body body;
    sky::Instant at;
    sky::Place place;
    sky::Horizontal over;
    sky::Appearance looks;
};

// Up by the rule of rise-set.
bool is_up(const SkyRow& row, const Setting& setting) {
    const sky::Altitude horizon = setting.refraction.horizon(*setting.site, row.body);
    const double radius = row.looks.angular_diameter_arcsec.value_or(0) / 7200;
    return row.over.altitude_deg > horizon.degrees - (horizon.upper_limb ? radius : 0);
}

std::vector<Column<SkyRow>> sky_columns(const Setting& setting) {
    std::vector<Column<SkyRow>> columns{
        {"id", "", nullptr, [](const SkyRow& row) { return Cell(sky::code_of(row.body.id)); }},
        {"name", "Body", nullptr, [](const SkyRow& row) { return Cell(row.body.name); }}};
    add_time_columns(columns, setting, "");
    const std::vector<Column<SkyRow>> over{
        {"jd_tt", "", nullptr, [](const SkyRow& row) { return row.at.jd_tt(); }},
        {"azimuth_deg", "Azimuth", fixed_round(1),
         [](const SkyRow& row) { return row.over.azimuth_deg; }},
        {"", " ", nullptr,
         [](const SkyRow& row) { return Cell(compass_point(row.over.azimuth_deg)); }},
        {"altitude_deg", "", nullptr, [](const SkyRow& row) { return row.over.altitude_deg; }}};
    columns.insert(columns.end(), over.begin(), over.end());
    add_apparent_altitude(
        columns, setting, [](const SkyRow& row) { return row.over.altitude_deg; }, 1);
    const std::vector<Column<SkyRow>> more{
        {"above_horizon", "Up", nullptr,
         [&setting](const SkyRow& row) { return is_up(row, setting); }},
        {"ra_deg", "RA", shown_hours, [](const SkyRow& row) { return row.place.ra_deg; }},
        {"dec_deg", "Dec", shown_degrees, [](const SkyRow& row) { return row.place.dec_deg; }},
        {"distance_au", "", nullptr, [](const SkyRow& row) { return row.place.distance_au; }},
        {"light_time_days", "", nullptr,
         [](const SkyRow& row) { return row.place.light_time_days; }}};
    columns.insert(columns.end(), more.begin(), more.end());
    add_appearance_columns(
        columns, [](const SkyRow& row) -> const sky::Appearance& { return row.looks; },
        Shows::kAll);
    return columns;
}

SkyRow row_of(sky::Model& model, const sky::Body& body, const sky::Instant& t) {
    const auto place = sky::apparent_place(model, body);
    if (!place)
        throw BadInput(fmt::format("{} cannot be computed on {}: {}", body.name, t.iso(0),
                                   span_of_source(model)));
    return {body, t, *place, sky::horizontal_of(model, *place),
            sky::appearance_of(model, body, *place)};
}

void draw_picture(sky::Model& model, const Setting& setting, const SkyRequest& request,
                  const sky::Instant& t) {
    solsys::draw::SkyPicture picture;
    picture.title = setting.site->name;
    picture.subtitle =
        fmt::format("{} ({}) \u00b7 {}, {}", setting.zone.date_time(t), setting.zone.name(),
                    sky::coordinate_text(setting.site->latitude_deg, false),
                    sky::coordinate_text(setting.site->longitude_deg, true));
    picture.light = request.picture.light;
    picture.limit = request.limit;
    write_picture(solsys::draw::draw_sky(sky::sky_chart(model), picture).str(),
                  request.picture);
}

void run(const SkyRequest& request) {
    check_picture_options(request.picture);
    if (request.limit && !request.picture.wanted())
        throw BadInput("--limit needs --svg or --png");
    Setting setting = setting_of(request.options);
    if (!setting.site) setting.site = need(sky::parse_site("51.4779,-0.0015,46"));
    if (!request.options.site && !request.options.city) setting.site->name = "Greenwich";
    const sky::Instant t = instant_of(request.options, setting);
    sky::Model model = model_of(request.options, setting);
    move_to(model, t);

    if (!request.picture.to_output()) {
        Table<SkyRow> table(setting.format, sky_columns(setting), setting.context(model));
        for (const sky::Body& body : need(sky::find_bodies("all")))
            table.add(row_of(model, body, t));
        if (setting.format == Format::kTable)
            fmt::print("The sky of {} on {} ({})\n\n", setting.site->name,
                       setting.zone.date_time(t), setting.zone.name());
        table.finish();
    }
    if (request.picture.wanted()) draw_picture(model, setting, request, t);
}

}  // namespace

void add_sky(CommandLine& main) {
    auto request = std::make_shared<SkyRequest>();
    Command command = main.add("sky", "What is where now: Sun, Moon and planets over a site");
    add_instant_option(command, request->options);
    add_site_options(command, request->options);
    add_horizon_option(command, request->options);
    add_refraction_option(command, request->options);
    add_rotation_options(command, request->options);
    add_model_options(command, request->options);
    add_output_options(command, request->options);
    add_picture_options(command, request->picture, "Draw the visible hemisphere");
    command.number("--limit", request->limit, {-2.0, 5.0},
                   "Faintest star drawn (without: by the light of the sky)");
    command.footer(
        "Without a site: Greenwich. Altitudes in the table are apparent; Up is by the rule of\n"
        "rise-set (upper limb of Sun and Moon, 34' of refraction).\n"
        "Examples:\n"
        "  solsys sky --city Tokyo\n"
        "  solsys sky --site 69.65,18.96 --time 2026-12-24T18:00 --tz +01:00\n"
        "  solsys sky --city Nairobi --svg sky.svg --light");
    command.run([request] { run(*request); });
}

}  // namespace app
