#include "solsys/sky/site.h"

#include <charconv>
#include <cmath>
#include <optional>

#include "core/constants.h"
#include "sky/text.h"
#include "solsys/sso_id.h"

namespace solsys::sky {
namespace {

constexpr double kAuM = 149597870700.0;
constexpr double kLowestM = -12000;
constexpr double kHighestM = 1e9;

OBSERVER on_earth(std::int8_t kind) {
    OBSERVER observer;
    observer.kind = kind;
    observer.body_type = SSO_PLNT;
    observer.body_number = 3;
    return observer;
}

OBSERVER on_surface(const Site& site) {
    OBSERVER observer = on_earth(LOCATION_SURFACE);
    observer.location[1] = site.longitude_deg * kDegree;
    observer.location[2] = site.latitude_deg * kDegree;
    return observer;
}

std::optional<double> take_real(std::string_view& text) {
    double value = 0;
    if (text.starts_with('+')) text.remove_prefix(1);
    const auto [stop, error] = std::from_chars(text.data(), text.data() + text.size(), value,
                                               std::chars_format::fixed);
    if (error != std::errc{} || !std::isfinite(value)) return std::nullopt;
    text.remove_prefix(static_cast<std::size_t>(stop - text.data()));
    return value;
}

// Takes a mark for degrees, minutes or seconds, if one stands there.
void skip_mark(std::string_view& text) {
    for (const std::string_view mark :
         {"\u00b0", "\u2032", "\u2033", ":", "d", "m", "s", "'", "\""})
        if (text.starts_with(mark)) return text.remove_prefix(mark.size());
}

// Degrees, minutes and seconds with an optional letter of the hemisphere before or behind.
std::optional<double> angle_in(std::string_view given, const char* hemispheres) {
    std::string_view text = trimmed_text(given);
    int sign = 0;
    const auto take_hemisphere = [&](std::string_view& from, bool front) {
        if (from.empty()) return;
        const char letter = static_cast<char>((front ? from.front() : from.back()) & ~0x20);
        if (letter != hemispheres[0] && letter != hemispheres[1]) return;
        sign = letter == hemispheres[0] ? 1 : -1;
        front ? from.remove_prefix(1) : from.remove_suffix(1);
        from = trimmed_text(from);
    };
    take_hemisphere(text, true);
    if (sign == 0) take_hemisphere(text, false);
    const bool negative = text.starts_with('-');
    if (negative) text.remove_prefix(1);
    if (negative && sign != 0) return std::nullopt;  // says it twice
    double angle = 0;
    double weight = 1;
    int parts = 0;
    for (; !text.empty() && parts < 3; ++parts, weight /= 60) {
        const auto part = take_real(text);
        if (!part || *part < 0 || (parts > 0 && *part >= 60)) return std::nullopt;
        angle += weight * *part;
        skip_mark(text);
        text = trimmed_text(text);
    }
    if (parts == 0 || !text.empty()) return std::nullopt;
    return (negative || sign < 0) ? -angle : angle;
}

}  // namespace

OBSERVER Site::observer() const {
    OBSERVER observer = on_surface(*this);
    observer.location[0] = height_m / kAuM;
    return observer;
}

OBSERVER Site::visibility_observer() const {
    OBSERVER observer = on_surface(*this);
    observer.location[0] = above_horizon_m / 1000;
    return observer;
}

double Site::dip_deg() const {
    return above_horizon_m > 0 ? 0.0353 * std::sqrt(above_horizon_m) : 0;
}

OBSERVER earth_centre() { return on_earth(LOCATION_BODY_FIXED); }

Result<Site> parse_site(std::string_view text) {
    std::string_view rest = text;
    const auto latitude = angle_in(take_field(rest, ','), "NS");
    const auto longitude = angle_in(take_field(rest, ','), "EW");
    Site site;
    bool good =
        latitude && longitude && std::fabs(*latitude) <= 90 && std::fabs(*longitude) <= 360;
    if (good && !rest.empty()) {
        std::string_view height = trimmed_text(rest);
        const auto metres = take_real(height);
        good = metres && (height.empty() || height == "m") && *metres >= kLowestM &&
               *metres <= kHighestM;
        if (good) site.height_m = *metres;
    }
    if (!good)
        return Failure{in_quotes(text) +
                       " is no site: use LAT,LON[,HEIGHT_M] such as 51.5,-0.1 or "
                       "51:30:00N,0:07:00W,25"};
    site.latitude_deg = *latitude;
    site.longitude_deg = *longitude;
    site.name = coordinate_text(*latitude, false) + ", " + coordinate_text(*longitude, true);
    return site;
}

std::string coordinate_text(double degrees, bool east_west, int decimals) {
    double value = east_west ? std::remainder(degrees, 360.0) : degrees;
    if (value == -180) value = 180;
    const char* const letter =
        east_west ? (value < 0 ? " W" : " E") : (value < 0 ? " S" : " N");
    return fixed(std::fabs(value), decimals) + "\u00b0" + letter;
}

}  // namespace solsys::sky
