#include "io/designations.h"

#include <array>

#include "io/fields.h"

namespace solsys_io {
namespace {

constexpr std::uint32_t kFirstTildeNumber = 620000;
constexpr int kLettersPerCycle = 25;  // A to Z without I
constexpr int kFirstExtendedOrder = 620 * kLettersPerCycle;

// 0-9, A-Z, a-z; -1 for anything else.
constexpr int base62(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'A' && c <= 'Z') return c - 'A' + 10;
    if (c >= 'a' && c <= 'z') return c - 'a' + 36;
    return -1;
}

constexpr bool is_digit(char c) { return c >= '0' && c <= '9'; }

// The value of a text of digits only.
std::optional<int> digits(std::string_view text) {
    int value = 0;
    for (const char c : text) {
        if (!is_digit(c)) return std::nullopt;
        value = 10 * value + (c - '0');
    }
    return value;
}

std::optional<int> base62_number(std::string_view text) {
    int value = 0;
    for (const char c : text) {
        if (base62(c) < 0) return std::nullopt;
        value = 62 * value + base62(c);
    }
    return value;
}

// The letter of a half month, A to Y without I.
constexpr bool is_half_month(char c) { return c >= 'A' && c <= 'Y' && c != 'I'; }
constexpr bool is_order(char c) { return c >= 'A' && c <= 'Z' && c != 'I'; }

std::string in_words(int year, char half_month, char order, int cycle) {
    std::string words = std::to_string(year) + ' ' + half_month + order;
    if (cycle > 0) words += std::to_string(cycle);
    return words;
}

std::optional<std::string> survey(std::string_view packed) {
    constexpr std::array<std::string_view, 4> kSurveys = {"PLS", "T1S", "T2S", "T3S"};
    for (const std::string_view name : kSurveys) {
        if (packed.substr(0, 3) != name || !digits(packed.substr(3))) continue;
        return std::string(packed.substr(3)) + ' ' + name[0] + '-' + name[1];
    }
    return std::nullopt;
}

// An underscore, the year since 2000, the half month and, in base 62, how far the object is
// beyond the 15,500 that the usual form can count.
std::optional<std::string> extended(std::string_view packed) {
    const auto beyond = base62_number(packed.substr(3));
    if (base62(packed[1]) < 0 || !is_half_month(packed[2]) || !beyond) return std::nullopt;
    const int order = kFirstExtendedOrder + *beyond;
    const auto letter = static_cast<std::size_t>(order % kLettersPerCycle);
    return in_words(2000 + base62(packed[1]), packed[2], "ABCDEFGHJKLMNOPQRSTUVWXYZ"[letter],
                    order / kLettersPerCycle);
}

// The century of a year's first letter: I is 18, J 19, K 20.
std::optional<int> century(char c) {
    if (c < 'I' || c > 'L') return std::nullopt;
    return 1800 + 100 * (c - 'I');
}

}  // namespace

std::optional<std::uint32_t> unpack_number(std::string_view packed) {
    packed = trimmed(packed);
    if (packed.size() != 5) return std::nullopt;
    if (packed[0] == '~') {
        const auto beyond = base62_number(packed.substr(1));
        if (!beyond) return std::nullopt;
        return kFirstTildeNumber + static_cast<std::uint32_t>(*beyond);
    }
    const int thousands = base62(packed[0]);
    const auto rest = digits(packed.substr(1));
    if (thousands < 0 || !rest) return std::nullopt;
    return static_cast<std::uint32_t>(10000 * thousands + *rest);
}

std::optional<std::string> unpack_provisional(std::string_view packed) {
    packed = trimmed(packed);
    if (packed.size() != 7) return std::nullopt;
    if (packed[0] == '_') return extended(packed);
    if (auto words = survey(packed)) return words;

    const auto first_year = century(packed[0]);
    const auto year = digits(packed.substr(1, 2));
    const int tens = base62(packed[4]);
    if (!first_year || !year || !is_half_month(packed[3]) || tens < 0 || !is_digit(packed[5]) ||
        !is_order(packed[6]))
        return std::nullopt;
    return in_words(*first_year + *year, packed[3], packed[6], 10 * tens + (packed[5] - '0'));
}

std::optional<double> unpack_date(std::string_view packed) {
    packed = trimmed(packed);
    if (packed.size() != 5) return std::nullopt;
    const auto first_year = century(packed[0]);
    const auto year = digits(packed.substr(1, 2));
    if (!first_year || !year) return std::nullopt;
    return julian_date(*first_year + *year, base62(packed[3]), base62(packed[4]));
}

}  // namespace solsys_io
