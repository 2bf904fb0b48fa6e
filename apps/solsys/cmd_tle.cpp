// solsys tle: passes of satellites over a site.
#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <memory>

#include "apps/solsys/columns.h"
#include "apps/solsys/commands.h"
#include "apps/solsys/failure.h"
#include "apps/solsys/long_search.h"
#include "apps/solsys/picture.h"
#include "draw/sky_picture.h"
#include "solsys/sky/chart.h"
#include "solsys/sky/passes.h"

namespace app {
namespace {

constexpr double kDefaultPassSpan = 10;  // days
constexpr double kOldElements = 30;      // days
constexpr std::size_t kMostSets = 2000;

struct TleRequest {
    Options options;
    PictureOptions picture;
    std::string file;
    std::optional<std::string> name;
    std::optional<double> standard_magnitude;
    double horizon = 0;
    double least = 10;
    bool visible = false;
};

struct PassRow {
    const sky::Satellite* satellite;
    sky::Pass pass;
};

// What of a pass is lit.
std::string lit_part(const sky::Pass& pass) {
    const auto dark = [](const sky::SatellitePlace& place) {
        return place.light == sky::Light::umbra;
    };
    if (pass.light_changes.empty()) return dark(pass.culmination) ? "no" : "yes";
    return "partly";
}

// Into the umbra or out of it, whatever of the two comes first.
std::optional<sky::Instant> umbra_edge(const sky::Pass& pass) {
    bool was_dark = pass.rise && pass.rise->light == sky::Light::umbra;
    for (const sky::LightChange& change : pass.light_changes) {
        const bool dark = change.place.light == sky::Light::umbra;
        if (dark != was_dark) return change.place.at;
        was_dark = dark;
    }
    return std::nullopt;
}

using Place = std::optional<sky::SatellitePlace>;

// Time, azimuth and compass point of a moment of the pass.
template <class Get>
void add_moment(std::vector<Column<PassRow>>& columns, const Setting& setting,
                const std::string& name, const std::string& title, Get get, ShownTime shown) {
    add_instant_columns(
        columns, setting, name, title,
        [get](const PassRow& row) {
            const Place place = get(row);
            return place ? std::optional(place->at) : std::nullopt;
        },
        shown);
    columns.push_back({name + "_azimuth_deg", "", nullptr, [get](const PassRow& row) {
                           const Place place = get(row);
                           return place ? Cell(place->azimuth_deg) : Cell();
                       }});
    columns.push_back({"", " ", nullptr, [get](const PassRow& row) {
                           const Place place = get(row);
                           return place ? Cell(compass_point(place->azimuth_deg)) : Cell();
                       }});
}

// A value of the place where the satellite is highest.
Column<PassRow> column_at_top(const char* name, const char* title, Shown format,
                              double sky::SatellitePlace::*member) {
    return {name, title, std::move(format),
            [member](const PassRow& row) { return row.pass.culmination.*member; }};
}

std::vector<Column<PassRow>> satellite_columns(bool several) {
    return {{"id", "", nullptr,
             [](const PassRow& row) {
                 return Cell(sky::code_of({SSO_TLE, row.satellite->elements.number}));
             }},
            {"name", several ? "Satellite" : "", nullptr,
             [](const PassRow& row) { return Cell(row.satellite->name); }},
            {"elements_epoch", "", nullptr,
             [](const PassRow& row) { return Cell(row.satellite->epoch().iso(0)); }}};
}

std::vector<Column<PassRow>> pass_columns(const Setting& setting, bool several, bool bright) {
    std::vector<Column<PassRow>> columns = satellite_columns(several);
    add_moment(
        columns, setting, "rise", fmt::format("Rises ({})", setting.zone.name()),
        [](const PassRow& row) { return row.pass.rise; }, shown_seconds);
    add_moment(
        columns, setting, "culmination", "Highest",
        [](const PassRow& row) { return Place(row.pass.culmination); }, shown_clock_seconds);
    columns.push_back(column_at_top("culmination_altitude_deg", "Alt", fixed(1),
                                    &sky::SatellitePlace::altitude_deg));
    columns.push_back(
        column_at_top("range_km", "km", fixed(0), &sky::SatellitePlace::range_km));
    add_moment(
        columns, setting, "set", "Sets", [](const PassRow& row) { return row.pass.set; },
        shown_clock_seconds);
    columns.push_back({"sunlit", "Lit", nullptr,
                       [](const PassRow& row) { return Cell(lit_part(row.pass)); }});
    add_instant_columns(
        columns, setting, "umbra", "Umbra",
        [](const PassRow& row) { return umbra_edge(row.pass); }, shown_clock_seconds);
    columns.push_back(column_at_top("sun_altitude_deg", "Sun", fixed(0),
                                    &sky::SatellitePlace::sun_altitude_deg));
    columns.push_back({"visible", "Seen", nullptr,
                       [](const PassRow& row) { return Cell(row.pass.best.has_value()); }});
    add_instant_columns(
        columns, setting, "best", "",
        [](const PassRow& row) {
            return row.pass.best ? std::optional(row.pass.best->at) : std::nullopt;
        },
        shown_clock_seconds);
    columns.push_back({"magnitude", bright ? "Mag" : "", fixed(1), [](const PassRow& row) {
                           return row.pass.best ? cell(row.pass.best->magnitude) : Cell();
                       }});
    return columns;
}

std::vector<sky::Satellite> satellites_of(const TleRequest& request, const sky::Span& span) {
    sky::SatelliteList list = need(sky::read_satellites(request.file));
    for (const std::string& problem : list.problems)
        fmt::print(stderr, "solsys: {}: {}\n", request.file, problem);
    std::vector<sky::Satellite> out;
    if (request.name)
        out.push_back(need(sky::find_satellite(list.satellites, *request.name, span.from)));
    else
        out = std::move(list.satellites);
    if (out.size() > kMostSets)
        throw BadInput(fmt::format("'{}' holds {} element sets: choose one with --name",
                                   request.file, out.size()));
    for (sky::Satellite& satellite : out) {
        satellite.standard_magnitude = request.standard_magnitude;
        const double age = sky::days_between(satellite.epoch(), span.from);
        if (std::fabs(age) > kOldElements)
            fmt::print(stderr, "solsys: the elements of {} are {:.0f} days {} than the start\n",
                       satellite.name, std::fabs(age), age > 0 ? "older" : "newer");
    }
    return out;
}

// What the clock shows at a mark of the way: every minute, ten minutes or hours by its length.
std::string mark_ending(double days) {
    if (days < 25.0 / 1440) return "";
    return days < 4.0 / 24 ? "0" : ":00";
}

void draw_picture(sky::Model& model, const Setting& setting, const TleRequest& request,
                  const PassRow& row) {
    constexpr double kStep = 10;  // seconds
    const sky::Pass& pass = row.pass;
    const sky::Instant middle = pass.best ? pass.best->at : pass.culmination.at;
    const auto end = [&middle](const Place& place, double otherwise) {
        return place ? place->at : middle.plus_seconds(otherwise);
    };
    const sky::Span span{end(pass.rise, -7200), end(pass.set, 7200)};
    move_to(model, middle);
    solsys::draw::SkyPicture picture;
    picture.title = fmt::format("{} over {}", row.satellite->name, setting.site->name);
    picture.subtitle =
        fmt::format("{} ({}) \u00b7 highest {:.0f}\u00b0", setting.zone.date_time(middle),
                    setting.zone.name(), pass.culmination.altitude_deg);
    picture.light = request.picture.light;
    solsys::draw::SkyTrack track;
    const std::string ending = mark_ending(span.days());
    std::string last;
    for (const sky::SatellitePlace& place :
         sky::path_of(model, *setting.site, *row.satellite, span, kStep)) {
        const std::string minute = setting.zone.clock(place.at);
        track.points.push_back(
            {{place.azimuth_deg, place.altitude_deg},
             place.light != sky::Light::umbra,
             !last.empty() && minute != last && minute.ends_with(ending) ? minute : ""});
        last = minute;
    }
    picture.tracks.push_back(std::move(track));
    write_picture(solsys::draw::draw_sky(sky::sky_chart(model), picture).str(),
                  request.picture);
}

void run(const TleRequest& request) {
    check_picture_options(request.picture);
    const Setting setting = setting_with_site(request.options);
    const sky::Span span = span_of(request.options, setting, kDefaultPassSpan);
    const auto satellites = satellites_of(request, span);
    sky::Model model = model_of(request.options, setting);
    LongSearch search;
    std::vector<PassRow> rows;
    for (const sky::Satellite& satellite : satellites)
        for (sky::Pass& pass : sky::passes(model, *setting.site, satellite, span,
                                           {request.horizon, request.least}, search.control()))
            if (pass.best || !request.visible) rows.push_back({&satellite, std::move(pass)});
    std::stable_sort(rows.begin(), rows.end(), [](const PassRow& a, const PassRow& b) {
        return a.pass.culmination.at < b.pass.culmination.at;
    });
    const bool picture_alone = request.picture.to_output() && !rows.empty();
    if (!picture_alone) {
        Table<PassRow> table(setting.format,
                             pass_columns(setting, satellites.size() > 1,
                                          request.standard_magnitude.has_value()),
                             setting.context(model));
        for (const PassRow& row : rows) table.add(row);
        if (setting.format == Format::kTable && !rows.empty())
            fmt::print("Passes of {} over {}\n\n",
                       satellites.size() == 1 ? satellites[0].name
                                              : fmt::format("{} satellites", satellites.size()),
                       setting.site->name);
        table.finish(fmt::format("no pass above {} degrees in that span{}", request.least,
                                 request.visible ? " that can be seen" : ""));
    }
    if (!request.picture.wanted()) return;
    const auto seen = std::find_if(
        rows.begin(), rows.end(), [](const PassRow& row) { return row.pass.best.has_value(); });
    draw_picture(model, setting, request, seen != rows.end() ? *seen : rows.front());
}

}  // namespace

void add_tle(CommandLine& main) {
    auto request = std::make_shared<TleRequest>();
    Command command =
        main.add("tle", "Passes of Earth satellites over a site, from their element sets");
    command.word("file", request->file,
                 "Element sets: two or three lines each, or messages as JSON or CSV");
    command.text("--name", request->name,
                 "One satellite of the file: catalogue number, name, or part of it");
    command.number("--horizon", request->horizon, {-10, 80}, "Altitude of rise and set [deg]");
    command.number("--least", request->least, {-10, 90},
                   "Leave out passes that stay below [deg]");
    command.flag("--visible", request->visible,
                 "Only passes that are lit while the Sun is 6 degrees below the horizon");
    command.number("--standard-magnitude", request->standard_magnitude, {-10, 30},
                   "At 1000 km, half lit (the International Space Station: -1.8)");
    add_span_options(command, request->options, "ten days on");
    add_site_options(command, request->options);
    add_rotation_options(command, request->options);
    add_model_options(command, request->options);
    add_output_options(command, request->options);
    add_picture_options(command, request->picture,
                        "Draw the first pass that can be seen over the sky");
    command.footer(
        "Altitudes are without refraction. Lit: by the Sun, behind a spherical Earth; Umbra:\n"
        "when the full shadow begins or ends; Seen: lit while the Sun is 6 degrees down.\n"
        "Examples:\n"
        "  solsys tle data/catalogue/element_sets_sample.txt --name cbers --city Oslo \\\n"
        "      --from 2006-06-27 --to 2006-06-28\n"
        "  solsys tle data/catalogue/element_sets_sample.txt --city Hobart --visible \\\n"
        "      --from 2006-06-25 --to 2006-06-27 --svg pass.svg");
    command.run([request] { run(*request); });
}

}  // namespace app
