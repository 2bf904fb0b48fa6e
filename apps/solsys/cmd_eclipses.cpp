// solsys eclipses: solar and lunar eclipses of a span, at a site, on the map.
#include <fmt/format.h>

#include <algorithm>
#include <atomic>
#include <cmath>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <memory>

#include "apps/solsys/commands.h"
#include "apps/solsys/failure.h"
#include "apps/solsys/options.h"
#include "draw/eclipse_map.h"
#include "draw/eclipse_pictures.h"
#include "solsys/sky/eclipses.h"
#include "solsys/sky/zone.h"

namespace app {
namespace {

using solsys::sky::Eclipse;
using solsys::sky::EclipseKind;
using solsys::sky::EclipseMoment;
using solsys::sky::Instant;
using solsys::sky::LocalEclipse;

struct Request {
    Options options;
    bool solar = false, lunar = false;
    bool fiftieth = false, all = false, light = false;
    std::string map, picture;
};

std::atomic<bool> interrupted{false};

Cell text_cell(const std::optional<Instant>& t, int decimals = 1) {
    Cell cell;
    if (t) cell = t->iso(decimals);
    return cell;
}

Cell number_cell(const std::optional<double>& value) {
    Cell cell;
    if (value) cell = *value;
    return cell;
}

void write(const std::filesystem::path& path, const std::string& text) {
    std::ofstream file(path, std::ios::binary);
    file << text;
    if (!file.flush()) throw BadInput(fmt::format("cannot write {}", path.string()));
}

// What a file of this name is to hold.
std::string drawn(const solsys::sky::EclipseMap& map, const std::string& extension,
                  bool light) {
    if (extension == ".svg") return solsys::draw::eclipse_map_svg(map, light);
    if (extension == ".geojson" || extension == ".json")
        return solsys::draw::eclipse_map_geojson(map);
    if (extension == ".kml") return solsys::draw::eclipse_map_kml(map);
    throw BadInput(
        "--map wants a file ending in .svg, .geojson or .kml, or a folder ending in /");
}

void write_maps(solsys::sky::Model& model, const Request& request,
                const std::vector<Eclipse>& eclipses) {
    const std::filesystem::path path(request.map);
    if (request.map.back() == '/' || std::filesystem::is_directory(path)) {
        std::filesystem::create_directories(path);
        for (const Eclipse& e : eclipses) {
            const auto map = eclipse_map(model, e);
            const std::string iso = e.greatest.iso(0);
            const std::string stem =
                fmt::format("{}-{}", iso.substr(0, iso.find('T')), to_string(e.kind));
            for (const char* extension : {".svg", ".geojson", ".kml"})
                write(path / (stem + extension), drawn(map, extension, request.light));
        }
        return;
    }
    if (eclipses.size() != 1)
        throw BadInput(
            fmt::format("{} eclipses in that span: one map is of one eclipse; a folder (--map "
                        "DIR/) takes all",
                        eclipses.size()));
    write(path, drawn(eclipse_map(model, eclipses.front()), path.extension().string(),
                      request.light));
}

std::vector<Column> columns(bool with_site) {
    std::vector<Column> all{{"kind", "Kind", nullptr},
                            {"type", "Type", nullptr},
                            {"greatest_utc", "Greatest (UT)", nullptr},
                            {"begin_utc", "", nullptr},
                            {"end_utc", "", nullptr},
                            {"magnitude", "Magnitude", fixed(4)},
                            {"gamma", "Gamma", fixed(4)},
                            {"saros", "Saros", nullptr},
                            {"lunation", "", nullptr},
                            {"latitude_deg", "Latitude", fixed(1)},
                            {"longitude_deg", "Longitude", fixed(1)},
                            {"path_width_km", "Width km", fixed(0)},
                            {"central_duration_s", "Duration s", fixed(0)}};
    if (!with_site) return all;
    all.push_back({"local_type", "Seen as", nullptr});
    for (const char* name :
         {"first_contact", "second_contact", "maximum", "third_contact", "fourth_contact"}) {
        const std::string key = name;
        all.push_back({key + "_utc", "", nullptr});
        all.push_back({key + "_altitude_deg", "", nullptr});
        all.push_back({key + "_azimuth_deg", "", nullptr});
        all.push_back({key + "_position_angle_deg", "", nullptr});
    }
    all.push_back({"", "First", nullptr});
    all.push_back({"", "Maximum", nullptr});
    all.push_back({"", "Altitude", fixed(0)});
    all.push_back({"", "Last", nullptr});
    all.push_back({"local_magnitude", "There", fixed(3)});
    all.push_back({"obscuration", "Covered", fixed(3)});
    all.push_back({"rise_utc", "", nullptr});
    all.push_back({"set_utc", "", nullptr});
    return all;
}

std::string clock(const std::optional<EclipseMoment>& m) {
    if (!m) return "-";
    const std::string iso = m->at.plus_seconds(0.5).iso(0);
    return iso.substr(iso.find('T') + 1, 8);
}

void add_row(Report& report, const Eclipse& e, const std::optional<LocalEclipse>& local) {
    std::vector<Cell> row{std::string(to_string(e.kind)),
                          e.type,
                          e.greatest.iso(1),
                          e.begin.iso(1),
                          e.end.iso(1),
                          e.magnitude,
                          e.gamma,
                          static_cast<long long>(e.saros),
                          static_cast<long long>(e.lunation),
                          e.nearest.latitude_deg,
                          e.nearest.longitude_deg,
                          number_cell(e.path_width_km),
                          number_cell(e.duration_s)};
    if (local) {
        row.emplace_back(local->type);
        const bool solar = e.kind == EclipseKind::kSolar;
        for (const auto* m :
             {&local->first, &local->second, &local->maximum, &local->third, &local->fourth}) {
            std::optional<Instant> at;
            std::optional<double> altitude, azimuth, angle;
            if (*m) {
                at = (*m)->at, altitude = (*m)->altitude_deg, azimuth = (*m)->azimuth_deg;
                if (solar) angle = (*m)->position_angle_deg;
            }
            row.push_back(text_cell(at));
            row.push_back(number_cell(altitude));
            row.push_back(number_cell(azimuth));
            row.push_back(number_cell(angle));
        }
        row.emplace_back(clock(local->first));
        row.emplace_back(clock(local->maximum));
        row.push_back(local->maximum ? Cell(local->maximum->altitude_deg) : Cell());
        row.emplace_back(clock(local->fourth));
        row.emplace_back(local->magnitude);
        row.push_back(solar ? Cell(local->obscuration) : Cell());
        row.push_back(text_cell(local->rise));
        row.push_back(text_cell(local->set));
    }
    report.add(row);
}

template <class T>
T need(solsys::sky::Result<T> result) {
    if (!result) throw BadInput(result.message());
    return std::move(*result);
}

std::optional<solsys::sky::Site> site_of(const Options& options) {
    if (!options.site.empty() && !options.city.empty())
        throw BadInput("give either --site or --city");
    if (!options.site.empty()) return need(solsys::sky::parse_site(options.site));
    if (!options.city.empty()) return need(solsys::sky::find_city(options.city));
    return std::nullopt;
}

// From --from (default now) to --to (default a year and a half on).
solsys::sky::Span span_of(const Options& options,
                          const std::optional<solsys::sky::Site>& site) {
    const std::string name = !options.zone.empty() ? options.zone : site ? site->zone : "UTC";
    const auto zone = need(solsys::sky::Zone::find(name));
    const Instant from = options.from.empty()
                             ? Instant::now()
                             : need(solsys::sky::parse_time(options.from, zone));
    const Instant to = options.to.empty() ? from.plus_days(550)
                                          : need(solsys::sky::parse_time(options.to, zone));
    if (to < from) throw BadInput("--to is before --from");
    return {from, to};
}

void run(const Request& request) {
    const auto site = site_of(request.options);
    const auto span = span_of(request.options, site);
    auto model = need(solsys::sky::Model::open(request.options.ephemeris));
    if (!request.picture.empty() && request.solar && !site)
        throw BadInput("--picture of a solar eclipse wants --site or --city");
    std::signal(SIGINT, [](int) { interrupted = true; });

    solsys::sky::EclipseOptions options;
    options.fiftieth = request.fiftieth;
    options.progress = [](double) { return !interrupted; };
    std::vector<Eclipse> eclipses;
    for (const EclipseKind kind : {EclipseKind::kSolar, EclipseKind::kLunar}) {
        const bool asked = kind == EclipseKind::kSolar ? request.solar : request.lunar;
        if (!asked && (request.solar || request.lunar)) continue;
        const auto found = find_eclipses(model, kind, span, options);
        eclipses.insert(eclipses.end(), found.begin(), found.end());
    }
    std::sort(eclipses.begin(), eclipses.end(),
              [](const Eclipse& a, const Eclipse& b) { return a.greatest < b.greatest; });

    Report report(columns(site.has_value()));
    std::vector<Eclipse> kept;
    std::vector<LocalEclipse> seen;
    for (const Eclipse& e : eclipses) {
        std::optional<LocalEclipse> local;
        if (site) {
            local = eclipse_at(model, e, *site);
            if (!local || (!local->visible && !request.all)) continue;
            seen.push_back(*local);
        }
        add_row(report, e, local);
        kept.push_back(e);
    }
    if (kept.empty())
        throw NothingFound(site ? "no eclipse in that span can be seen there"
                                : "no eclipse in that span");
    if (!request.map.empty()) write_maps(model, request, kept);
    if (!request.picture.empty()) {
        if (kept.size() != 1)
            throw BadInput(
                fmt::format("{} eclipses in that span: a picture is of one", kept.size()));
        const Eclipse& e = kept.front();
        write(request.picture, e.kind == EclipseKind::kLunar
                                   ? solsys::draw::moon_in_shadow_svg(model, e, request.light)
                                   : solsys::draw::eclipsed_sun_svg(model, e, seen.front(),
                                                                    *site, request.light));
    }
    const Format format = request.options.format();
    if (format == Format::kTable && site)
        fmt::print("Eclipses at {} (times: UT)\n\n", site->name);
    report.print(format);
}

}  // namespace

void add_eclipses(CLI::App& main) {
    auto request = std::make_shared<Request>();
    CLI::App* command = main.add_subcommand("eclipses", "Solar and lunar eclipses");
    command->add_flag("--solar", request->solar, "Solar eclipses (default: both)");
    command->add_flag("--lunar", request->lunar, "Lunar eclipses");
    command->add_option("--from", request->options.from, "Start of the span (default: now)");
    command->add_option("--to", request->options.to, "End of the span (default: 550 days on)");
    add_site_options(*command, request->options);
    add_ephemeris_option(*command, request->options);
    add_output_options(*command, request->options);
    command->add_flag("--all", request->all, "At a site: also what is below the horizon there");
    command->add_flag("--shadow-1-50", request->fiftieth,
                      "Lunar: the shadow enlarged by 1/50 instead of Danjon's rule");
    command->add_option("--map", request->map,
                        "Write a map: FILE.svg, .geojson or .kml; DIR/ takes every eclipse");
    command->add_option(
        "--picture", request->picture,
        "Write a picture (SVG): the Moon in the shadow, or the Sun at the site");
    command->add_flag("--light", request->light, "Pictures for paper instead of the screen");
    command->footer(
        "Examples:\n"
        "  solsys eclipses --solar --from 2026 --to 2031\n"
        "  solsys eclipses --city Reykjavik --from 2026-08-01 --to 2026-09-01 --json\n"
        "  solsys eclipses --solar --from 2026-08 --to 2026-09 --map eclipse.svg\n"
        "Decided by the ephemeris. Radii: Sun 959.63 arcsec at 1 au, Moon 0.272488 (penumbra) "
        "and "
        "0.272281 (umbra)\nof the Earth's; lunar: Danjon's shadow.");
    command->callback([request] { run(*request); });
}

}  // namespace app
