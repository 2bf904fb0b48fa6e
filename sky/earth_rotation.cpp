#include "solsys/sky/earth_rotation.h"

#include <filesystem>
#include <fstream>

#include "io/earth_orientation.h"
#include "sky/text.h"

namespace solsys::sky {
namespace {

constexpr std::size_t kMostProblems = 100;  // told; a file of another kind has thousands

}  // namespace

Result<EarthOrientationTable> read_earth_orientation(const std::string& path) {
    std::ifstream in(std::filesystem::path(std::u8string(path.begin(), path.end())),
                     std::ios::binary);
    if (!in) return Failure{in_quotes(path) + " cannot be opened"};
    EarthOrientationTable table;
    auto file = solsys_io::read_orientation(in, [&](const solsys_io::Problem& problem) {
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

}  // namespace solsys::sky
