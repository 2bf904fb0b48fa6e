#include "solsys/sky/earth_rotation.h"

#include <cmath>
#include <filesystem>
#include <fstream>
#include <optional>
#include <system_error>

#include "io/earth_orientation.h"
#include "sky/text.h"

namespace solsys::sky {
namespace {

constexpr std::size_t kMostProblems = 100;  // told; a file of another kind has thousands

// Regular files only: a device may have no end.
std::optional<std::ifstream> open_table(const std::string& path) {
    const std::filesystem::path name(std::u8string(path.begin(), path.end()));
    std::error_code ignored;
    if (!std::filesystem::is_regular_file(name, ignored)) return std::nullopt;
    std::ifstream in(name, std::ios::binary);
    if (!in) return std::nullopt;
    return in;
}

void add_count(std::string& text, int count, const char* what) {
    if (count == 0) return;
    if (!text.empty()) text += "; ";
    text += std::to_string(count) + what;
}

}  // namespace

Result<EarthOrientationTable> read_earth_orientation(const std::string& path) {
    auto in = open_table(path);
    if (!in) return Failure{in_quotes(path) + " cannot be opened"};
    EarthOrientationTable table;
    auto file = solsys_io::read_orientation(*in, [&](const solsys_io::Problem& problem) {
        if (table.problems.size() < kMostProblems)
            table.problems.push_back("line " + std::to_string(problem.line) + ": " +
                                     std::string(problem.message));
    });
    if (!file.summary.complete) return Failure{in_quotes(path) + " cannot be read to its end"};
    if (!file.format || file.rows.empty())
        return Failure{in_quotes(path) +
                       " is no table of the Earth's orientation: use finals2000A "
                       "or EOP C04 of the IERS"};
    table.rows = std::move(file.rows);
    return table;
}

Result<EarthOrientationReport> set_earth_orientation(Model& model,
                                                     const EarthOrientationTable& table) {
    const EarthOrientationReport report = model.classic().SetEarthOrientation(
        table.rows.data(), static_cast<int>(table.rows.size()));
    if (report.rows == 0)
        return Failure{"the table of the Earth's orientation has no usable row"};
    return report;
}

std::string summary_of(const EarthOrientationReport& report) {
    std::string text;
    add_count(text, report.rejected, " rows left out as impossible");
    add_count(text, report.out_of_order, " rows out of order put where they belong");
    add_count(text, report.repeated, " dates repeated, the last of each counts");
    add_count(text, report.holes, " holes of more than 5.5 days, not bridged");
    return text;
}

Result<bool> set_earth_rotation(Model& model, double ut1_minus_utc_s, double pole_x_arcsec,
                                double pole_y_arcsec) {
    if (!(std::fabs(ut1_minus_utc_s) <= 1))
        return Failure{"UT1 - UTC must be within 1 second of 0"};
    if (std::isnan(pole_x_arcsec) || std::isnan(pole_y_arcsec) ||
        !model.classic().SetPolarMotion(pole_x_arcsec, pole_y_arcsec))
        return Failure{"the pole must be within 2 arcsec of 0"};
    return model.classic().SetUT1(ut1_minus_utc_s);
}

Result<bool> set_leap_seconds(Model& model, const std::string& path) {
    auto in = open_table(path);
    if (!in) return Failure{in_quotes(path) + " cannot be opened"};
    const auto file = solsys_io::read_leap_seconds(*in);
    const double until =
        file.valid_until_mjd.value_or(file.rows.empty() ? 0.0 : file.rows.back().mjd_utc);
    if (!file.summary.complete || file.summary.problems > 0 ||
        !model.classic().SetLeapSeconds(file.rows.data(), static_cast<int>(file.rows.size()),
                                        until))
        return Failure{in_quotes(path) +
                       " is no table of leap seconds: use leap-seconds.list of the IERS"};
    return true;
}

}  // namespace solsys::sky
