// Numbers and dates in fixed columns and cells; independent of the locale.
#pragma once

#include <charconv>
#include <cmath>
#include <optional>
#include <string_view>

namespace solsys_io {

// The text of columns first to last, counted from 1, as far as the line reaches.
constexpr std::string_view columns(std::string_view line, std::size_t first, std::size_t last) {
    if (line.size() < first) return {};
    return line.substr(first - 1, last - first + 1);
}

constexpr std::string_view trimmed(std::string_view text) {
    while (!text.empty() && (text.front() == ' ' || text.front() == '\t'))
        text.remove_prefix(1);
    while (!text.empty() && (text.back() == ' ' || text.back() == '\t')) text.remove_suffix(1);
    return text;
}

// The number that the text holds, blanks around it allowed; empty if there is anything else or
// the number is not finite.
inline std::optional<double> real_in(std::string_view text) {
    text = trimmed(text);
    if (text.size() > 1 && text.front() == '+' && text[1] != '-') text.remove_prefix(1);
    double value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size() || !std::isfinite(value))
        return std::nullopt;
    return value;
}

inline std::optional<int> integer_in(std::string_view text) {
    text = trimmed(text);
    int value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    return value;
}

// Copies the text into an array of characters, cut where it does not fit and always ended by
// a NUL.
template <std::size_t N>
void copy_text(std::string_view text, char (&out)[N]) {
    const std::size_t length = text.size() < N ? text.size() : N - 1;
    for (std::size_t k = 0; k < length; ++k) out[k] = text[k];
    for (std::size_t k = length; k < N; ++k) out[k] = '\0';
}

// Julian date of 0h of a calendar date, Gregorian from 1582 October 15 on and Julian before;
// empty if there is no such day.
std::optional<double> julian_date(int year, int month, int day);

}  // namespace solsys_io
