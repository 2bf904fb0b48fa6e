// Options that several subcommands share, and what follows from them: the site, the clock, the
// instants and the model.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "apps/solsys/report.h"
#include "solsys/sky/model.h"
#include "solsys/sky/places.h"
#include "solsys/sky/zone.h"

namespace CLI {
class App;  // its header costs seconds: only the sources that declare options include it
}

namespace app {

namespace sky = solsys::sky;

struct Options {
    std::optional<std::string> time, from, to, step;
    std::optional<std::string> site, city, zone;
    std::optional<std::string> ephemeris;
    std::optional<std::string> refraction;
    double above_horizon_m = 0;
    double dut1_s = 0;
    bool json = false;
    bool csv = false;

    // Throws BadInput when both are asked for.
    [[nodiscard]] Format format() const;
};

void add_output_options(CLI::App& command, Options& options);
void add_instant_option(CLI::App& command, Options& options);
void add_span_options(CLI::App& command, Options& options);
void add_step_option(CLI::App& command, Options& options);
void add_site_options(CLI::App& command, Options& options);
void add_zone_option(CLI::App& command, Options& options);
void add_air_options(CLI::App& command, Options& options);  // refraction, dut1
void add_horizon_option(CLI::App& command, Options& options);
void add_ephemeris_option(CLI::App& command, Options& options);
// A text option of a command's own that must not be empty.
void add_text_option(CLI::App& command, const std::string& name,
                     std::optional<std::string>& value, const std::string& help);

// How altitudes are shown.
struct Air {
    bool none = false;
    sky::Air values;

    [[nodiscard]] double apparent(double altitude_deg) const {
        return none ? altitude_deg : altitude_deg + sky::refraction_deg(altitude_deg, values);
    }
};

// Where and by which clock. The clock is that of --tz, else of the city, else UTC: times
// without an offset are read in it, days are cut by it, and everything is shown in it.
struct Setting {
    Format format = Format::kTable;
    std::optional<sky::Site> site;
    sky::Zone zone;
    Air air;
    double dut1_s = 0;

    // "time_utc" and "time_local" of an instant.
    [[nodiscard]] std::string utc(const sky::Instant& t) const { return t.iso(); }
    [[nodiscard]] std::string local(const sky::Instant& t) const { return zone.iso(t); }
    // "London (GB)", or the Earth's centre.
    [[nodiscard]] std::string place() const;
    // The keys that JSON and CSV rows end with: site, zone, source, version.
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
// Moves the model. Throws BadInput for an instant that it cannot take.
void move_to(sky::Model& model, const sky::Instant& t);

// A column "time_utc" and one "time_local" for rows with a member `at`.
template <class Row>
void add_time_columns(std::vector<Column<Row>>& columns, const Setting& setting,
                      const std::string& title) {
    columns.push_back({"time_utc", "", nullptr,
                       [&setting](const Row& row) { return Cell(setting.utc(row.at)); }});
    columns.push_back({"time_local", "", nullptr,
                       [&setting](const Row& row) { return Cell(setting.local(row.at)); }});
    columns.push_back({"", title, nullptr, [&setting](const Row& row) {
                           return Cell(setting.zone.seconds(row.at));
                       }});
}

}  // namespace app
