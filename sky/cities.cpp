// The list of cities, searched as text: it stays in the file's pages until it is asked for.
#include <charconv>
#include <optional>

#include "sky/text.h"
#include "solsys/sky/site.h"

namespace solsys::sky {
namespace {

// name,name_ascii,alt_names,country,region,latitude_deg,longitude_deg,elevation_m,tz,...
constexpr char kCityRows[] =
#include "cities_text.inc"
    ;
constexpr std::string_view kCities(kCityRows, sizeof kCityRows - 1);
// country,region,name
constexpr std::string_view kRegions =
#include "regions_text.inc"
    ;

double number_in(std::string_view text) {
    double value = 0;
    std::from_chars(text.data(), text.data() + text.size(), value);
    return value;
}

struct City {
    std::string_view name, ascii, others, country, region;
    std::string_view latitude, longitude, elevation, zone;
};

City city_in(std::string_view line) {
    City city;
    for (std::string_view* const field :
         {&city.name, &city.ascii, &city.others, &city.country, &city.region, &city.latitude,
          &city.longitude, &city.elevation, &city.zone})
        *field = take_field(line, ',');
    return city;
}

Site site_of(const City& city) {
    Site site;
    site.name = std::string(city.name) + " (" + std::string(city.country) + ")";
    site.latitude_deg = number_in(city.latitude);
    site.longitude_deg = number_in(city.longitude);
    site.height_m = number_in(city.elevation);
    site.zone = std::string(city.zone);
    site.country = std::string(city.country);
    return site;
}

bool is_called(const City& city, const std::string& wanted) {
    if (folded(city.name) == wanted || folded(city.ascii) == wanted) return true;
    std::string_view others = city.others;
    while (!others.empty())
        if (folded(take_field(others, ';')) == wanted) return true;
    return false;
}

std::string_view region_name(const City& city) {
    std::string_view rows = kRegions;
    while (!rows.empty()) {
        std::string_view line = take_field(rows, '\n');
        if (take_field(line, ',') == city.country && take_field(line, ',') == city.region)
            return line;
    }
    return {};
}

// Whether every word behind the name is the country or the region.
bool lies_in(const City& city, std::string_view where) {
    while (!where.empty()) {
        const std::string part = folded(take_field(where, ','));
        if (part != folded(city.country) && part != folded(city.region) &&
            part != folded(region_name(city)))
            return false;
    }
    return true;
}

// Initials in everyday use that the list leaves out.
std::string spelt_out(const std::string& wanted) {
    if (wanted == "la") return "losangeles";
    if (wanted == "sf") return "sanfrancisco";
    if (wanted == "dc" || wanted == "washingtondc") return "washington";
    return wanted;
}

template <class Visit>
void each_city(Visit visit) {
    std::string_view rows = kCities;
    while (!rows.empty())
        if (!visit(city_in(take_field(rows, '\n')))) return;
}

}  // namespace

std::vector<Site> cities_called(std::string_view text) {
    std::string_view where = text;
    const std::string wanted = spelt_out(folded(take_field(where, ',')));
    std::vector<Site> found;
    if (wanted.empty()) return found;
    each_city([&](const City& city) {
        if (is_called(city, wanted) && lies_in(city, where)) found.push_back(site_of(city));
        return true;
    });
    return found;
}

Result<Site> find_city(std::string_view name) {
    std::string_view where = name;
    const std::string wanted = spelt_out(folded(take_field(where, ',')));
    std::optional<Site> by_other_name;
    std::optional<Site> found;
    Suggestions close(wanted);
    // A place of that very name goes before a larger one that is called so elsewhere.
    if (!wanted.empty())
        each_city([&](const City& city) {
            if (folded(city.name) == wanted || folded(city.ascii) == wanted) {
                if (lies_in(city, where)) found = site_of(city);
            } else if (!by_other_name && is_called(city, wanted) && lies_in(city, where)) {
                by_other_name = site_of(city);
            }
            return !found;
        });
    if (found) return *found;
    if (by_other_name) return *by_other_name;
    each_city([&](const City& city) {
        close.consider(city.name);
        return true;
    });
    const std::string perhaps = close.text();
    return Failure{"no city " + in_quotes(name) +
                   " in the list: " + (perhaps.empty() ? "use --site LAT,LON" : perhaps)};
}

}  // namespace solsys::sky
