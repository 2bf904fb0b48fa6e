#include "ephemeris/tle/element_lines.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <charconv>
#include <cstring>
#include <optional>
#include <string>

#include "core/calendar.h"

namespace solsys {
namespace {

constexpr std::size_t kColumns = 69;

bool is_digit(char c) { return c >= '0' && c <= '9'; }
bool is_letter(char c) { return c >= 'A' && c <= 'Z'; }
bool all_digits(std::string_view text) {
    return std::all_of(text.begin(), text.end(), is_digit);
}
bool is_blank(std::string_view text) {
    return text.find_first_not_of(' ') == std::string_view::npos;
}
std::string_view without_start(std::string_view text) {
    return text.substr(std::min(text.find_first_not_of(' '), text.size()));
}

// Columns of a line, counted from 1.
std::string_view columns(std::string_view line, std::size_t first, std::size_t last) {
    return line.substr(first - 1, last - first + 1);
}

double number_of(std::string_view text) {
    double number = 0;
    std::from_chars(text.data(), text.data() + text.size(), number);
    return number;
}

// Digits with blanks before them; a blank field only where it may be one (0).
std::optional<int> whole(std::string_view text, bool may_be_blank = false) {
    const std::string_view digits = without_start(text);
    if (digits.empty()) return may_be_blank ? std::optional(0) : std::nullopt;
    if (!all_digits(digits)) return std::nullopt;
    return static_cast<int>(number_of(digits));
}

// Digits, a point at a place from 0, digits: no blank but on the left.
std::optional<double> decimal(std::string_view text, std::size_t point) {
    const std::string_view before = without_start(text.substr(0, point));
    const std::string_view after = text.substr(point + 1);
    if (text[point] != '.' || !all_digits(before) || !all_digits(after)) return std::nullopt;
    return number_of(without_start(text));
}

std::optional<double> signed_fraction(std::string_view text) {
    if (is_blank(text)) return 0.0;
    if (text[0] != ' ' && text[0] != '+' && text[0] != '-') return std::nullopt;
    const auto size = decimal(text.substr(1), 0);
    if (!size) return std::nullopt;
    return text[0] == '-' ? -*size : *size;
}

// Sign, five digits after an unwritten point, sign and one digit of the power of ten.
std::optional<double> power_form(std::string_view text) {
    if (is_blank(text)) return 0.0;
    const auto is_sign = [](char c) { return c == ' ' || c == '+' || c == '-'; };
    const std::string_view digits = without_start(text.substr(1, 5));
    if (!is_sign(text[0]) || !is_sign(text[6]) || !is_digit(text[7]) || digits.empty() ||
        !all_digits(digits))
        return std::nullopt;
    std::string value = text[0] == '-' ? "-0." : "0.";
    value.append(5 - digits.size(), '0').append(digits).append("e");
    value += text[6] == '-' ? "-" : "";
    value += text[7];
    return number_of(value);
}

// Five digits, or a letter without I and O and four.
std::optional<int> catalogue_number(std::string_view text) {
    if (!is_letter(text[0])) return whole(text);
    constexpr std::string_view kLetters = "ABCDEFGHJKLMNPQRSTUVWXYZ";
    const std::size_t place = kLetters.find(text[0]);
    if (place == std::string_view::npos || !all_digits(text.substr(1))) return std::nullopt;
    return static_cast<int>(place + 10) * 10000 + *whole(text.substr(1));
}

int full_year(int two_digits) { return two_digits + (two_digits < 57 ? 2000 : 1900); }

int checksum(std::string_view line) {
    int sum = 0;
    for (const char c : line.substr(0, kColumns - 1))
        sum += is_digit(c) ? c - '0' : (c == '-' ? 1 : 0);
    return sum % 10;
}

TLEFault fault_at(int code, int line, int column) { return {code, line, column, {}}; }

using Lines = std::array<std::string_view, 2>;

// Characters, lengths, line numbers, checksums.
TLEFault check_lines(const Lines& lines, bool any_checksum) {
    for (int k = 0; k < 2; ++k) {
        if (!std::all_of(lines[k].begin(), lines[k].end(),
                         [](char c) { return c >= ' ' && c <= '~'; }))
            return fault_at(TLE_FAULT_CHARACTERS, k + 1, 0);
        if (lines[k].size() != kColumns && !(any_checksum && lines[k].size() == kColumns - 1))
            return fault_at(TLE_FAULT_LENGTH, k + 1, 0);
    }
    for (int k = 0; k < 2; ++k)
        if (lines[k][0] != '1' + k) return fault_at(TLE_FAULT_LINE_NUMBER, k + 1, 1);
    if (any_checksum) return {};
    for (int k = 0; k < 2; ++k)
        if (lines[k].back() != '0' + checksum(lines[k]))
            return fault_at(TLE_FAULT_CHECKSUM, k + 1, static_cast<int>(kColumns));
    return {};
}

TLEFault check_separators(const Lines& lines) {
    constexpr std::array<int, 8> kBlank[] = {{2, 9, 18, 33, 44, 53, 62, 64},
                                             {2, 8, 17, 26, 34, 43, 52, 52}};
    for (int k = 0; k < 2; ++k)
        for (const int column : kBlank[k])
            if (columns(lines[k], static_cast<std::size_t>(column),
                        static_cast<std::size_t>(column)) != " ")
                return fault_at(TLE_FAULT_SEPARATOR, k + 1, column);
    return {};
}

// "98067A  " to "1998-067A"; all blank is none. Column at fault, 0: none.
int read_designator(std::string_view text, TLERecord& record) {
    record.designator[0] = '\0';
    if (is_blank(text)) return 0;
    const auto year = whole(text.substr(0, 2)), launch = whole(text.substr(2, 3));
    if (!year) return 10;
    if (!launch) return 12;
    const std::string_view piece = without_end(text.substr(5));
    if (piece.empty() || !std::all_of(piece.begin(), piece.end(), is_letter)) return 15;
    const std::string number = std::to_string(1000 + *launch).substr(1);
    store_text(std::to_string(full_year(*year)) + "-" + number + std::string(piece),
               record.designator, sizeof record.designator);
    return 0;
}

template <class Value, class Member>
bool take(const std::optional<Value>& value, Member& member) {
    if (value) member = static_cast<Member>(*value);
    return value.has_value();
}

// What a line has but its ranges: year and day of the epoch apart.
struct Epoch {
    int year = 0;
    double day = 0;
};

TLEFault read_first(std::string_view line, TLERecord& record, Epoch& epoch) {
    const auto fault = [](int code, int column) { return fault_at(code, 1, column); };
    if (!take(catalogue_number(columns(line, 3, 7)), record.number))
        return fault(TLE_FAULT_NUMBER, 3);
    record.classification = line[7];
    if (record.classification != 'U' && record.classification != 'C' &&
        record.classification != 'S')
        return fault(TLE_FAULT_CLASSIFICATION, 8);
    if (const int column = read_designator(columns(line, 10, 17), record))
        return fault(TLE_FAULT_DESIGNATOR, column);
    if (!take(whole(columns(line, 19, 20)), epoch.year)) return fault(TLE_FAULT_EPOCH_YEAR, 19);
    if (!take(decimal(columns(line, 21, 32), 3), epoch.day))
        return fault(TLE_FAULT_EPOCH_DAY, 21);
    if (!take(signed_fraction(columns(line, 34, 43)), record.meanMotionDot))
        return fault(TLE_FAULT_DERIVATIVE, 34);
    if (!take(power_form(columns(line, 45, 52)), record.meanMotionDDot))
        return fault(TLE_FAULT_DERIVATIVE, 45);
    if (!take(power_form(columns(line, 54, 61)), record.bstar))
        return fault(TLE_FAULT_DRAG, 54);
    if (line[62] != ' ' && line[62] != '0') return fault(TLE_FAULT_EPHEMERIS_TYPE, 63);
    if (!take(whole(columns(line, 65, 68), true), record.setNumber))
        return fault(TLE_FAULT_SET_NUMBER, 65);
    return {};
}

TLEFault read_second(std::string_view line, TLERecord& record, int& number) {
    const auto fault = [](int code, int column) { return fault_at(code, 2, column); };
    const auto angle = [line](std::size_t first, double& value) {
        return take(decimal(columns(line, first, first + 7), 3), value);
    };
    if (!take(catalogue_number(columns(line, 3, 7)), number)) return fault(TLE_FAULT_NUMBER, 3);
    if (!angle(9, record.inclination)) return fault(TLE_FAULT_INCLINATION, 9);
    if (!angle(18, record.node)) return fault(TLE_FAULT_NODE, 18);
    const std::string_view digits = without_start(columns(line, 27, 33));
    if (digits.empty() || !all_digits(digits)) return fault(TLE_FAULT_ECCENTRICITY, 27);
    record.eccentricity =
        number_of("0." + std::string(7 - digits.size(), '0') + std::string(digits));
    if (!angle(35, record.perigee)) return fault(TLE_FAULT_PERIGEE, 35);
    if (!angle(44, record.meanAnomaly)) return fault(TLE_FAULT_ANOMALY, 44);
    if (!take(decimal(columns(line, 53, 63), 2), record.meanMotion))
        return fault(TLE_FAULT_MEAN_MOTION, 53);
    if (!take(whole(columns(line, 64, 68), true), record.revolution))
        return fault(TLE_FAULT_REVOLUTION, 64);
    return {};
}

// The epoch into the record, if the year has such a day.
bool set_epoch(const Epoch& epoch, TLERecord& record) {
    const int year = full_year(epoch.year), day = static_cast<int>(epoch.day);
    const auto first = day_number({year, 1, 1});
    if (day < 1 || day > day_number({year + 1, 1, 1}) - first) return false;
    const double of_day = (epoch.day - day) - 0.5;  // the Julian day begins at noon
    record.epochDay = static_cast<std::int32_t>(first) + day - 1 - (of_day < 0 ? 1 : 0);
    record.epochFraction = of_day < 0 ? of_day + 1 : of_day;
    return true;
}

TLEFault check_ranges(const Epoch& epoch, TLERecord& record) {
    if (!set_epoch(epoch, record)) return fault_at(TLE_FAULT_RANGE, 1, 21);
    if (record.inclination > 180) return fault_at(TLE_FAULT_RANGE, 2, 9);
    if (record.node > 360) return fault_at(TLE_FAULT_RANGE, 2, 18);
    if (record.perigee > 360) return fault_at(TLE_FAULT_RANGE, 2, 35);
    if (record.meanAnomaly > 360) return fault_at(TLE_FAULT_RANGE, 2, 44);
    if (!(record.meanMotion > 0)) return fault_at(TLE_FAULT_RANGE, 2, 53);
    return {};
}

}  // namespace

std::string_view without_end(std::string_view line) {
    const std::size_t last = line.find_last_not_of(" \t\r");
    return line.substr(0, last == std::string_view::npos ? 0 : last + 1);
}

void store_text(std::string_view text, char* field, std::size_t size) {
    std::size_t length = std::min(text.size(), size - 1);
    // Not within a character of several bytes.
    while (length > 0 && length < text.size() && (text[length] & 0xC0) == 0x80) --length;
    std::memcpy(field, text.data(), length);
    std::memset(field + length, 0, size - length);
}

TLEFault read_element_lines(std::string_view line1, std::string_view line2, bool any_checksum,
                            TLERecord& record) {
    const Lines lines{without_end(line1), without_end(line2)};
    TLERecord read = record;
    Epoch epoch;
    int number = 0;
    TLEFault fault = check_lines(lines, any_checksum);
    if (fault.code == 0) fault = check_separators(lines);
    if (fault.code == 0) fault = read_first(lines[0], read, epoch);
    if (fault.code == 0) fault = read_second(lines[1], read, number);
    if (fault.code == 0 && number != read.number)
        fault = fault_at(TLE_FAULT_NUMBER_MISMATCH, 2, 3);
    if (fault.code == 0) fault = check_ranges(epoch, read);
    if (fault.code == 0) record = read;
    return fault;
}

}  // namespace solsys
