// solsys eclipses: solar and lunar eclipses of a span, at a site, on the map.
#include <fmt/format.h>

#include <algorithm>
#include <functional>
#include <memory>

#include "apps/solsys/commands.h"
#include "apps/solsys/failure.h"
#include "apps/solsys/long_search.h"
#include "apps/solsys/picture.h"
#include "draw/eclipse_map.h"
#include "draw/eclipse_pictures.h"
#include "solsys/sky/eclipses.h"

namespace app {
namespace {

struct EclipsesRequest {
    Options options;
    PictureOptions picture;
    std::optional<std::string> map;
    bool solar = false, lunar = false;
    bool fiftieth = false, all = false;

    [[nodiscard]] bool wants(sky::EclipseKind kind) const {
        return solar == lunar || (kind == sky::EclipseKind::kSolar ? solar : lunar);
    }
};

struct EclipseRow {
    sky::Eclipse eclipse;
    std::optional<sky::LocalEclipse> local;

    [[nodiscard]] bool solar() const { return eclipse.kind == sky::EclipseKind::kSolar; }
};
using EclipseColumns = std::vector<Column<EclipseRow>>;
using Moment = std::optional<sky::EclipseMoment>;

void write_map(const sky::EclipseMap& map, const std::filesystem::path& path, bool light) {
    const std::u8string name = path.u8string();
    const std::string file(name.begin(), name.end());
    const std::string extension = path.extension().string();
    if (extension == ".svg") return write_file(file, solsys::draw::eclipse_map_svg(map, light));
    if (extension == ".png") return write_png(file, solsys::draw::eclipse_map_svg(map, light));
    if (extension == ".geojson" || extension == ".json")
        return write_file(file, solsys::draw::eclipse_map_geojson(map));
    if (extension == ".kml") return write_file(file, solsys::draw::eclipse_map_kml(map));
    throw BadInput(
        "--map: use a file ending in .svg, .png, .geojson or .kml, or a folder ending in /");
}

void write_maps(sky::Model& model, const EclipsesRequest& request,
                const std::vector<EclipseRow>& rows) {
    const std::filesystem::path path = path_of(*request.map);
    const bool light = request.picture.light;
    if (request.map->back() != '/' && !std::filesystem::is_directory(path)) {
        if (rows.size() != 1)
            throw BadInput(
                fmt::format("--map: {} eclipses in that span, and a map is of one; a folder "
                            "(--map DIR/) takes all",
                            rows.size()));
        write_map(sky::eclipse_map(model, rows.front().eclipse), path, light);
        tell("wrote " + *request.map);
        return;
    }
    std::error_code error;
    std::filesystem::create_directories(path, error);
    if (error) throw BadInput(fmt::format("--map: cannot make the folder '{}'", *request.map));
    LongSearch search;
    std::size_t i = 0;
    for (; i < rows.size(); ++i) {
        if (!search.go_on(static_cast<double>(i) / static_cast<double>(rows.size()))) break;
        const sky::Eclipse& e = rows[i].eclipse;
        const auto map = sky::eclipse_map(model, e);
        const std::string stem = fmt::format(
            "{}-{}", sky::to_string(sky::Zone().date(e.greatest)), to_string(e.kind));
        for (const char* extension : {".svg", ".geojson", ".kml"})
            write_map(map, path / (stem + extension), light);
    }
    tell(fmt::format("wrote the maps of {} eclipses into {}", i, *request.map));
}

void add_circumstances(EclipseColumns& columns, const Setting& setting) {
    using sky::Eclipse;
    const bool wide = !setting.site;  // what is seen there needs the room
    const auto number = [](const char* name, const char* title, int decimals, auto get) {
        return Column<EclipseRow>{name, title, fixed(decimals),
                                  [get](const EclipseRow& r) { return Cell(get(r.eclipse)); }};
    };
    columns.push_back({"kind", "Kind", nullptr, [](const EclipseRow& r) {
                           return Cell(std::string(to_string(r.eclipse.kind)));
                       }});
    columns.push_back({"type", wide ? "Type" : "", nullptr,
                       [](const EclipseRow& r) { return r.eclipse.type; }});
    const auto time = [&](const char* name, const std::string& title,
                          sky::Instant Eclipse::*member) {
        add_instant_columns(
            columns, setting, name, title,
            [member](const EclipseRow& r) { return std::optional(r.eclipse.*member); },
            wide ? shown_seconds : shown_date);
    };
    time("greatest", wide ? fmt::format("Greatest ({})", setting.zone.name()) : "Date",
         &Eclipse::greatest);
    time("begin", "", &Eclipse::begin);
    time("end", "", &Eclipse::end);
    const EclipseColumns more{
        {"delta_t_s", "", nullptr,
         [](const EclipseRow& r) { return r.eclipse.greatest.delta_t_seconds(); }},
        number("magnitude", wide ? "Mag" : "", 4, [](const Eclipse& e) { return e.magnitude; }),
        number("gamma", wide ? "Gamma" : "", 4, [](const Eclipse& e) { return e.gamma; }),
        {"saros", wide ? "Saros" : "", nullptr,
         [](const EclipseRow& r) { return Cell(static_cast<long long>(r.eclipse.saros)); }},
        {"lunation", "", nullptr,
         [](const EclipseRow& r) { return Cell(static_cast<long long>(r.eclipse.lunation)); }}};
    columns.insert(columns.end(), more.begin(), more.end());
}

void add_ground(EclipseColumns& columns, bool in_table) {
    const auto number = [&](const char* name, const char* title, int decimals, auto get) {
        columns.push_back({name, in_table ? title : "", fixed(decimals), get});
    };
    number("latitude_deg", "Lat", 1,
           [](const EclipseRow& r) { return r.eclipse.nearest.latitude_deg; });
    number("longitude_deg", "Lon", 1,
           [](const EclipseRow& r) { return r.eclipse.nearest.longitude_deg; });
    number("path_width_km", "Width km", 0,
           [](const EclipseRow& r) { return cell(r.eclipse.path_width_km); });
    number("central_duration_s", "Duration s", 0,
           [](const EclipseRow& r) { return cell(r.eclipse.duration_s); });
}

void add_contact(EclipseColumns& columns, const Setting& setting, const std::string& name,
                 const char* title, Moment sky::LocalEclipse::*member) {
    add_instant_columns(
        columns, setting, name, title,
        [member](const EclipseRow& r) {
            const Moment& m = (*r.local).*member;
            return m ? std::optional(m->at) : std::nullopt;
        },
        shown_clock_seconds);
    const auto angle = [&](const char* suffix, const char* heading,
                           double sky::EclipseMoment::*value, bool lunar_too) {
        columns.push_back({name + suffix, heading, fixed(0), [=](const EclipseRow& r) {
                               const Moment& m = (*r.local).*member;
                               return m && (lunar_too || r.solar()) ? Cell((*m).*value)
                                                                    : Cell();
                           }});
    };
    const bool greatest = name == "maximum";
    angle("_altitude_deg", greatest ? "Alt" : "", &sky::EclipseMoment::altitude_deg, true);
    angle("_azimuth_deg", "", &sky::EclipseMoment::azimuth_deg, true);
    angle("_position_angle_deg", "", &sky::EclipseMoment::position_angle_deg, false);
}

void add_local(EclipseColumns& columns, const Setting& setting) {
    using Local = sky::LocalEclipse;
    columns.push_back(
        {"local_type", "Seen as", nullptr, [](const EclipseRow& r) { return r.local->type; }});
    add_contact(columns, setting, "first_contact", "First", &Local::first);
    add_contact(columns, setting, "second_contact", "Second", &Local::second);
    add_contact(columns, setting, "maximum", "Maximum", &Local::maximum);
    add_contact(columns, setting, "third_contact", "Third", &Local::third);
    add_contact(columns, setting, "fourth_contact", "Fourth", &Local::fourth);
    columns.push_back({"local_magnitude", "There", fixed(3),
                       [](const EclipseRow& r) { return r.local->magnitude; }});
    columns.push_back({"obscuration", "", fixed(3), [](const EclipseRow& r) {
                           return r.solar() ? Cell(r.local->obscuration) : Cell();
                       }});
    add_instant_columns(columns, setting, "rise", "",
                        [](const EclipseRow& r) { return r.local->rise; });
    add_instant_columns(columns, setting, "set", "",
                        [](const EclipseRow& r) { return r.local->set; });
}

EclipseColumns eclipse_columns(const Setting& setting) {
    EclipseColumns columns;
    add_circumstances(columns, setting);
    add_ground(columns, !setting.site);
    if (setting.site) add_local(columns, setting);
    return columns;
}

// Those of a piece of the span, in order; as far as it goes when it is stopped.
std::vector<EclipseRow> rows_of_piece(sky::Model& model, const EclipsesRequest& request,
                                      const Setting& setting, const sky::Span& piece,
                                      const std::function<bool()>& go_on) {
    sky::EclipseOptions options;
    options.fiftieth = request.fiftieth;
    options.progress = [&](double) { return go_on(); };
    std::vector<EclipseRow> rows;
    for (const auto kind : {sky::EclipseKind::kSolar, sky::EclipseKind::kLunar}) {
        if (!request.wants(kind)) continue;
        for (const sky::Eclipse& e : sky::find_eclipses(model, kind, piece, options)) {
            EclipseRow row{e, {}};
            if (setting.site) {
                if (!go_on()) break;
                row.local = sky::eclipse_at(model, e, *setting.site);
                if (!row.local || (!row.local->visible && !request.all)) continue;
            }
            rows.push_back(std::move(row));
        }
    }
    std::sort(rows.begin(), rows.end(), [](const EclipseRow& a, const EclipseRow& b) {
        return a.eclipse.greatest < b.eclipse.greatest;
    });
    return rows;
}

// In pieces, so that a search stopped early has all of the years that it came to.
std::vector<EclipseRow> rows_of(sky::Model& model, const EclipsesRequest& request,
                                const Setting& setting, const sky::Span& span) {
    constexpr double kPiece = 20 * 365.25;
    LongSearch search;
    std::vector<EclipseRow> rows;
    for (double begins = 0; begins < span.days(); begins += kPiece) {
        const sky::Span piece{
            span.from.plus_days(begins),
            begins + kPiece < span.days() ? span.from.plus_days(begins + kPiece) : span.to};
        const auto go_on = [&] { return search.go_on(begins / span.days()); };
        if (!go_on()) break;
        for (EclipseRow& row : rows_of_piece(model, request, setting, piece, go_on))
            rows.push_back(std::move(row));
    }
    return rows;
}

// The Moon in the shadow, or the Sun's disk at a site.
void draw(sky::Model& model, const EclipsesRequest& request, const Setting& setting,
          const std::vector<EclipseRow>& rows) {
    if (rows.size() != 1)
        throw BadInput(fmt::format("--svg: {} eclipses in that span, and a picture is of one",
                                   rows.size()));
    const EclipseRow& row = rows.front();
    const bool light = request.picture.light;
    if (row.solar() && !setting.site)
        throw BadInput("--svg: the Sun's disk is that of a place: --city or --site (or --map)");
    write_picture(
        row.solar() ? solsys::draw::eclipsed_sun_svg(model, row.eclipse, *row.local,
                                                     *setting.site, setting.zone, light)
                    : solsys::draw::moon_in_shadow_svg(model, row.eclipse, setting.zone, light),
        request.picture);
}

void run(const EclipsesRequest& request) {
    if (!request.map) check_picture_options(request.picture);
    const Setting setting = setting_of(request.options);
    const sky::Span span = span_of(request.options, setting, 550);
    sky::Model model = model_of(request.options, setting);
    const std::vector<EclipseRow> rows = rows_of(model, request, setting, span);
    if (!rows.empty() && request.map) write_maps(model, request, rows);
    if (!rows.empty() && request.picture.wanted()) draw(model, request, setting, rows);
    if (!rows.empty() && request.picture.to_output()) return;
    if (setting.format == Format::kTable && setting.site && !rows.empty())
        fmt::print("Eclipses at {} (times: {})\n\n", setting.site->name, setting.zone.name());
    Table<EclipseRow> table(setting.format, eclipse_columns(setting), setting.context(model));
    for (const EclipseRow& row : rows) table.add(row);
    table.finish(setting.site ? "no eclipse in that span can be seen there"
                              : "no eclipse in that span");
}

}  // namespace

void add_eclipses(CommandLine& main) {
    auto request = std::make_shared<EclipsesRequest>();
    Command command = main.add("eclipses", "Solar and lunar eclipses");
    command.flag("--solar", request->solar, "Solar eclipses (default: both)");
    command.flag("--lunar", request->lunar, "Lunar eclipses");
    add_span_options(command, request->options, "550 days on");
    add_site_options(command, request->options);
    add_rotation_options(command, request->options);
    add_model_options(command, request->options);
    add_output_options(command, request->options);
    command.flag("--all", request->all, "At a site: also what is below the horizon there");
    command.flag("--shadow-1-50", request->fiftieth,
                 "Lunar: the shadow enlarged by 1/50 instead of Danjon's rule");
    command.text("--map", request->map,
                 "Write a map: FILE.svg, .png, .geojson or .kml; DIR/ takes every eclipse");
    add_picture_options(command, request->picture,
                        "Draw the Moon in the shadow, or the Sun's disk at the site,");
    command.footer(
        "Decided by the ephemeris. Radii: Sun 959.63\" at 1 au, Moon 0.272488 (penumbra) and\n"
        "0.272281 (umbra) of the Earth's; lunar: Danjon's shadow.\n"
        "Examples:\n"
        "  solsys eclipses --solar --from 2026 --to 2031\n"
        "  solsys eclipses --city Reykjavik --from 2026-08-01 --to 2026-09-01 --json\n"
        "  solsys eclipses --solar --from 2026-08 --to 2026-09 --map eclipse.svg\n"
        "  solsys eclipses --lunar --from 2026-03 --to 2026-04 --svg shadow.svg");
    command.run([request] { run(*request); });
}

}  // namespace app
