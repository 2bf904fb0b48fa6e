#include "apps/solsys/options.h"

#include <fmt/format.h>

#include <charconv>
#include <cmath>
#include <cstdio>
#include <iterator>
#include <string_view>

#include "apps/solsys/failure.h"
#include "solsys/sky/earth_rotation.h"

namespace app {
namespace {

// More rows than anyone reads; keeps a mistyped step from running for hours.
constexpr double kMostInstants = 1e6;

void choose_reduction(CSWSolSys& model, const Options& options) {
    const bool modern = options.reduction == "modern";
    if (!modern && (options.dut1 || !options.earth_orientation.empty()))
        throw BadInput("--dut1 and --earth-orientation need the modern reduction");
    model.SetReduction(modern ? REDUCTION_MODERN : REDUCTION_CLASSIC);
    if (options.dut1 && !model.SetUT1(*options.dut1))
        throw BadInput("--dut1 must be within 1 second of 0");
    if (options.earth_orientation.empty()) return;
    const auto table = solsys::sky::read_earth_orientation(options.earth_orientation);
    if (!table) throw BadInput(table.message());
    const EarthOrientationReport report =
        model.SetEarthOrientation(table->rows.data(), static_cast<int>(table->rows.size()));
    if (report.rows == 0)
        throw BadInput("the table of the Earth's orientation has no usable row");
    if (const std::size_t problems = table->problems.size(); problems > 0)
        fmt::print(stderr, "solsys: {} lines skipped, the first: {}\n", problems,
                   table->problems.front());
    if (report.rejected + report.out_of_order + report.repeated + report.holes > 0)
        fmt::print(stderr, "solsys: rows rejected {}, out of order {}, repeated {}; holes {}\n",
                   report.rejected, report.out_of_order, report.repeated, report.holes);
}

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
    command
        .add_option("--reduction", options.reduction,
                    "modern (IAU 2006/2000A, light deflection) or classic (IAU 1976, two-term "
                    "nutation)")
        ->check(CLI::IsMember({"modern", "classic"}));
    command.add_option("--dut1", options.dut1,
                       "UT1 - UTC in seconds, for hour angles (modern reduction)");
    command.add_option("--earth-orientation", options.earth_orientation,
                       "Table of UT1 - UTC and the pole: finals2000A or EOP C04 of the IERS");
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
    choose_reduction(model, options);
}

void add_refraction_option(CLI::App& command, Options& options) {
    command.add_option(
        "--refraction", options.refraction,
        "Apparent altitudes too: standard, or P_HPA,T_C[,HUMIDITY[,WAVELENGTH_UM]] "
        "at the site; none");
}

Refraction chosen_refraction(const Options& options, const std::optional<Site>& site) {
    if (options.refraction == "none") return {};
    if (options.refraction == "standard") return {true, std::nullopt};
    solsys::sky::Atmosphere atmosphere;
    double* const fields[] = {&atmosphere.air.pressure_hpa, &atmosphere.air.temperature_c,
                              &atmosphere.air.humidity, &atmosphere.air.wavelength_um};
    std::string_view rest = options.refraction;
    std::size_t count = 0;
    for (bool more = true; more; ++count) {
        const std::size_t comma = rest.find(',');
        const std::string_view part = rest.substr(0, comma);
        const auto end = part.data() + part.size();
        if (count == std::size(fields) ||
            std::from_chars(part.data(), end, *fields[count]).ptr != end || part.empty())
            throw BadInput(
                fmt::format("no refraction '{}': use none, standard or "
                            "1010,10[,0.5[,0.574]]",
                            options.refraction));
        more = comma != std::string_view::npos;
        if (more) rest.remove_prefix(comma + 1);
    }
    const auto air = solsys::sky::checked_air(atmosphere.air);
    if (count < 2) throw BadInput("refraction needs a pressure and a temperature: 1010,10");
    if (!air) throw BadInput(air.message());
    if (site) {
        atmosphere.latitude_deg = site->latitude_deg;
        atmosphere.height_m = site->height_m;
    }
    return {true, atmosphere};
}

void place_observer(CSWSolSys& model, const std::optional<Site>& site) {
    const OBSERVER observer = site ? observer_at(*site) : geocentric_observer();
    model.SetObserver(&observer);
}

}  // namespace app
