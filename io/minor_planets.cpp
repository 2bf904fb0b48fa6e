#include "io/minor_planets.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <fstream>
#include <string>

#include "core/constants.h"
#include "io/designations.h"
#include "io/fields.h"
#include "io/text_lines.h"

namespace solsys_io {
namespace {

using solsys::kDegree;

// Columns of the format, counted from 1.
constexpr std::size_t kLastPlanetColumn = 103;  // the shortest line that holds an orbit
// Blank in every line: a character lost or gained shows here.
constexpr std::size_t kGaps[] = {8, 14, 20, 26, 36, 37, 47, 48, 58, 59, 69, 70, 80, 92, 104};
constexpr std::size_t kTypicalLine = 203;  // bytes, its end included

constexpr double kGaussDegrees = 0.01720209895 / kDegree;  // degrees per day at 1 au
// The mean motion is printed to 8 decimals and must agree with the semi-major axis: a line with
// damaged digits does not.
constexpr double kMotionResolution = 1e-8;  // degrees per day
constexpr double kMotionAgreement = 1e-3;

struct PlanetAngle {
    std::size_t first, last;
    double greatest;  // degrees
    double MinorPlanet::*member;
    std::string_view message;
};
constexpr PlanetAngle kPlanetAngles[] = {
    {27, 35, 360, &MinorPlanet::M, "no mean anomaly in columns 27-35"},
    {38, 46, 360, &MinorPlanet::peri, "no argument of perihelion in columns 38-46"},
    {49, 57, 360, &MinorPlanet::node, "no longitude of the node in columns 49-57"},
    {60, 68, 180, &MinorPlanet::i, "no inclination in columns 60-68"},
};

// Sets number and name from the packed designation and the one in words, "(1) Ceres".
bool set_designation(std::string_view line, MinorPlanet& planet) {
    const std::string_view packed = trimmed(columns(line, 1, 7));
    if (packed.empty()) return false;
    copy_text(packed, planet.packed);
    planet.number = unpack_number(packed).value_or(0);

    std::string_view words = trimmed(columns(line, 167, 194));
    if (!words.empty() && words.front() == '(') {
        const std::size_t close = words.find(')');
        if (close != std::string_view::npos) words = trimmed(words.substr(close + 1));
    }
    if (!words.empty())
        copy_text(words, planet.name);
    else if (const auto provisional = unpack_provisional(packed))
        copy_text(*provisional, planet.name);
    return true;
}

// A magnitude that may be left blank; false if something else stands there.
bool set_magnitude(std::string_view text, float& value) {
    if (trimmed(text).empty()) return true;
    const auto number = real_in(text);
    if (!number || std::fabs(*number) >= MinorPlanet::kUnknown) return false;
    value = static_cast<float>(*number);
    return true;
}

std::string_view parse(std::string_view line, MinorPlanet& planet) {
    if (is_binary(line)) return "not text";
    if (line.size() < kLastPlanetColumn) return "too short for an orbit";
    for (const std::size_t gap : kGaps)
        if (gap <= line.size() && line[gap - 1] != ' ')
            return "columns are not in their places";
    if (!set_designation(line, planet)) return "no designation in columns 1-7";
    if (!set_magnitude(columns(line, 9, 13), planet.H))
        return "no absolute magnitude in columns 9-13";
    if (!set_magnitude(columns(line, 15, 19), planet.G))
        return "no slope parameter in columns 15-19";

    const auto epoch = unpack_date(columns(line, 21, 25));
    if (!epoch) return "no packed epoch in columns 21-25";
    planet.epoch = *epoch;

    for (const PlanetAngle& angle : kPlanetAngles) {
        const auto degrees = real_in(columns(line, angle.first, angle.last));
        if (!degrees || *degrees < 0 || *degrees > angle.greatest) return angle.message;
        planet.*angle.member = *degrees * kDegree;
    }
    const auto e = real_in(columns(line, 71, 79));
    if (!e || *e < 0 || *e >= 1) return "no eccentricity below 1 in columns 71-79";
    const auto n = real_in(columns(line, 81, 91));
    if (!n || *n <= 0) return "no mean motion in columns 81-91";
    const auto a = real_in(columns(line, 93, kLastPlanetColumn));
    if (!a || *a <= 0) return "no semi-major axis in columns 93-103";

    const double n_of_a = kGaussDegrees / (*a * std::sqrt(*a));
    if (std::fabs(*n - n_of_a) > kMotionAgreement * n_of_a + kMotionResolution)
        return "mean motion and semi-major axis disagree";
    planet.e = *e;
    planet.n = *n * kDegree;
    planet.a = *a;
    return {};
}

bool is_dashes(std::string_view line) {
    return line.size() >= 10 && line.find_first_not_of('-') == std::string_view::npos;
}

// Lines before the first orbit: a header if a line of dashes ends them, else faults.
class Header {
  public:
    static constexpr std::size_t kLongest = 200;  // lines; published headers have about 40

    [[nodiscard]] bool open() const { return open_; }
    void close() { open_ = false, held_.clear(); }
    void hold(const Problem& problem) { held_.push_back(problem); }
    [[nodiscard]] bool full() const { return held_.size() >= kLongest; }
    [[nodiscard]] const std::vector<Problem>& held() const { return held_; }

  private:
    bool open_ = true;
    std::vector<Problem> held_;
};

}  // namespace

MinorPlanetLine parse_minor_planet(std::string_view line) {
    MinorPlanetLine result;
    MinorPlanet planet;
    result.message = parse(line, planet);
    if (result.message.empty()) result.planet = planet;
    return result;
}

ReadSummary read_minor_planets(std::istream& in,
                               const std::function<void(const MinorPlanet&)>& on_planet,
                               const ProblemHandler& on_problem) {
    ReadSummary summary;
    const auto report = [&](const Problem& problem) {
        ++summary.problems;
        if (on_problem) on_problem(problem);
    };
    Header header;
    const auto header_was_none = [&] {
        for (const Problem& problem : header.held()) report(problem);
        header.close();
    };

    TextLines lines(in);
    std::string_view line;
    while (lines.next(line)) {
        if (trimmed(line).empty() && !lines.too_long()) continue;
        if (header.open() && is_dashes(line)) {
            header.close();
            continue;
        }
        MinorPlanet planet;
        const std::string_view message =
            lines.too_long() ? std::string_view("line too long") : parse(line, planet);
        if (message.empty()) {
            if (header.open()) header_was_none();
            ++summary.records;
            on_planet(planet);
        } else if (header.open()) {
            header.hold({lines.number(), message});
            if (header.full()) header_was_none();
        } else {
            report({lines.number(), message});
        }
    }
    if (header.open()) header_was_none();
    summary.lines = lines.number();
    summary.complete = !lines.broken();
    return summary;
}

std::optional<std::vector<MinorPlanet>> load_minor_planets(const std::filesystem::path& path,
                                                           const ProblemHandler& on_problem) {
    std::ifstream in(path, std::ios::binary);
    if (!in) return std::nullopt;
    std::vector<MinorPlanet> planets;
    std::error_code failure;
    const auto size = std::filesystem::file_size(path, failure);
    if (!failure) planets.reserve(static_cast<std::size_t>(size / kTypicalLine) + 1);

    const auto summary = read_minor_planets(
        in, [&](const MinorPlanet& planet) { planets.push_back(planet); }, on_problem);
    if (!summary.complete) return std::nullopt;
    return planets;
}

}  // namespace solsys_io
