#include "draw/icalendar.h"

#include <cctype>
#include <cstdio>

namespace solsys::draw {
namespace {

constexpr double kAuKm = 149597870.7;

// A content line: folded after at most 75 bytes, never inside a character.
void put(std::string& out, const std::string& line) {
    std::size_t room = 75;
    for (std::size_t i = 0; i < line.size();) {
        std::size_t length = 1;
        while (i + length < line.size() && (line[i + length] & 0xC0) == 0x80) ++length;
        if (length > room) {
            out += "\r\n ";
            room = 74;
        }
        out.append(line, i, length);
        room -= length;
        i += length;
    }
    out += "\r\n";
}

std::string escaped(const std::string& text) {
    std::string out;
    for (const char c : text) {
        if (c == '\n') {
            out += "\\n";
            continue;
        }
        if (c == '\\' || c == ';' || c == ',') out += '\\';
        out += c;
    }
    return out;
}

// "20261121T180304Z", or empty for a year that has no four digits.
std::string stamp(const sky::Instant& t) {
    const std::string iso = t.iso(0);
    if (iso.size() != 20 || !std::isdigit(static_cast<unsigned char>(iso[0]))) return {};
    std::string out;
    for (const char c : iso)
        if (c != '-' && c != ':') out += c;
    return out;
}

std::string identifier(const sky::DiaryEvent& event, const std::string& when) {
    std::string id(sky::name_of_kind(event.kind));
    if (event.in_longitude) id += "-longitude";
    for (const auto* body : {&event.first, &event.second})
        if (body->has_value()) id += "-" + sky::code_of((*body)->id);
    if (event.kind == SKYEVENT_METEOR_SHOWER)
        id += "-" + event.text.substr(0, event.text.find(" at"));
    for (char& c : id)
        if (c == ':' || c == ' ') c = '-';
    return id + "-" + when.substr(0, 8) + "@solsys";
}

std::string description(const sky::DiaryEvent& event) {
    std::string text;
    const auto add = [&text](const char* what, const std::optional<double>& value,
                             const char* unit, int decimals = 2) {
        if (!value) return;
        char line[96];
        std::snprintf(line, sizeof line, "%s %.*f%s", what, decimals, *value, unit);
        if (!text.empty()) text += '\n';
        text += line;
    };
    add("Separation", event.separation_deg, "\u00b0");
    add("Elongation", event.elongation_deg, "\u00b0");
    add("Magnitude", event.magnitude, "");
    // What lies that near is the Moon.
    const bool near = event.distance_au && *event.distance_au < 0.01;
    if (near) {
        add("Distance", *event.distance_au * kAuKm, " km", 0);
    } else {
        add("Distance", event.distance_au, " au", 3);
    }
    add("Altitude", event.altitude_deg, "\u00b0");
    return text;
}

}  // namespace

std::string icalendar(const std::vector<sky::DiaryEvent>& events, const std::string& name) {
    std::string out;
    put(out, "BEGIN:VCALENDAR");
    put(out, "VERSION:2.0");
    put(out, "PRODID:-//solsys//diary of the sky//EN");
    put(out, "CALSCALE:GREGORIAN");
    put(out, "X-WR-CALNAME:" + escaped(name));
    for (const sky::DiaryEvent& event : events) {
        const std::string when = stamp(event.at);
        if (when.empty()) continue;
        put(out, "BEGIN:VEVENT");
        put(out, "UID:" + identifier(event, when));
        put(out, "DTSTAMP:" + when);
        put(out, "DTSTART:" + when);
        put(out, "SUMMARY:" + escaped(event.text));
        const std::string more = description(event);
        if (!more.empty()) put(out, "DESCRIPTION:" + escaped(more));
        put(out, "CATEGORIES:Astronomy," + std::string(sky::name_of_kind(event.kind)));
        put(out, "TRANSP:TRANSPARENT");
        put(out, "END:VEVENT");
    }
    put(out, "END:VCALENDAR");
    return out;
}

}  // namespace solsys::draw
