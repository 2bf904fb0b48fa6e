#include "sky/stars.h"

#include <array>
#include <charconv>
#include <cmath>
#include <optional>

#include "core/constants.h"

namespace solsys::sky {
namespace {

constexpr StarRow kBrightStars[] = {
#include "bright_stars.inc"
};
// hip,name,name_ascii,bayer,flamsteed,con,...
constexpr std::string_view kStarNames =
#include "star_names_text.inc"
    ;

constexpr double kMas = 4.84813681109536e-9;  // rad

std::optional<int> number_after(std::string_view text, std::string_view prefix) {
    if (!text.starts_with(prefix)) return std::nullopt;
    text.remove_prefix(prefix.size());
    if (text.starts_with(':')) text.remove_prefix(1);
    int number = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    if (error != std::errc{} || stop != end) return std::nullopt;
    return number;
}

template <class Accepts>
const StarRow* first(Accepts accepts) {
    for (const StarRow& row : kBrightStars)
        if (accepts(row)) return &row;
    return nullptr;
}

// A Greek letter at the front, spelt out or as itself, to its three letters in the list.
struct Greek {
    const char* sign;
    const char* name;
};
constexpr Greek kGreek[] = {
    {"\u03b1", "alpha"},   {"\u03b2", "beta"},  {"\u03b3", "gamma"},   {"\u03b4", "delta"},
    {"\u03b5", "epsilon"}, {"\u03b6", "zeta"},  {"\u03b7", "eta"},     {"\u03b8", "theta"},
    {"\u03b9", "iota"},    {"\u03ba", "kappa"}, {"\u03bb", "lambda"},  {"\u03bc", "mu"},
    {"\u03bd", "nu"},      {"\u03be", "xi"},    {"\u03bf", "omicron"}, {"\u03c0", "pi"},
    {"\u03c1", "rho"},     {"\u03c3", "sigma"}, {"\u03c4", "tau"},     {"\u03c5", "upsilon"},
    {"\u03c6", "phi"},     {"\u03c7", "chi"},   {"\u03c8", "psi"},     {"\u03c9", "omega"}};

std::string short_greek(const std::string& wanted) {
    for (const Greek& letter : kGreek)
        for (const char* const spelling : {letter.sign, letter.name}) {
            const std::string written(spelling);
            if (wanted.starts_with(written) && wanted.size() > written.size())
                return std::string(letter.name).substr(0, 3) + wanted.substr(written.size());
        }
    return wanted;
}

std::string without_digits(std::string text) {
    std::erase_if(text, [](char c) { return c >= '0' && c <= '9'; });
    return text;
}

}  // namespace

std::span<const StarRow> bright_stars() { return kBrightStars; }

StarObject star_object(const StarRow& row) {
    StarObject star;
    star.ra = row.ra_deg * kDegree;
    star.dec = row.dec_deg * kDegree;
    star.pm_ra = static_cast<float>(row.pm_ra_mas_yr * kMas / std::cos(star.dec));
    star.pm_dec = static_cast<float>(row.pm_dec_mas_yr * kMas);
    if (row.parallax_mas > 0) star.parallax = static_cast<float>(row.parallax_mas * kMas);
    star.radial_velocity = static_cast<float>(row.radial_velocity_km_s);
    star.magnitude = static_cast<float>(row.magnitude);
    return star;
}

std::string_view proper_name(const StarRow& row) {
    std::string_view rows = kStarNames;
    while (!rows.empty()) {
        std::string_view line = take_field(rows, '\n');
        int hip = 0;
        const std::string_view number = take_field(line, ',');
        std::from_chars(number.data(), number.data() + number.size(), hip);
        if (hip == row.hip) return take_field(line, ',');
    }
    return row.name;
}

std::string star_name(const StarRow& row) {
    for (const std::string_view name :
         {proper_name(row), std::string_view(row.bayer), std::string_view(row.flamsteed)})
        if (!name.empty()) return std::string(name);
    return "HIP " + std::to_string(row.hip);
}

Body body_of(const StarRow& row) {
    return {SSO_ID(SSO_STAR, row.hip), star_name(row), star_object(row)};
}

namespace {

const StarRow* by_hip(int hip) {
    return first([&](const StarRow& row) { return row.hip == hip; });
}

const StarRow* by_proper_name(const std::string& wanted) {
    std::string_view rows = kStarNames;
    while (!rows.empty()) {
        std::string_view line = take_field(rows, '\n');
        const std::string_view number = take_field(line, ',');
        const std::string_view name = take_field(line, ',');
        if (folded(name) != wanted && folded(take_field(line, ',')) != wanted) continue;
        int hip = 0;
        std::from_chars(number.data(), number.data() + number.size(), hip);
        return by_hip(hip);
    }
    return first([&](const StarRow& star) { return folded(star.name) == wanted; });
}

const StarRow* by_designation(const std::string& name) {
    const std::string designation = short_greek(name);
    if (const StarRow* row = first([&](const StarRow& star) {
            return folded(star.bayer) == designation || folded(star.flamsteed) == designation;
        }))
        return row;
    // "alpha cen" without the figure that tells alpha1 and alpha2: the brightest.
    const StarRow* brightest = nullptr;
    for (const StarRow& star : kBrightStars)
        if (without_digits(folded(star.bayer)) == designation &&
            (brightest == nullptr || star.magnitude < brightest->magnitude))
            brightest = &star;
    return brightest;
}

}  // namespace

const StarRow* find_star(std::string_view text) {
    std::string wanted = folded(text);
    for (const char* prefix : {"hip", "star"})
        if (const auto hip = number_after(wanted, prefix)) return by_hip(*hip);
    if (const auto hr = number_after(wanted, "hr"))
        return first([&](const StarRow& row) { return row.hr == *hr; });
    if (const auto hd = number_after(wanted, "hd"))
        return first([&](const StarRow& row) { return row.hd == *hd; });
    if (wanted.starts_with("star:")) wanted.erase(0, 5);
    if (wanted.empty()) return nullptr;
    if (const StarRow* row = by_proper_name(wanted)) return row;
    return by_designation(wanted);
}

void suggest_stars(Suggestions& suggestions) {
    std::string_view rows = kStarNames;
    while (!rows.empty()) {
        std::string_view line = take_field(rows, '\n');
        take_field(line, ',');
        suggestions.consider(take_field(line, ','));
    }
    for (const DeepSkyRow& row : deep_sky_objects()) {
        std::string_view names = row.name;
        while (!names.empty()) suggestions.consider(trimmed_text(take_field(names, ';')));
    }
}

}  // namespace solsys::sky
