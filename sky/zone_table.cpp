// The zone rules that are compiled in, for machines without a zone database.
#include <charconv>
#include <map>
#include <string>

#include "sky/text.h"
#include "sky/zone_rules.h"

namespace solsys::sky {
namespace {

// zone,rule,country
constexpr std::string_view kZones =
#include "timezones_text.inc"
    ;
// rule,posix,types,transitions
constexpr std::string_view kRules =
#include "timezone_rules_text.inc"
    ;

struct Row {
    std::string_view name;
    int rule = 0;
};

int integer_in(std::string_view text, int base = 10) {
    int value = 0;
    std::from_chars(text.data(), text.data() + text.size(), value, base);
    return value;
}

bool same_letters(std::string_view a, std::string_view b) {
    if (a.size() != b.size()) return false;
    for (std::size_t i = 0; i < a.size(); ++i)
        if ((a[i] | 0x20) != (b[i] | 0x20)) return false;
    return true;
}

std::optional<Row> row_of(std::string_view name) {
    std::string_view rows = kZones;
    while (!rows.empty()) {
        std::string_view line = take_field(rows, '\n');
        const std::string_view zone = take_field(line, ',');
        if (same_letters(zone, name)) return Row{zone, integer_in(take_field(line, ','))};
    }
    return std::nullopt;
}

// The offsets of the clock states by their letters: "A:std:3600:CET;B:dst:7200:CEST".
std::map<char, int> states_in(std::string_view types) {
    std::map<char, int> states;
    while (!types.empty()) {
        std::string_view state = take_field(types, ';');
        const char letter = state.empty() ? '?' : state.front();
        take_field(state, ':');
        take_field(state, ':');
        states[letter] = integer_in(take_field(state, ':'));
    }
    return states;
}

Zone::Rules rules_in(std::string_view posix, std::string_view types,
                     std::string_view transitions) {
    Zone::Rules rules;
    rules.take_tz_string(posix);
    std::map<char, int> states = states_in(types);
    rules.initial_offset = states['A'];
    long long at = 0;
    while (!transitions.empty()) {
        const std::size_t end = transitions.find_first_of("ABCDEFGHIJKLMNOPQRSTUVWXYZ");
        if (end == std::string_view::npos) break;
        at += integer_in(transitions.substr(0, end), 36);
        rules.transitions.push_back({at, states[transitions[end]]});
        transitions.remove_prefix(end + 1);
    }
    return rules;
}

}  // namespace

std::optional<std::string_view> zone_name_in_table(std::string_view name) {
    if (const auto row = row_of(name)) return row->name;
    return std::nullopt;
}

std::optional<Zone::Rules> zone_rules_in_table(std::string_view name) {
    const auto row = row_of(name);
    if (!row) return std::nullopt;
    std::string_view rows = kRules;
    while (!rows.empty()) {
        std::string_view line = take_field(rows, '\n');
        if (integer_in(take_field(line, ',')) != row->rule) continue;
        // POSIX strings hold commas of their own, and stand in quotes then.
        std::string_view posix;
        if (line.starts_with('"')) {
            line.remove_prefix(1);
            posix = take_field(line, '"');
            take_field(line, ',');
        } else {
            posix = take_field(line, ',');
        }
        const std::string_view types = take_field(line, ',');
        return rules_in(posix, types, line);
    }
    return std::nullopt;
}

void suggest_zones(std::string_view name, std::vector<std::string>& out) {
    const std::string wanted = folded(name);
    std::string_view rows = kZones;
    while (!rows.empty() && out.size() < 3) {
        std::string_view line = take_field(rows, '\n');
        const std::string_view zone = take_field(line, ',');
        const std::string city = folded(zone.substr(zone.rfind('/') + 1));
        if (edits_between(city, wanted, 2) <= 1 || edits_between(folded(zone), wanted, 2) <= 2)
            out.emplace_back(zone);
    }
}

}  // namespace solsys::sky
