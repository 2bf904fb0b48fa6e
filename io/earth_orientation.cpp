#include "io/earth_orientation.h"

#include <array>
#include <cmath>

#include "io/fields.h"
#include "io/text_lines.h"

namespace solsys_io {
namespace {

constexpr double kNtpEpochMjd = 15020;  // 1900 January 1
constexpr double kSecondsPerDay = 86400;

// The words of a line, as many as there are places.
template <std::size_t N>
std::size_t split(std::string_view line, std::array<std::string_view, N>& words) {
    std::size_t count = 0;
    while (count < N) {
        line = trimmed(line);
        if (line.empty()) break;
        const std::size_t end = line.find_first_of(" \t");
        words[count++] = line.substr(0, end);
        if (end == std::string_view::npos) break;
        line.remove_prefix(end);
    }
    return count;
}

// The date of the first three words and the MJD in that place agree, to the day.
bool dated(const std::array<std::string_view, 8>& words, std::size_t mjd_at) {
    const auto year = integer_in(words[0]), month = integer_in(words[1]),
               day = integer_in(words[2]);
    const auto mjd = real_in(words[mjd_at]);
    if (!year || !month || !day || !mjd) return false;
    const auto jd = julian_date(*year, *month, *day);
    return jd && std::floor(*mjd) == *jd - 2400000.5;
}

bool is_finals(std::string_view line) {
    const auto mjd = real_in(columns(line, 8, 15));
    const std::string_view flag = columns(line, 17, 17);
    return line.size() >= 15 && line.find('.', 7) == 12 && mjd && *mjd > 0 &&
           (flag == "I" || flag == "P" || flag == " " || flag.empty());
}

OrientationLine parse_finals(std::string_view line) {
    const auto mjd = real_in(columns(line, 8, 15));
    if (!mjd) return {{}, "no Modified Julian Date in columns 8 to 15"};
    // Predictions end before the file does.
    if (trimmed(columns(line, 59, 68)).empty()) return {};
    const auto x = real_in(columns(line, 19, 27)), y = real_in(columns(line, 38, 46));
    const auto ut1 = real_in(columns(line, 59, 68));
    if (!x || !y) return {{}, "no pole in columns 19 to 27 and 38 to 46"};
    if (!ut1) return {{}, "no UT1-UTC in columns 59 to 68"};
    return {EarthOrientationRow{*mjd, *ut1, *x, *y}, {}};
}

OrientationLine parse_c04(std::string_view line, std::size_t mjd_at) {
    std::array<std::string_view, 8> words;
    if (trimmed(line).empty()) return {};
    if (split(line, words) < mjd_at + 4) return {{}, "too few columns"};
    const auto mjd = real_in(words[mjd_at]), x = real_in(words[mjd_at + 1]),
               y = real_in(words[mjd_at + 2]), ut1 = real_in(words[mjd_at + 3]);
    if (!mjd || !x || !y || !ut1) return {{}, "no number where one should stand"};
    if (!dated(words, mjd_at)) return {{}, "the date and its Modified Julian Date disagree"};
    return {EarthOrientationRow{*mjd, *ut1, *x, *y}, {}};
}

class Report {
  public:
    Report(ReadSummary& summary, const ProblemHandler& on_problem)
        : summary_(summary), on_problem_(on_problem) {}
    void operator()(std::size_t line, std::string_view message) {
        ++summary_.problems;
        if (on_problem_) on_problem_({line, message});
    }

  private:
    ReadSummary& summary_;
    const ProblemHandler& on_problem_;
};

}  // namespace

std::optional<OrientationFormat> orientation_format(std::string_view line) {
    std::array<std::string_view, 8> words;
    const std::size_t count = split(line, words);
    if (count >= 7 && dated(words, 3)) return OrientationFormat::kC04;
    if (count >= 8 && dated(words, 4)) return OrientationFormat::kC04Hours;
    if (is_finals(line)) return OrientationFormat::kFinals2000A;
    return std::nullopt;
}

OrientationLine parse_orientation(std::string_view line, OrientationFormat format) {
    switch (format) {
        case OrientationFormat::kFinals2000A:
            return parse_finals(line);
        case OrientationFormat::kC04:
            return parse_c04(line, 3);
        case OrientationFormat::kC04Hours:
            return parse_c04(line, 4);
    }
    return {};
}

OrientationFile read_orientation(std::istream& in, const ProblemHandler& on_problem) {
    OrientationFile file;
    Report report(file.summary, on_problem);
    TextLines lines(in);
    for (std::string_view line; lines.next(line);) {
        if (!file.format) file.format = orientation_format(line);
        if (!file.format || trimmed(line).empty()) continue;
        const OrientationLine parsed = lines.too_long()
                                           ? OrientationLine{{}, "the line is too long"}
                                           : parse_orientation(line, *file.format);
        if (parsed.row) {
            file.rows.push_back(*parsed.row);
        } else if (!parsed.message.empty()) {
            report(lines.number(), parsed.message);
        }
    }
    file.summary.lines = lines.number();
    file.summary.records = file.rows.size();
    file.summary.complete = !lines.broken();
    return file;
}

LeapSecondFile read_leap_seconds(std::istream& in, const ProblemHandler& on_problem) {
    LeapSecondFile file;
    Report report(file.summary, on_problem);
    TextLines lines(in);
    const auto mjd_of = [](double ntp) { return kNtpEpochMjd + ntp / kSecondsPerDay; };
    for (std::string_view line; lines.next(line);) {
        line = trimmed(line);
        if (line.substr(0, 2) == "#@") {
            if (const auto until = real_in(line.substr(2)))
                file.valid_until_mjd = mjd_of(*until);
            continue;
        }
        if (line.empty() || line.front() == '#') continue;
        std::array<std::string_view, 2> words;
        const bool two = split(line, words) == 2;
        const auto ntp = real_in(words[0]), offset = real_in(words[1]);
        if (!two || !ntp || !offset) {
            report(lines.number(), "no time and number of seconds");
            continue;
        }
        file.rows.push_back({mjd_of(*ntp), *offset});
    }
    file.summary.lines = lines.number();
    file.summary.records = file.rows.size();
    file.summary.complete = !lines.broken();
    return file;
}

}  // namespace solsys_io
