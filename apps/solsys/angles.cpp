#include "apps/solsys/angles.h"

#include <fmt/format.h>

#include <charconv>
#include <cmath>
#include <optional>
#include <string_view>

#include "apps/solsys/failure.h"

namespace app {
namespace {

// A number of up to three parts, each a sixtieth of the one before.
struct Sexagesimal {
    double value = 0;
    int parts = 0;
    char unit = ' ';  // what stands after the first part: h, d or :; blank for none
};

// The mark at the front of the text, its length in bytes: h, d, m, s, colon, or the signs for
// degrees, minutes and seconds, which count as d, m and s.
std::optional<std::pair<char, std::size_t>> mark_at(std::string_view text) {
    if (text.empty()) return std::nullopt;
    if (text.starts_with("\u00b0")) return std::pair{'d', std::size_t{2}};
    switch (text.front()) {
        case 'h':
        case 'd':
        case 'm':
        case 's':
        case ':':
            return std::pair{text.front(), std::size_t{1}};
        case '\'':
            return std::pair{'m', std::size_t{1}};
        case '"':
            return std::pair{'s', std::size_t{1}};
        default:
            return std::nullopt;
    }
}

std::optional<Sexagesimal> parse_sexagesimal(std::string_view text) {
    Sexagesimal out;
    const auto skip_blanks = [&] {
        while (!text.empty() && text.front() == ' ') text.remove_prefix(1);
    };
    skip_blanks();
    const bool negative = text.starts_with('-');
    if (negative || text.starts_with('+')) text.remove_prefix(1);
    double weight = 1;
    for (skip_blanks(); !text.empty() && out.parts < 3; skip_blanks()) {
        double part = 0;
        if (text.front() == '-') return std::nullopt;
        const auto [stop, error] = std::from_chars(text.data(), text.data() + text.size(), part,
                                                   std::chars_format::fixed);
        if (error != std::errc{} || !std::isfinite(part)) return std::nullopt;
        if (out.parts > 0 && part >= 60) return std::nullopt;
        text.remove_prefix(static_cast<std::size_t>(stop - text.data()));
        out.value += part * weight;
        weight /= 60;
        ++out.parts;
        skip_blanks();
        const auto mark = mark_at(text);
        if (!mark) break;
        text.remove_prefix(mark->second);
        // The first part's mark tells the unit; colons stay colons; then m, then s.
        const char seen = mark->first;
        if (out.parts == 1) {
            if (seen != 'h' && seen != 'd' && seen != ':') return std::nullopt;
            out.unit = seen;
        } else if (out.unit == ':' ? seen != ':' || out.parts == 3
                                   : seen != (out.parts == 2 ? 'm' : 's')) {
            return std::nullopt;
        }
    }
    if (out.parts == 0 || !text.empty()) return std::nullopt;
    if (negative) out.value = -out.value;
    return out;
}

}  // namespace

double parse_right_ascension(const std::string& text) {
    const auto angle = parse_sexagesimal(text);
    if (angle) {
        const bool hours = angle->unit == 'h' || angle->unit == ':';
        const double degrees = hours ? angle->value * 15 : angle->value;
        if (degrees >= 0 && degrees <= 360) return degrees;
    }
    throw BadInput(fmt::format(
        "'{}' is no right ascension: use degrees from 0 to 360, or 5h35m17s or 5:35:17", text));
}

double parse_declination(const std::string& text) {
    const auto angle = parse_sexagesimal(text);
    if (angle && angle->unit != 'h' && std::fabs(angle->value) <= 90) return angle->value;
    throw BadInput(fmt::format(
        "'{}' is no declination: use degrees from -90 to 90, or -5d23m28s or -5:23:28", text));
}

}  // namespace app
