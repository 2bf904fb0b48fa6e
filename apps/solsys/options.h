// Options that several subcommands share, and what follows from them: the site, the clock, the
// instants and the model.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "apps/solsys/command_line.h"
#include "apps/solsys/report.h"
#include "solsys/sky/model.h"
#include "solsys/sky/places.h"
#include "solsys/sky/refraction.h"
#include "solsys/sky/risings.h"
#include "solsys/sky/zone.h"

namespace app {

namespace sky = solsys::sky;

struct Options {
    std::optional<std::string> time, from, to, step;
    std::optional<std::string> site, city, zone;
    std::optional<std::string> ephemeris, earth_orientation;
    std::string reduction = "modern";
    std::string refraction = "standard";
    double above_horizon_m = 0;
    std::optional<double> dut1_s;
    bool json = false;
    bool csv = false;

    // Throws BadInput when both are asked for.
    [[nodiscard]] Format format() const;
};

void add_output_options(Command& command, Options& options);
void add_instant_option(Command& command, Options& options);
// `without`: what --to is when it is not given, for the help.
void add_span_options(Command& command, Options& options, const std::string& without);
void add_step_option(Command& command, Options& options);
void add_site_options(Command& command, Options& options);
void add_zone_option(Command& command, Options& options);
void add_refraction_option(Command& command, Options& options);
void add_horizon_option(Command& command, Options& options);
// The ephemeris and the reduction.
void add_model_options(Command& command, Options& options);
// Of the Earth's rotation, where it matters by seconds: UT1 - UTC, or a table of it.
void add_rotation_options(Command& command, Options& options);

// How altitudes are shown, and where the horizon is.
struct Refraction {
    enum Kind { kNone, kStandard, kOfAir } kind = kStandard;
    sky::Air air;

    // Of a true altitude; empty where no ray arrives.
    [[nodiscard]] std::optional<double> apparent(double altitude_deg,
                                                 const sky::Site& site) const;
    // Where a body rises and sets. Throws BadInput for a height without one.
    [[nodiscard]] sky::Altitude horizon(const sky::Site& site, const sky::Body& body) const;
};

// Where and by which clock. The clock is that of --tz, else of the city, else UTC: times
// without an offset are read in it, days are cut by it, and everything is shown in it.
struct Setting {
    Format format = Format::kTable;
    std::optional<sky::Site> site;
    sky::Zone zone;
    Refraction refraction;

    // "time_utc" and "time_local" of an instant.
    [[nodiscard]] std::string utc(const sky::Instant& t) const { return t.iso(); }
    [[nodiscard]] std::string local(const sky::Instant& t) const { return zone.iso(t); }
    // "London (GB)", or the Earth's centre.
    [[nodiscard]] std::string place() const;
    // The keys that JSON and CSV rows end with: site, zone, source, reduction, version.
    [[nodiscard]] Context context(const sky::Model& model) const;
};
// Throws BadInput.
Setting setting_of(const Options& options);
// The same for commands that need a site.
Setting setting_with_site(const Options& options);

// The instant of --time (default now).
sky::Instant instant_of(const Options& options, const Setting& setting);
// One instant (--time), or those from --from to --to by --step.
std::vector<sky::Instant> instants_of(const Options& options, const Setting& setting);
// --from (default now) to --to (default that plus `default_days`). A date alone as --to means
// its end where days are listed, so that "--from 2026-12-01 --to 2026-12-07" is a week.
sky::Span span_of(const Options& options, const Setting& setting, double default_days);

// On the ephemeris asked for, or on the built-in theory, for the setting's site.
sky::Model model_of(const Options& options, const Setting& setting);
// "apparent_altitude_deg"; a table shows the true one where no ray arrives.
template <class Row, class Get>
void add_apparent_altitude(std::vector<Column<Row>>& columns, const Setting& setting, Get get,
                           int decimals) {
    columns.push_back({"apparent_altitude_deg", "", nullptr, [get, &setting](const Row& row) {
                           return cell(setting.refraction.apparent(get(row), *setting.site));
                       }});
    columns.push_back(
        {"", "Altitude", fixed(decimals), [get, &setting](const Row& row) {
             const double altitude = get(row);
             return Cell(
                 setting.refraction.apparent(altitude, *setting.site).value_or(altitude));
         }});
}

// Moves the model. Throws BadInput for an instant that it cannot take.
void move_to(sky::Model& model, const sky::Instant& t);

// How a table shows an instant by the setting's clock.
using ShownTime = std::string (*)(const sky::Zone&, const sky::Instant&);
inline std::string shown_clock(const sky::Zone& zone, const sky::Instant& t) {
    return zone.clock(t);
}
inline std::string shown_minutes(const sky::Zone& zone, const sky::Instant& t) {
    return zone.date_time(t);
}
inline std::string shown_seconds(const sky::Zone& zone, const sky::Instant& t) {
    return zone.seconds(t);
}
// The date alone: "2026-08-12".
inline std::string shown_date(const sky::Zone& zone, const sky::Instant& t) {
    return sky::to_string(zone.date(t));
}
// Without the date: "19:03:04".
inline std::string shown_clock_seconds(const sky::Zone& zone, const sky::Instant& t) {
    const std::string text = zone.seconds(t);
    return text.substr(text.rfind(' ') + 1);
}

// NAME_utc, NAME_local and, for people, the setting's clock ("-": does not happen).
template <class Row, class Get>
void add_instant_columns(std::vector<Column<Row>>& columns, const Setting& setting,
                         const std::string& name, const std::string& title, Get get,
                         ShownTime shown = shown_clock) {
    const auto add = [&](const std::string& key, const std::string& heading, auto text,
                         const char* none) {
        columns.push_back({key, heading, nullptr, [get, text, none](const Row& row) {
                               const std::optional<sky::Instant> t = get(row);
                               return t ? Cell(text(*t)) : text_cell(none);
                           }});
    };
    add(
        name + "_utc", "", [&setting](const sky::Instant& t) { return setting.utc(t); }, "");
    add(
        name + "_local", "", [&setting](const sky::Instant& t) { return setting.local(t); },
        "");
    if (!title.empty())
        add(
            "", title,
            [&setting, shown](const sky::Instant& t) { return shown(setting.zone, t); }, "-");
}

// "time_utc" and "time_local" for rows with a member `at`.
template <class Row>
void add_time_columns(std::vector<Column<Row>>& columns, const Setting& setting,
                      const std::string& title, ShownTime shown = shown_seconds) {
    add_instant_columns(
        columns, setting, "time", title, [](const Row& row) { return std::optional(row.at); },
        shown);
}

}  // namespace app
