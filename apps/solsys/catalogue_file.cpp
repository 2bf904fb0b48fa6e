#include "apps/solsys/catalogue_file.h"

#include <fmt/format.h>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <optional>

#include "apps/solsys/failure.h"
#include "apps/solsys/small_bodies.h"
#include "apps/solsys/text.h"
#include "io/comets.h"
#include "io/minor_planets.h"
#include "io/text_lines.h"

namespace app {
namespace {

using solsys_io::Comet;
using solsys_io::MinorPlanet;
using solsys_io::Problem;
using solsys_io::ReadSummary;

constexpr std::size_t kLinesToTell = 300;  // the kind of a file; headers are shorter
constexpr std::size_t kMostReports = 10;

std::ifstream open_file(const std::string& path) {
    const std::filesystem::path name(std::u8string(path.begin(), path.end()));
    std::error_code ignored;
    std::ifstream file(name, std::ios::binary);
    if (!file || std::filesystem::is_directory(name, ignored))
        throw BadInput(fmt::format("cannot read '{}'", path));
    return file;
}

bool holds_comets(const std::string& path) {
    std::ifstream file = open_file(path);
    solsys_io::TextLines lines(file);
    std::string_view line;
    int planets = 0;
    int comets = 0;
    while (lines.number() < kLinesToTell && lines.next(line)) {
        planets += solsys_io::parse_minor_planet(line).planet.has_value();
        comets += solsys_io::parse_comet(line).comet.has_value();
    }
    return comets > planets;
}

// Reads the whole file and keeps the one orbit that is wanted.
template <class Record, class Reader>
std::optional<Record> pick(const std::string& path, const std::string& object, Utc near,
                           Reader reader) {
    const std::string wanted = folded(object);
    std::optional<Record> best;
    std::size_t reported = 0;
    std::ifstream file = open_file(path);
    const ReadSummary summary = reader(
        file,
        [&](const Record& record) {
            if (!wanted.empty() && !is_called(record, wanted)) return;
            if (!best ||
                std::fabs(record.epoch - near.jd()) < std::fabs(best->epoch - near.jd()))
                best = record;
        },
        [&](const Problem& problem) {
            if (++reported <= kMostReports)
                fmt::print(stderr, "solsys: {}:{}: {}\n", path, problem.line, problem.message);
        });
    if (reported > kMostReports)
        fmt::print(stderr, "solsys: {}: {} more lines without an orbit\n", path,
                   reported - kMostReports);
    if (!summary.complete) throw BadInput(fmt::format("cannot read '{}' to its end", path));
    if (summary.records == 0) throw BadInput(fmt::format("no orbit in '{}'", path));
    if (wanted.empty() && summary.records > 1)
        throw BadInput(fmt::format("'{}' holds {} orbits: choose one with --object", path,
                                   summary.records));
    return best;
}

}  // namespace

Target find_in_file(const std::string& path, const std::string& object, Utc near) {
    std::optional<Target> found;
    if (holds_comets(path)) {
        if (const auto comet = pick<Comet>(path, object, near, solsys_io::read_comets))
            found = target_of(*comet);
    } else if (const auto planet =
                   pick<MinorPlanet>(path, object, near, solsys_io::read_minor_planets)) {
        found = target_of(*planet);
    }
    if (!found) throw NothingFound(fmt::format("no '{}' in '{}'", object, path));
    return *found;
}

}  // namespace app
