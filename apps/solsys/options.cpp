#include "apps/solsys/options.h"

#include <fmt/format.h>

#include <cmath>

#include "apps/solsys/failure.h"

namespace app {
namespace {

// More rows than anyone reads; keeps a mistyped step from running for hours.
constexpr double kMostInstants = 1e6;

}  // namespace

Format Options::format() const {
    if (json && csv) throw BadInput("--json and --csv exclude each other");
    return json ? Format::kJson : csv ? Format::kCsv : Format::kTable;
}

void add_output_options(CLI::App& command, Options& options) {
    command.add_flag("--json", options.json, "Print JSON: an array of objects");
    command.add_flag("--csv", options.csv, "Print CSV with a heading line");
}

void add_instant_options(CLI::App& command, Options& options) {
    command.add_option("--time", options.time,
                       "Instant: ISO 8601 (UTC unless it names a zone), jd:2451545.0, or now");
}

void add_span_options(CLI::App& command, Options& options) {
    command.add_option("--from", options.from, "Start of a span");
    command.add_option("--to", options.to, "End of a span");
}

void add_site_options(CLI::App& command, Options& options) {
    command.add_option("--site", options.site,
                       "Site: LAT,LON[,HEIGHT_M], degrees north and east");
    command.add_option("--city", options.city, "Site: a city of the built-in list");
    command.add_option("--tz", options.zone,
                       "Zone to show times in: +02:00, UTC or an IANA name");
}

void add_ephemeris_option(CLI::App& command, Options& options) {
    command.add_option("--ephemeris", options.ephemeris,
                       "DE ephemeris file or folder (without: the built-in theory)");
}

std::optional<Site> chosen_site(const Options& options) {
    if (!options.site.empty() && !options.city.empty())
        throw BadInput("--site and --city exclude each other");
    if (!options.site.empty()) return parse_site(options.site);
    if (!options.city.empty()) return find_city(options.city);
    return std::nullopt;
}

Zone chosen_zone(const Options& options, const std::optional<Site>& site) {
    if (!options.zone.empty()) return Zone(options.zone);
    try {
        return Zone(site ? site->zone : "UTC");
    } catch (const BadInput&) {
        return Zone();  // the system keeps no zones
    }
}

std::vector<Utc> chosen_instants(const Options& options) {
    if (options.from.empty() && options.to.empty())
        return {parse_time(options.time.empty() ? "now" : options.time)};
    if (!options.time.empty()) throw BadInput("--time and --from exclude each other");
    if (options.from.empty() || options.to.empty())
        throw BadInput("a span needs both --from and --to");
    const Utc from = parse_time(options.from);
    const double days = days_from(from, parse_time(options.to));
    const double step = parse_step(options.step);
    if (!(days >= 0)) throw BadInput("--to is before --from");
    if (days / step > kMostInstants)
        throw BadInput("more than a million instants: use a longer --step");
    std::vector<Utc> instants;
    // Half a step of grace would add one; a thousandth only keeps rounding from losing the end.
    for (int i = 0; i * step <= days + step * 1e-3; ++i)
        instants.push_back(plus_days(from, i * step));
    return instants;
}

Span chosen_span(const Options& options, double default_days) {
    const Utc from = parse_time(options.from.empty() ? "now" : options.from);
    const Utc to = options.to.empty() ? plus_days(from, default_days) : parse_time(options.to);
    if (!(days_from(from, to) >= 0)) throw BadInput("--to is before --from");
    return {from, to};
}

void open_model(CSWSolSys& model, const Options& options) {
    if (!model.InitSys(options.ephemeris.c_str()))
        throw BadInput("the model cannot be initialised: out of memory");
    if (!options.ephemeris.empty() && !model.HasEphemeris())
        throw BadInput(fmt::format("'{}' is no DE ephemeris file, nor a folder with one",
                                   options.ephemeris));
}

void place_observer(CSWSolSys& model, const std::optional<Site>& site) {
    const OBSERVER observer = site ? observer_at(*site) : geocentric_observer();
    model.SetObserver(&observer);
}

}  // namespace app
