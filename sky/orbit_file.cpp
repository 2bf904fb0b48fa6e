#include <cmath>
#include <filesystem>
#include <fstream>
#include <optional>
#include <system_error>

#include "io/comets.h"
#include "io/minor_planets.h"
#include "io/text_lines.h"
#include "sky/small_bodies.h"
#include "sky/text.h"
#include "solsys/sky/orbits.h"

namespace solsys::sky {
namespace {

using solsys_io::Comet;
using solsys_io::MinorPlanet;
using solsys_io::Problem;
using solsys_io::ReadSummary;

using Report = std::function<void(const std::string&)>;

constexpr std::size_t kLinesToTell = 300;  // the kind of a file; headers are shorter

// Regular files only: a device may have no end.
std::optional<std::ifstream> open_file(const std::string& path) {
    const std::filesystem::path name(std::u8string(path.begin(), path.end()));
    std::error_code ignored;
    if (!std::filesystem::is_regular_file(name, ignored)) return std::nullopt;
    std::ifstream file(name, std::ios::binary);
    if (!file) return std::nullopt;
    return file;
}

bool holds_comets(std::istream& file) {
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

// Lines without an orbit, told in one sentence.
void tell(const Report& report, const std::string& path, const Problem& first,
          std::size_t problems) {
    if (!report || problems == 0) return;
    std::string text =
        path + ":" + std::to_string(first.line) + ": " + std::string(first.message);
    if (problems > 1) text += " (and " + std::to_string(problems - 1) + " more such lines)";
    report(text);
}

// Reads the whole file and keeps the one orbit that is wanted.
template <class Record, class Reader>
Result<Body> pick(const std::string& path, std::istream& file, std::string_view object,
                  const Instant& near, const Report& report, Reader reader) {
    const std::string wanted = folded(object);
    std::optional<Record> best;
    Problem first{};
    const double jd = near.jd_utc();
    const ReadSummary summary = reader(
        file,
        [&](const Record& record) {
            if (!wanted.empty() && !is_called(record, wanted)) return;
            if (!best || std::fabs(record.epoch - jd) < std::fabs(best->epoch - jd))
                best = record;
        },
        [&](const Problem& problem) {
            if (first.line == 0) first = problem;
        });
    tell(report, path, first, summary.problems);
    if (!summary.complete) return Failure{"cannot read " + in_quotes(path) + " to its end"};
    if (summary.records == 0) return Failure{"no orbit in " + in_quotes(path)};
    if (wanted.empty() && summary.records > 1)
        return Failure{in_quotes(path) + " holds " + std::to_string(summary.records) +
                       " orbits: choose one of them"};
    if (!best) return Failure{"no " + in_quotes(object) + " in " + in_quotes(path)};
    return body_of(*best);
}

}  // namespace

Result<Body> find_in_file(const std::string& path, std::string_view object, const Instant& near,
                          const Report& report) {
    auto file = open_file(path);
    if (!file) return Failure{"cannot read " + in_quotes(path)};
    const bool comets = holds_comets(*file);
    file->clear();
    file->seekg(0);
    if (comets) return pick<Comet>(path, *file, object, near, report, solsys_io::read_comets);
    return pick<MinorPlanet>(path, *file, object, near, report, solsys_io::read_minor_planets);
}

}  // namespace solsys::sky
