#include "apps/solsys/options.h"

#include <fmt/format.h>

#include <cmath>

#include "apps/solsys/failure.h"
#include "solsys/version.h"

namespace app {
namespace {

// More rows than anyone reads; keeps a mistyped step from running for hours.
constexpr double kMostInstants = 1e6;
constexpr double kDegreesPerSecond = 360.98564736629 / 86400;  // of the Earth's turning

Air air_in(const std::string& text) {
    Air air;
    if (text == "standard") return air;
    air.none = text == "none";
    if (air.none) return air;
    const std::size_t comma = text.find(',');
    std::size_t used = 0;
    std::size_t used_after = 0;
    try {
        air.values.pressure_hpa = std::stod(text.substr(0, comma), &used);
        const std::string rest = comma == std::string::npos ? "10" : text.substr(comma + 1);
        air.values.temperature_c = std::stod(rest, &used_after);
        const bool whole = used == std::min(comma, text.size()) && used_after == rest.size();
        if (whole && air.values.pressure_hpa >= 0 && air.values.pressure_hpa <= 2000 &&
            air.values.temperature_c > -150 && air.values.temperature_c < 100)
            return air;
    } catch (const std::exception&) {
        // Not a number: told below.
    }
    throw BadInput(fmt::format(
        "--refraction: '{}' is none: use none, standard or PRESSURE_HPA,TEMPERATURE_C such as "
        "1010,10",
        text));
}

}  // namespace

Format Options::format() const {
    if (json && csv) throw BadInput("--json and --csv exclude each other");
    return json ? Format::kJson : csv ? Format::kCsv : Format::kTable;
}

void add_output_options(Command& command, Options& options) {
    command.flag("--json", options.json, "Print JSON: an array of objects");
    command.flag("--csv", options.csv, "Print CSV with a heading line");
}

void add_instant_option(Command& command, Options& options) {
    command.text("--time", options.time,
                 "Instant: 2026-12-01T20:00 (the site's clock), ...Z, ...+02:00, now, today, "
                 "now+1d, jd:2451545.0");
}

void add_span_options(Command& command, Options& options, const std::string& without) {
    command.text("--from", options.from, "Start of the span (without: now)");
    command.text("--to", options.to, "End of the span (without: " + without + ")");
}

void add_step_option(Command& command, Options& options) {
    command.text("--step", options.step, "Step of a span: 1d, 6h, 10m, 1w, 1mo, 1y");
}

void add_site_options(Command& command, Options& options) {
    command.text("--site", options.site,
                 "Site: LAT,LON[,HEIGHT_M] in degrees; the height is above sea level");
    command.text("--city", options.city, "Site: a city by name, also NAME,COUNTRY");
    add_zone_option(command, options);
}

void add_zone_option(Command& command, Options& options) {
    command.text("--tz", options.zone,
                 "Clock to read and show times in: an IANA name, +02:00 or UTC (without: "
                 "that of the city, else UTC)");
}

void add_air_options(Command& command, Options& options) {
    command.text("--refraction", options.refraction,
                 "Of apparent altitudes: none, standard or PRESSURE_HPA,TEMPERATURE_C");
    command.number("--dut1", options.dut1_s, {-10.0, 10.0}, "UT1 - UTC in seconds");
}

void add_horizon_option(Command& command, Options& options) {
    command.number("--above-horizon", options.above_horizon_m, {0.0, 1e6},
                   "Metres above the land or sea at the horizon, which lowers it");
}

void add_ephemeris_option(Command& command, Options& options) {
    command.text("--ephemeris", options.ephemeris,
                 "DE ephemeris file or folder (without: the built-in theory)");
}

std::string Setting::place() const { return site ? site->name : "the Earth's centre"; }

Context Setting::context(const sky::Model& model) const {
    Context context;
    if (site)
        context = {{"site", site->name},
                   {"site_latitude_deg", site->latitude_deg},
                   {"site_longitude_deg", site->longitude_deg},
                   {"site_height_m", site->height_m}};
    context.emplace_back("zone", zone.name());
    context.emplace_back("source", model.source());
    context.emplace_back("version", std::string(SOLSYS_VERSION));
    return context;
}

Setting setting_of(const Options& options) {
    Setting setting;
    setting.format = options.format();
    if (options.site && options.city) throw BadInput("--site and --city exclude each other");
    if (options.site) setting.site = need(sky::parse_site(*options.site), "--site");
    if (options.city) setting.site = need(sky::find_city(*options.city), "--city");
    if (setting.site) setting.site->above_horizon_m = options.above_horizon_m;
    if (options.zone) {
        setting.zone = need(sky::Zone::find(*options.zone), "--tz");
    } else if (setting.site) {
        setting.zone = need(sky::Zone::find(setting.site->zone), "--tz");
    }
    setting.air = air_in(options.refraction.value_or("standard"));
    setting.dut1_s = options.dut1_s;
    return setting;
}

Setting setting_with_site(const Options& options) {
    Setting setting = setting_of(options);
    if (!setting.site) throw BadInput("a place is needed: --city NAME or --site LAT,LON");
    return setting;
}

sky::Instant instant_of(const Options& options, const Setting& setting) {
    return need(sky::parse_time(options.time.value_or("now"), setting.zone), "--time");
}

std::vector<sky::Instant> instants_of(const Options& options, const Setting& setting) {
    if (!options.from && !options.to) {
        if (options.step) throw BadInput("--step needs --from and --to");
        return {instant_of(options, setting)};
    }
    if (options.time) throw BadInput("--time and --from exclude each other");
    if (!options.from || !options.to) throw BadInput("a span needs both --from and --to");
    const sky::Instant from = need(sky::parse_time(*options.from, setting.zone), "--from");
    const sky::Instant to = need(sky::parse_time(*options.to, setting.zone), "--to");
    const sky::Step step = need(sky::parse_step(options.step.value_or("1d")), "--step");
    const double days = sky::days_between(from, to);
    if (!(days >= 0)) throw BadInput("--to is before --from");
    const double step_days = step.months != 0 ? 28.0 * step.months : step.days;
    if (days / step_days > kMostInstants)
        throw BadInput("--step: more than a million instants; use a longer one");
    std::vector<sky::Instant> instants;
    // A thousandth of a step keeps rounding from losing the end.
    const sky::Instant end = to.plus_days(step_days * 1e-3);
    for (int i = 0;; ++i) {
        const sky::Instant t = sky::after_steps(from, step, i, setting.zone);
        if (t > end) return instants;
        instants.push_back(t);
    }
}

sky::Span span_of(const Options& options, const Setting& setting, double default_days) {
    const sky::Instant from =
        need(sky::parse_time(options.from.value_or("now"), setting.zone), "--from");
    const sky::Instant to = options.to
                                ? need(sky::parse_time(*options.to, setting.zone), "--to")
                                : from.plus_days(default_days);
    if (!(sky::days_between(from, to) >= 0)) throw BadInput("--to is before --from");
    return {from, to};
}

sky::Model model_of(const Options& options, const Setting& setting) {
    sky::Model model = need(sky::Model::open(options.ephemeris.value_or("")), "--ephemeris");
    if (setting.site) {
        // The Earth turned by UT1 - UTC is the site moved east by as much.
        sky::Site turned = *setting.site;
        turned.longitude_deg += setting.dut1_s * kDegreesPerSecond;
        model.observe_from(turned);
    }
    return model;
}

void move_to(sky::Model& model, const sky::Instant& t) {
    if (!model.move_to(t)) throw BadInput(fmt::format("{} is out of reach", t.iso()));
}

}  // namespace app
