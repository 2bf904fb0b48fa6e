#include "ephemeris/tle/messages.h"

#include <charconv>
#include <cmath>
#include <limits>

#include "core/calendar.h"
#include "ephemeris/tle/element_lines.h"

namespace solsys {
namespace {

constexpr std::string_view kKeyNames[kOmmKeys] = {"EPOCH",
                                                  "MEAN_MOTION",
                                                  "ECCENTRICITY",
                                                  "INCLINATION",
                                                  "RA_OF_ASC_NODE",
                                                  "ARG_OF_PERICENTER",
                                                  "MEAN_ANOMALY",
                                                  "BSTAR",
                                                  "NORAD_CAT_ID",
                                                  "MEAN_MOTION_DOT",
                                                  "MEAN_MOTION_DDOT",
                                                  "EPHEMERIS_TYPE",
                                                  "CLASSIFICATION_TYPE",
                                                  "ELEMENT_SET_NO",
                                                  "REV_AT_EPOCH",
                                                  "OBJECT_NAME",
                                                  "OBJECT_ID",
                                                  "CENTER_NAME",
                                                  "REF_FRAME",
                                                  "TIME_SYSTEM",
                                                  "MEAN_ELEMENT_THEORY"};

// The text from its first mark on and the number it starts with, whole.
std::optional<double> number_of(std::string_view text) {
    if (!text.empty() && text[0] == '+') text.remove_prefix(1);
    double number = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    if (error != std::errc{} || stop != end || !std::isfinite(number)) return std::nullopt;
    return number;
}

std::optional<int> digits(std::string_view text) {
    int number = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    if (error != std::errc{} || stop != end || text[0] == '-') return std::nullopt;
    return number;
}

// "10:57:46.570464" as a fraction of a day.
std::optional<double> time_of_day(std::string_view text) {
    if (text.size() < 8 || text[2] != ':' || text[5] != ':') return std::nullopt;
    const auto hour = digits(text.substr(0, 2)), minute = digits(text.substr(3, 2));
    const auto second = number_of(text.substr(6));
    if (!hour || !minute || !second || *hour > 23 || *minute > 59 || !(*second >= 0) ||
        *second >= 61)
        return std::nullopt;
    return ((*hour * 60 + *minute) * 60 + *second) / 86400;
}

// "2024-05-02" or "2024-123": the day number that begins at its noon.
std::optional<std::int64_t> day_of(std::string_view date) {
    if (date.size() < 8 || date[4] != '-') return std::nullopt;
    const auto year = digits(date.substr(0, 4));
    if (!year) return std::nullopt;
    if (date.size() == 8) {
        const auto day = digits(date.substr(5));
        const auto first = day_number({*year, 1, 1});
        if (!day || *day < 1 || *day > day_number({*year + 1, 1, 1}) - first)
            return std::nullopt;
        return first + *day - 1;
    }
    if (date.size() != 10 || date[7] != '-') return std::nullopt;
    const auto month = digits(date.substr(5, 2)), day = digits(date.substr(8));
    if (!month || !day || !exists({*year, *month, *day})) return std::nullopt;
    return day_number({*year, *month, *day});
}

bool set_epoch(std::string_view text, TLERecord& record) {
    if (!text.empty() && text.back() == 'Z') text.remove_suffix(1);
    const std::size_t split = text.find('T');
    if (split == std::string_view::npos) return false;
    const auto day = day_of(text.substr(0, split));
    const auto time = time_of_day(text.substr(split + 1));
    if (!day || !time) return false;
    const double of_day = *time - 0.5;
    record.epochDay = static_cast<std::int32_t>(*day) - (of_day < 0 ? 1 : 0);
    record.epochFraction = of_day < 0 ? of_day + 1 : of_day;
    return true;
}

// A number in [least, greatest]; one that need not be there stays 0.
bool set_number(const std::optional<std::string>& text, bool required, double least,
                double greatest, double& value) {
    if (!text) return !required;
    const auto number = number_of(*text);
    if (!number || *number < least || *number > greatest) return false;
    value = *number;
    return true;
}

bool set_whole(const std::optional<std::string>& text, bool required, std::int32_t& value) {
    double number = 0;
    if (!set_number(text, required, 0, 999999999, number) || number != std::floor(number))
        return false;
    value = static_cast<std::int32_t>(number);
    return true;
}

// What is implied, or written out.
bool is_implied(const std::optional<std::string>& text, std::string_view value) {
    return !text || *text == value;
}

constexpr double kAny = 1e30, kTiny = 1e-12;
constexpr double kBelowOne = 1 - std::numeric_limits<double>::epsilon() / 2;

struct NumberField {
    OmmKey key;
    bool required;
    double least, greatest;
    double TLERecord::*member;
};
constexpr NumberField kNumberFields[] = {
    {OmmKey::mean_motion, true, kTiny, 1000, &TLERecord::meanMotion},
    {OmmKey::eccentricity, true, 0, kBelowOne, &TLERecord::eccentricity},
    {OmmKey::inclination, true, 0, 180, &TLERecord::inclination},
    {OmmKey::node, true, -360, 360, &TLERecord::node},
    {OmmKey::perigee, true, -360, 360, &TLERecord::perigee},
    {OmmKey::anomaly, true, -360, 360, &TLERecord::meanAnomaly},
    {OmmKey::bstar, true, -kAny, kAny, &TLERecord::bstar},
    {OmmKey::mean_motion_dot, false, -kAny, kAny, &TLERecord::meanMotionDot},
    {OmmKey::mean_motion_ddot, false, -kAny, kAny, &TLERecord::meanMotionDDot}};

struct WholeField {
    OmmKey key;
    bool required;
    std::int32_t TLERecord::*member;
};
constexpr WholeField kWholeFields[] = {{OmmKey::number, true, &TLERecord::number},
                                       {OmmKey::set_number, false, &TLERecord::setNumber},
                                       {OmmKey::revolution, false, &TLERecord::revolution}};

// What the elements of an element set are, and what a message need not say.
struct ImpliedField {
    OmmKey key;
    std::string_view value;
};
constexpr ImpliedField kImpliedFields[] = {{OmmKey::ephemeris_type, "0"},
                                           {OmmKey::centre, "EARTH"},
                                           {OmmKey::frame, "TEME"},
                                           {OmmKey::time_system, "UTC"},
                                           {OmmKey::theory, "SGP4"}};

bool set_classification(const std::optional<std::string>& text, TLERecord& record) {
    if (!text) return true;
    if (text->size() != 1 || std::string_view("UCS").find((*text)[0]) == std::string_view::npos)
        return false;
    record.classification = (*text)[0];
    return true;
}

bool set_field(OmmKey key, const OmmFields& fields, TLERecord& record) {
    const auto& text = fields[key];
    if (key == OmmKey::epoch) return text && set_epoch(*text, record);
    if (key == OmmKey::classification) return set_classification(text, record);
    for (const NumberField& field : kNumberFields)
        if (field.key == key)
            return set_number(text, field.required, field.least, field.greatest,
                              record.*field.member);
    for (const WholeField& field : kWholeFields)
        if (field.key == key) return set_whole(text, field.required, record.*field.member);
    for (const ImpliedField& field : kImpliedFields)
        if (field.key == key) return is_implied(text, field.value);
    return true;  // names
}

}  // namespace

void OmmFields::set(std::string_view key, std::optional<std::string> value) {
    for (std::size_t k = 0; k < kOmmKeys; ++k)
        if (kKeyNames[k] == key) {
            values_[k] = std::move(value);
            return;
        }
}

TLEFault read_message(const OmmFields& fields, TLERecord& record) {
    TLERecord read;
    for (int k = 0; k < kOmmKeys; ++k) {
        if (set_field(static_cast<OmmKey>(k), fields, read)) continue;
        TLEFault fault{TLE_FAULT_KEY, 0, 0, {}};
        store_text(kKeyNames[k], fault.key, sizeof fault.key);
        return fault;
    }
    const auto text = [&fields](OmmKey key) { return fields[key].value_or(""); };
    store_text(text(OmmKey::name), read.name, sizeof read.name);
    store_text(text(OmmKey::designator), read.designator, sizeof read.designator);
    record = read;
    return {};
}

}  // namespace solsys
