// The list of cities, kept as text: it stays in the file's pages until it is asked for.
#include <bit>
#include <charconv>
#include <cstdint>
#include <optional>
#include <vector>

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

template <class Visit>
void each_other_name(const City& city, Visit visit) {
    std::string_view others = city.others;
    while (!others.empty()) visit(take_field(others, ';'));
}

bool is_named(const City& city, const std::string& wanted) {
    return folded(city.name) == wanted || folded(city.ascii) == wanted;
}

bool is_city_called(const City& city, const std::string& wanted) {
    bool is = is_named(city, wanted);
    each_other_name(city, [&](std::string_view name) { is = is || folded(name) == wanted; });
    return is;
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

// Bytes that a folded name has, thirty-two sorts of them.
std::uint32_t letters_of(std::string_view name) {
    std::uint32_t letters = 0;
    for (const char c : name) letters |= 1U << (static_cast<unsigned char>(c) % 32);
    return letters;
}

// FNV-1a.
std::uint32_t hash_of(std::string_view name) {
    std::uint32_t hash = 2166136261U;
    for (const char c : name) hash = (hash ^ static_cast<unsigned char>(c)) * 16777619U;
    return hash;
}

// Where to look in the rows: names folded once, in the order of the rows.
class CityIndex {
  public:
    CityIndex() {
        std::string_view rows = kCities;
        while (!rows.empty()) {
            const auto row = static_cast<std::uint32_t>(kCities.size() - rows.size());
            const City city = city_in(take_field(rows, '\n'));
            const std::string name = folded(city.name);
            shapes_.push_back({row, letters_of(name)});
            for (const std::string& other : {name, folded(city.ascii)})
                names_.push_back({row, hash_of(other)});
            each_other_name(city, [&](std::string_view other) {
                names_.push_back({row, hash_of(folded(other))});
            });
        }
    }

    // The cities that may be called so, until `visit` answers false.
    template <class Visit>
    void each_called(const std::string& wanted, Visit visit) const {
        const std::uint32_t hash = hash_of(wanted);
        const Name* last = nullptr;
        for (const Name& name : names_) {
            if (name.hash != hash || (last != nullptr && last->row == name.row)) continue;
            last = &name;
            if (!visit(city_at(name.row))) return;
        }
    }
    // The cities whose name begins so, or may be two slips away from it: a slip adds and takes
    // a letter at most.
    template <class Visit>
    void each_close(const std::string& wanted, Visit visit) const {
        const std::uint32_t letters = letters_of(wanted);
        for (const Shape& shape : shapes_) {
            const int missing = std::popcount(letters & ~shape.letters);
            const int added = std::popcount(shape.letters & ~letters);
            if (missing == 0 || (missing <= 2 && added <= 2)) visit(city_at(shape.row));
        }
    }

  private:
    struct Name {
        std::uint32_t row, hash;
    };
    struct Shape {
        std::uint32_t row, letters;
    };
    static City city_at(std::uint32_t row) {
        std::string_view rest = kCities.substr(row);
        return city_in(take_field(rest, '\n'));
    }

    std::vector<Name> names_;
    std::vector<Shape> shapes_;
};

const CityIndex& cities() {
    static const CityIndex index;
    return index;
}

}  // namespace

std::vector<Site> cities_called(std::string_view text) {
    std::string_view where = text;
    const std::string wanted = spelt_out(folded(take_field(where, ',')));
    std::vector<Site> found;
    if (wanted.empty()) return found;
    cities().each_called(wanted, [&](const City& city) {
        if (is_city_called(city, wanted) && lies_in(city, where))
            found.push_back(site_of(city));
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
        cities().each_called(wanted, [&](const City& city) {
            if (is_named(city, wanted)) {
                if (lies_in(city, where)) found = site_of(city);
            } else if (!by_other_name && is_city_called(city, wanted) && lies_in(city, where)) {
                by_other_name = site_of(city);
            }
            return !found;
        });
    if (found) return *found;
    if (by_other_name) return *by_other_name;
    cities().each_close(wanted, [&](const City& city) { close.consider(city.name); });
    const std::string perhaps = close.text();
    return Failure{"no city " + in_quotes(name) +
                   " in the list: " + (perhaps.empty() ? "use --site LAT,LON" : perhaps)};
}

}  // namespace solsys::sky
