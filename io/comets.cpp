#include "io/comets.h"

#include <cmath>
#include <fstream>

#include "core/constants.h"
#include "io/fields.h"
#include "io/text_lines.h"

namespace solsys_io {
namespace {

using solsys::kDegree;

constexpr std::size_t kLastCometColumn = 79;  // the shortest line that holds an orbit
constexpr double kLargestEccentricity = 100;
constexpr double kMagnitudesPerSlope = 2.5;  // the slope is the power of r in the brightness

struct CometAngle {
    std::size_t first, last;
    double greatest;  // degrees
    double Comet::*member;
    std::string_view message;
};
constexpr CometAngle kCometAngles[] = {
    {52, 59, 360, &Comet::peri, "no argument of perihelion in columns 52-59"},
    {62, 69, 360, &Comet::node, "no longitude of the node in columns 62-69"},
    {72, 79, 180, &Comet::i, "no inclination in columns 72-79"},
};

// A date with a fraction of the day, from three columns of text.
std::optional<double> date_in(std::string_view year, std::string_view month,
                              std::string_view day) {
    const auto y = integer_in(year), m = integer_in(month);
    const auto d = real_in(day);
    if (!y || !m || !d || *d < 1 || *d >= 32) return std::nullopt;
    const double whole = std::floor(*d);
    const auto midnight = julian_date(*y, *m, static_cast<int>(whole));
    if (!midnight) return std::nullopt;
    return *midnight + (*d - whole);
}

bool set_magnitude(std::string_view text, double factor, float& value) {
    if (trimmed(text).empty()) return true;
    const auto number = real_in(text);
    if (!number || std::fabs(*number) >= Comet::kUnknown) return false;
    value = static_cast<float>(*number * factor);
    return true;
}

std::string_view parse_name(std::string_view line, Comet& comet) {
    if (const auto number = columns(line, 1, 4); !trimmed(number).empty()) {
        const auto value = integer_in(number);
        if (!value || *value <= 0) return "no comet number in columns 1-4";
        comet.number = static_cast<std::uint32_t>(*value);
    }
    comet.kind = line[4];
    if (std::string_view("PCDXAI").find(comet.kind) == std::string_view::npos)
        return "no kind of orbit in column 5";
    copy_text(trimmed(columns(line, 103, 158)), comet.name);
    return {};
}

std::string_view parse_orbit(std::string_view line, Comet& comet) {
    const auto perihelion =
        date_in(columns(line, 15, 18), columns(line, 20, 21), columns(line, 23, 29));
    if (!perihelion) return "no date of perihelion in columns 15-29";
    comet.perihelion_time = *perihelion;
    const auto q = real_in(columns(line, 31, 39));
    if (!q || *q <= 0) return "no perihelion distance in columns 31-39";
    comet.q = *q;
    const auto e = real_in(columns(line, 42, 49));
    if (!e || *e < 0 || *e > kLargestEccentricity) return "no eccentricity in columns 42-49";
    comet.e = *e;
    for (const CometAngle& angle : kCometAngles) {
        const auto degrees = real_in(columns(line, angle.first, angle.last));
        if (!degrees || *degrees < 0 || *degrees > angle.greatest) return angle.message;
        comet.*angle.member = *degrees * kDegree;
    }
    comet.epoch = comet.perihelion_time;
    if (!trimmed(columns(line, 82, 89)).empty()) {
        const auto epoch =
            date_in(columns(line, 82, 85), columns(line, 86, 87), columns(line, 88, 89));
        if (!epoch) return "no epoch in columns 82-89";
        comet.epoch = *epoch;
    }
    return {};
}

std::string_view parse(std::string_view line, Comet& comet) {
    if (is_binary(line)) return "not text";
    if (line.size() < kLastCometColumn) return "too short for an orbit";
    if (const auto fault = parse_name(line, comet); !fault.empty()) return fault;
    if (const auto fault = parse_orbit(line, comet); !fault.empty()) return fault;
    if (!set_magnitude(columns(line, 92, 95), 1, comet.H))
        return "no absolute magnitude in columns 92-95";
    if (!set_magnitude(columns(line, 97, 100), kMagnitudesPerSlope, comet.K))
        return "no slope parameter in columns 97-100";
    return {};
}

}  // namespace

CometLine parse_comet(std::string_view line) {
    CometLine result;
    Comet comet;
    result.message = parse(line, comet);
    if (result.message.empty()) result.comet = comet;
    return result;
}

ReadSummary read_comets(std::istream& in, const std::function<void(const Comet&)>& on_comet,
                        const ProblemHandler& on_problem) {
    ReadSummary summary;
    TextLines lines(in);
    std::string_view line;
    while (lines.next(line)) {
        if (trimmed(line).empty() && !lines.too_long()) continue;
        Comet comet;
        const std::string_view message =
            lines.too_long() ? std::string_view("line too long") : parse(line, comet);
        if (message.empty()) {
            ++summary.records;
            on_comet(comet);
        } else {
            ++summary.problems;
            if (on_problem) on_problem({lines.number(), message});
        }
    }
    summary.lines = lines.number();
    summary.complete = !lines.broken();
    return summary;
}

std::optional<std::vector<Comet>> load_comets(const std::filesystem::path& path,
                                              const ProblemHandler& on_problem) {
    std::ifstream in(path, std::ios::binary);
    if (!in) return std::nullopt;
    std::vector<Comet> comets;
    const auto summary = read_comets(
        in, [&](const Comet& comet) { comets.push_back(comet); }, on_problem);
    if (!summary.complete) return std::nullopt;
    return comets;
}

}  // namespace solsys_io
