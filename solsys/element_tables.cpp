#include "solsys/element_tables.h"

#include <algorithm>
#include <cmath>

#include "ephemeris/two_body/orbit_plane.h"

namespace solsys {
namespace {

bool finite(std::initializer_list<double> values) {
    return std::all_of(values.begin(), values.end(), [](double x) { return std::isfinite(x); });
}

// q stands for the pericentre distance or the semi-major axis: both are positive.
bool is_conic(double q, double e, std::initializer_list<double> others) {
    return finite({q, e}) && finite(others) && q > 0.0 && e >= 0.0;
}

bool is_stretch(const SpacecraftRecord& record) {
    return is_conic(
        record.q, record.e,
        {record.i, record.node, record.peri, record.n, record.M, record.epoch_fraction});
}

template <class Record>
bool add_heliocentric(FlatTable<Record>& table, std::uint64_t key, Record record) {
    Elements& elements = record.elements;
    if (!is_orbit(elements)) return false;
    if (elements.n == 0.0) elements.n = mean_motion(elements.q, elements.e, kSunGm);
    table.replace(key, record);
    return true;
}

// Tables of spacecraft may hold thousands; asteroids among their centres are few.
void collect_central_asteroids(ElementTables& tables) {
    std::vector<std::int32_t>& found = tables.central_asteroids;
    found.clear();
    const auto collect = [&found](const auto& record) {
        if (record.central_type == SSO_ASTR) found.push_back(record.central_number);
    };
    for (const auto& [key, track] : tables.spacecraft.entries())
        std::for_each(track.records.begin(), track.records.end(), collect);
    for (const auto& [key, record] : tables.user_objects.entries()) collect(record);
}

// How many asteroids it goes about.
std::size_t about_asteroid(const UserObjectRecord& record) {
    return record.central_type == SSO_ASTR ? 1 : 0;
}
std::size_t about_asteroid(const SpacecraftTrack& track) {
    return static_cast<std::size_t>(
        std::count_if(track.records.begin(), track.records.end(),
                      [](const auto& record) { return record.central_type == SSO_ASTR; }));
}

template <class Value>
void replace(ElementTables& tables, FlatTable<Value>& table, std::uint64_t key, Value value) {
    const Value* old = table.find(key);
    const std::size_t more = about_asteroid(value);
    const bool changes = more > 0 || (old != nullptr && about_asteroid(*old) > 0);
    if (more > 0) tables.central_asteroids.reserve(tables.central_asteroids.size() + more);
    table.replace(key, std::move(value));
    if (changes) collect_central_asteroids(tables);
}

template <class Value>
bool remove(ElementTables& tables, FlatTable<Value>& table, std::uint64_t key) {
    const Value* old = table.find(key);
    const bool changes = old != nullptr && about_asteroid(*old) > 0;
    const bool found = table.erase(key);
    if (changes) collect_central_asteroids(tables);
    return found;
}

}  // namespace

bool is_orbit(const Elements& elements) {
    return is_conic(elements.q, elements.e,
                    {elements.i, elements.node, elements.peri, elements.n, elements.M,
                     elements.epochFraction});
}

bool is_orbit(const UserObjectRecord& record) {
    const double* s = record.state;
    if (!finite({s[0], s[1], s[2], s[3], s[4], s[5], record.epoch_fraction})) return false;
    const State start = load_state(s);
    return norm(cross(start.r, start.v)) != 0.0;
}

double mean_motion(double q, double e, double mu) {
    if (conic_of(e) == Conic::parabola) return std::sqrt(mu / (2.0 * q)) / q;
    const double a = e > 1.0 ? q / (e - 1.0) : q;
    return std::sqrt(mu / a) / a;
}

bool ElementTables::is_central_asteroid(std::int32_t number) const {
    return std::find(central_asteroids.begin(), central_asteroids.end(), number) !=
           central_asteroids.end();
}

const tagAster_SPH_5* ElementTables::held_for_asteroid(std::int32_t number) const {
    const bool held =
        held_asteroid != nullptr && held_asteroid->number == static_cast<std::uint32_t>(number);
    return held ? held_asteroid.get() : nullptr;
}

const tagComet_SPH_5* ElementTables::held_for_comet(std::int32_t number) const {
    return held_comet != nullptr && held_comet->number == number ? held_comet.get() : nullptr;
}

bool add(ElementTables& tables, std::int32_t number, const AsteroidRecord& record) {
    return add_heliocentric(tables.asteroids, key_of(SSO_ASTR, number), record);
}

bool add(ElementTables& tables, std::int32_t number, const CometRecord& record) {
    return add_heliocentric(tables.comets, key_of(SSO_COMT, number), record);
}

bool add(ElementTables& tables, std::int32_t number, const SpacecraftRecord* records,
         int count) {
    if (records == nullptr || count <= 0) return false;
    SpacecraftTrack track{{records, records + count}};
    if (!std::all_of(track.records.begin(), track.records.end(), is_stretch)) {
        return false;
    }
    std::stable_sort(track.records.begin(), track.records.end(),
                     [](const SpacecraftRecord& a, const SpacecraftRecord& b) {
                         return days_between(Instant{a.epoch_day, a.epoch_fraction},
                                             {b.epoch_day, b.epoch_fraction}) > 0.0;
                     });
    replace(tables, tables.spacecraft, key_of(SSO_SCFT, number), std::move(track));
    return true;
}

bool add(ElementTables& tables, std::int32_t number, const UserObjectRecord& record) {
    if (!is_orbit(record)) return false;
    replace(tables, tables.user_objects, key_of(SSO_USCO, number), record);
    return true;
}

bool remove_spacecraft(ElementTables& tables, std::int32_t number) {
    return remove(tables, tables.spacecraft, key_of(SSO_SCFT, number));
}

bool remove_user_object(ElementTables& tables, std::int32_t number) {
    return remove(tables, tables.user_objects, key_of(SSO_USCO, number));
}

void clear_spacecraft(ElementTables& tables) {
    tables.spacecraft.clear();
    collect_central_asteroids(tables);
}

void clear_user_objects(ElementTables& tables) {
    tables.user_objects.clear();
    collect_central_asteroids(tables);
}

}  // namespace solsys
