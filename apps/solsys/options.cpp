#include "apps/solsys/options.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdio>

#include "apps/solsys/failure.h"
#include "solsys/sky/earth_rotation.h"
#include "solsys/version.h"

namespace app {
namespace {

// More rows than anyone reads; keeps a mistyped step from running for hours.
constexpr double kMostInstants = 1e6;

Refraction refraction_in(const std::string& text) {
    Refraction refraction;
    if (text == "standard") return refraction;
    refraction.kind = Refraction::kNone;
    if (text == "none") return refraction;
    refraction.kind = Refraction::kOfAir;
    sky::Air& air = refraction.air;
    int used = 0;
    const int read =
        std::sscanf(text.c_str(), "%lf,%lf%n", &air.pressure_hpa, &air.temperature_c, &used);
    if (read != 2 || static_cast<std::size_t>(used) != text.size())
        throw BadInput(fmt::format(
            "--refraction: '{}' is none: use none, standard or PRESSURE_HPA,TEMPERATURE_C such "
            "as 1010,10",
            text));
    need(sky::checked_air(air), "--refraction");
    return refraction;
}

void set_rotation(sky::Model& model, const Options& options) {
    if (options.earth_orientation) {
        const auto table = need(sky::read_earth_orientation(*options.earth_orientation),
                                "--earth-orientation");
        for (std::size_t i = 0; i < std::min<std::size_t>(table.problems.size(), 1); ++i)
            tell(*options.earth_orientation + ": " + table.problems[i]);
        const auto report =
            need(sky::set_earth_orientation(model, table), "--earth-orientation");
        if (const auto text = sky::summary_of(report); !text.empty())
            tell(*options.earth_orientation + ": " + text);
    }
    if (options.dut1_s) need(sky::set_earth_rotation(model, *options.dut1_s), "--dut1");
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

void add_refraction_option(Command& command, Options& options) {
    command.text("--refraction", options.refraction,
                 "Of the air: none, standard or PRESSURE_HPA,TEMPERATURE_C at the site");
}

void add_rotation_options(Command& command, Options& options) {
    command.number("--dut1", options.dut1_s, {-1, 1}, "UT1 - UTC in seconds (without: 0)");
    command.text("--earth-orientation", options.earth_orientation,
                 "Table of UT1 - UTC and the pole: finals2000A or EOP C04 of the IERS");
}

void add_horizon_option(Command& command, Options& options) {
    command.number("--above-horizon", options.above_horizon_m, {0.0, 1e6},
                   "Metres above the land or sea at the horizon, which lowers it");
}

void add_model_options(Command& command, Options& options) {
    command.text("--ephemeris", options.ephemeris,
                 "DE ephemeris file or folder (without: the built-in theory)");
    command.text("--reduction", options.reduction,
                 "Precession, nutation and light: modern (IAU 2000/2006), or classic as in "
                 "almanacs before");
}

std::optional<double> Refraction::apparent(double altitude_deg, const sky::Site& site) const {
    if (kind == kNone) return altitude_deg;
    if (kind == kStandard) return sky::apparent_altitude(altitude_deg, std::nullopt);
    return sky::apparent_altitude(altitude_deg,
                                  sky::Atmosphere{air, site.latitude_deg, site.height_m});
}

sky::Altitude Refraction::horizon(const sky::Site& site, const sky::Body& body) const {
    sky::Altitude standard = sky::horizon_of(site, body);
    if (kind == kStandard) return standard;
    if (kind == kNone) return {-site.dip_deg(), standard.upper_limb};
    const auto of_air = sky::horizon_of(site, body, air);
    if (!of_air) throw BadInput("--above-horizon: at most 10 km with the air of --refraction");
    return *of_air;
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
    const bool modern = model.reduction() == REDUCTION_MODERN;
    context.emplace_back("reduction", std::string(modern ? "modern" : "classic"));
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
    setting.refraction = refraction_in(options.refraction);
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
    const bool classic = options.reduction == "classic";
    if (!classic && options.reduction != "modern")
        throw BadInput("--reduction: use modern or classic");
    if (classic && (options.dut1_s || options.earth_orientation))
        throw BadInput("--reduction: the classic one takes UT1 for UTC: no --dut1, no table");
    sky::Model model = need(sky::Model::open(options.ephemeris.value_or("")), "--ephemeris");
    model.use(classic ? REDUCTION_CLASSIC : REDUCTION_MODERN);
    set_rotation(model, options);
    if (setting.site) model.observe_from(*setting.site);
    return model;
}

void move_to(sky::Model& model, const sky::Instant& t) {
    if (!model.move_to(t)) throw BadInput(fmt::format("{} is out of reach", t.iso()));
}

}  // namespace app
