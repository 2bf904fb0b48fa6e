#include "sky/diary_text.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <charconv>
#include <cmath>
#include <cstdio>

#include "sky/text.h"

namespace solsys::sky {
namespace {

constexpr std::array<std::string_view, 33> kKindNames{"",
                                                      "march-equinox",
                                                      "june-solstice",
                                                      "september-equinox",
                                                      "december-solstice",
                                                      "earth-perihelion",
                                                      "earth-aphelion",
                                                      "new-moon",
                                                      "first-quarter",
                                                      "full-moon",
                                                      "last-quarter",
                                                      "inferior-conjunction",
                                                      "superior-conjunction",
                                                      "greatest-elongation-east",
                                                      "greatest-elongation-west",
                                                      "stationary-retrograde",
                                                      "stationary-direct",
                                                      "greatest-brilliancy",
                                                      "perihelion",
                                                      "aphelion",
                                                      "solar-eclipse",
                                                      "lunar-eclipse",
                                                      "opposition",
                                                      "conjunction",
                                                      "quadrature-east",
                                                      "quadrature-west",
                                                      "closest",
                                                      "farthest",
                                                      "meteor-shower",
                                                      "moon-conjunction",
                                                      "planet-conjunction",
                                                      "star-conjunction",
                                                      "transit"};

std::string degrees(double value) { return fixed(value, value < 10 ? 1 : 0) + "\u00b0"; }

// "5.3° north of" for a body at this position angle from another.
std::string beside(const DiaryEvent& event) {
    const double separation = *event.separation_deg;
    const char* side = std::cos(*event.position_angle_deg * 0.017453292519943295) > 0
                           ? " north of "
                           : " south of ";
    const std::string how_far =
        separation < 0.1 ? fixed(separation * 60, 1) + "'" : degrees(separation);
    return how_far + side;
}

std::string with_magnitude(const DiaryEvent& event) {
    return event.magnitude ? ", magnitude " + fixed(*event.magnitude, 1) : std::string();
}

std::string name(const std::optional<Body>& body) {
    if (!body) return {};
    return body->id == SSO_ID(SSO_MOON, 301) ? "The Moon" : body->name;
}

std::string phase_text(const DiaryEvent& event) {
    static constexpr const char* phases[] = {"New Moon", "First quarter", "Full Moon",
                                             "Last quarter"};
    std::string text = phases[event.kind - SKYEVENT_NEW_MOON];
    const auto near = [&text](const std::optional<double>& hours, const char* apsis) {
        if (!hours || std::fabs(*hours) > 24) return;
        text += ", " + fixed(std::fabs(*hours), 0) + " h " +
                (*hours > 0 ? "before " : "after ") + apsis;
    };
    near(event.hours_to_perigee, "perigee");
    near(event.hours_to_apogee, "apogee");
    return text;
}

std::string planet_text(const DiaryEvent& e) {
    const std::string who = name(e.first);
    const std::string where = e.in_longitude ? " in longitude" : " in right ascension";
    switch (e.kind) {
        case SKYEVENT_INFERIOR_CONJUNCTION:
            return who + " in inferior conjunction";
        case SKYEVENT_SUPERIOR_CONJUNCTION:
            return who + " in superior conjunction";
        case SKYEVENT_GREATEST_ELONGATION_EAST:
            return who + " at greatest elongation, " + degrees(*e.separation_deg) +
                   " east of the Sun" + with_magnitude(e);
        case SKYEVENT_GREATEST_ELONGATION_WEST:
            return who + " at greatest elongation, " + degrees(*e.separation_deg) +
                   " west of the Sun" + with_magnitude(e);
        case SKYEVENT_STATIONARY_RETROGRADE:
            return who + " stationary" + where + ", then retrograde";
        case SKYEVENT_STATIONARY_DIRECT:
            return who + " stationary" + where + ", then direct";
        case SKYEVENT_GREATEST_BRILLIANCY:
            return who + " at greatest brilliancy" + with_magnitude(e);
        case SKYEVENT_PERIHELION:
            return who + " at perihelion, " + fixed(*e.distance_au, 4) + " au";
        case SKYEVENT_APHELION:
            return who + " at aphelion, " + fixed(*e.distance_au, 4) + " au";
        case SKYEVENT_OPPOSITION:
            return who + " at opposition" + with_magnitude(e);
        case SKYEVENT_CONJUNCTION:
            return who + " in conjunction with the Sun";
        case SKYEVENT_QUADRATURE_EAST:
            return who + " at eastern quadrature";
        case SKYEVENT_QUADRATURE_WEST:
            return who + " at western quadrature";
        case SKYEVENT_TRANSIT:
            return who + " in transit over the Sun, " + fixed(*e.separation_deg * 60, 1) +
                   "' from its centre";
        default:
            return who;
    }
}

std::string distance_text(const DiaryEvent& e) {
    const bool closest = e.kind == SKYEVENT_CLOSEST;
    if (e.first->id == SSO_ID(SSO_MOON, 301))
        return std::string(closest ? "Moon at perigee, " : "Moon at apogee, ") +
               fixed(*e.distance_au * 149597870.7, 0) + " km";
    return name(e.first) + (closest ? " closest to" : " farthest from") + " the Earth, " +
           fixed(*e.distance_au, 4) + " au";
}

}  // namespace

std::string eclipse_text(const ECLIPSE& eclipse) {
    const bool lunar = eclipse.kind == ECLIPSE_LUNAR;
    const char* type = "";
    switch (eclipse.type) {
        case ECLIPSE_TOTAL:
            type = "Total";
            break;
        case ECLIPSE_HYBRID:
            type = "Hybrid";
            break;
        case ECLIPSE_ANNULAR:
            type = "Annular";
            break;
        case ECLIPSE_PARTIAL:
            type = "Partial";
            break;
        default:
            type = "Penumbral";
            break;
    }
    return std::string(type) + (lunar ? " eclipse of the Moon" : " eclipse of the Sun");
}

std::string text_of(const DiaryEvent& e) {
    static constexpr const char* seasons[] = {"March equinox",       "June solstice",
                                              "September equinox",   "December solstice",
                                              "Earth at perihelion", "Earth at aphelion"};
    if (e.kind <= SKYEVENT_EARTH_APHELION) return seasons[e.kind - SKYEVENT_MARCH_EQUINOX];
    if (e.kind <= SKYEVENT_LAST_QUARTER) return phase_text(e);
    switch (e.kind) {
        case SKYEVENT_CLOSEST:
        case SKYEVENT_FARTHEST:
            return distance_text(e);
        case SKYEVENT_MOON_CONJUNCTION:
        case SKYEVENT_PLANET_CONJUNCTION:
        case SKYEVENT_STAR_CONJUNCTION:
            return name(e.first) + " " + beside(e) + name(e.second);
        default:
            return planet_text(e);
    }
}

std::string_view name_of_kind(int kind) {
    return kind >= 1 && kind < static_cast<int>(kKindNames.size()) ? kKindNames[kind] : "";
}

int find_kind(std::string_view text) {
    int number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error == std::errc() && end == text.data() + text.size())
        return name_of_kind(number).empty() ? 0 : number;
    std::string folded(text);
    std::transform(folded.begin(), folded.end(), folded.begin(), [](unsigned char c) {
        return c == ' ' || c == '_' ? '-' : static_cast<char>(std::tolower(c));
    });
    const auto* found = std::find(kKindNames.begin() + 1, kKindNames.end(), folded);
    return found == kKindNames.end() ? 0 : static_cast<int>(found - kKindNames.begin());
}

}  // namespace solsys::sky
