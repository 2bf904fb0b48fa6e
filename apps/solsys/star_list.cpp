#include "apps/solsys/star_list.h"

#include <fmt/format.h>

#include <array>
#include <charconv>
#include <cmath>
#include <optional>

#include "apps/solsys/place.h"
#include "apps/solsys/text.h"

namespace app {
namespace {

constexpr StarRow kStars[] = {
#include "bright_stars.inc"
};

constexpr double kMas = 4.84813681109536e-9;  // rad

std::optional<int> number_after(const std::string& text, const char* prefix) {
    const std::string start(prefix);
    if (!text.starts_with(start)) return std::nullopt;
    std::size_t at = start.size();
    if (at < text.size() && text[at] == ':') ++at;
    int number = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data() + at, end, number);
    if (error != std::errc{} || stop != end) return std::nullopt;
    return number;
}

template <class Accepts>
const StarRow* first(Accepts accepts) {
    for (const StarRow& row : kStars)
        if (accepts(row)) return &row;
    return nullptr;
}

// "alphacma" as the list has it: Greek letters by their first three letters.
std::string short_greek(const std::string& wanted) {
    for (const char* letter :
         {"alpha", "beta", "gamma", "delta", "epsilon", "zeta", "theta", "iota", "kappa",
          "lambda", "omicron", "sigma", "upsilon", "omega"}) {
        const std::string name(letter);
        if (wanted.starts_with(name)) return name.substr(0, 3) + wanted.substr(name.size());
    }
    return wanted;
}

std::string without_digits(std::string text) {
    std::erase_if(text, [](char c) { return c >= '0' && c <= '9'; });
    return text;
}

}  // namespace

std::span<const StarRow> bright_stars() { return kStars; }

StarObject star_object(const StarRow& row) {
    StarObject star;
    star.ra = row.ra_deg / kDegrees;
    star.dec = row.dec_deg / kDegrees;
    star.pm_ra = static_cast<float>(row.pm_ra_mas_yr * kMas / std::cos(star.dec));
    star.pm_dec = static_cast<float>(row.pm_dec_mas_yr * kMas);
    if (row.parallax_mas > 0) star.parallax = static_cast<float>(row.parallax_mas * kMas);
    star.radial_velocity = static_cast<float>(row.radial_velocity_km_s);
    star.magnitude = static_cast<float>(row.magnitude);
    return star;
}

std::string star_name(const StarRow& row) {
    for (const char* name : {row.name, row.bayer, row.flamsteed})
        if (*name != '\0') return name;
    return fmt::format("HIP {}", row.hip);
}

const StarRow* find_star(const std::string& text) {
    const std::string wanted = folded(text);
    for (const char* prefix : {"hip", "star"})
        if (const auto hip = number_after(wanted, prefix))
            return first([&](const StarRow& row) { return row.hip == *hip; });
    if (const auto hr = number_after(wanted, "hr"))
        return first([&](const StarRow& row) { return row.hr == *hr; });
    if (const auto hd = number_after(wanted, "hd"))
        return first([&](const StarRow& row) { return row.hd == *hd; });
    if (wanted.empty()) return nullptr;
    const std::string name = wanted.starts_with("star:") ? wanted.substr(5) : wanted;
    if (name.empty()) return nullptr;
    if (const StarRow* row =
            first([&](const StarRow& star) { return folded(star.name) == name; }))
        return row;
    const std::string designation = short_greek(name);
    if (const StarRow* row = first([&](const StarRow& star) {
            return folded(star.bayer) == designation || folded(star.flamsteed) == designation;
        }))
        return row;
    // "alpha cen" without the figure that tells alpha1 and alpha2: the brightest.
    const StarRow* brightest = nullptr;
    for (const StarRow& star : kStars)
        if (without_digits(folded(star.bayer)) == designation &&
            (brightest == nullptr || star.magnitude < brightest->magnitude))
            brightest = &star;
    return brightest;
}

}  // namespace app
