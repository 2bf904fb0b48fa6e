// Holds the certified crossings to the altitudes of the model, minute by minute: 14 latitudes
// from pole to pole, heights 0 and 3,000 m, ten bodies and three stars. For every crossing that
// the samples show there must be one within 0.1 s, and none besides (a pair inside a minute is
// checked by the altitude between its two).
//
// Run as: check_crossings EPHEMERIS DAYS [LATITUDE]; DAYS from 2005 January 1 on.
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <vector>

#include "core/constants.h"
#include "events/search/scan.h"
#include "events/search/search_model.h"
#include "events/visibility/crossings.h"
#include "events/visibility/day_step.h"

namespace {

using namespace solsys;
using namespace solsys::visibility;
using search::Bracket;

constexpr double kStart = 2453371.5;
constexpr double kMinute = 1.0 / 1440;
constexpr double kAllowed = 0.1 / kSecondsPerDay;

const SSO_ID kObjects[] = {{SSO_PLNT, 10}, {SSO_MOON, 301}, {SSO_PLNT, 1}, {SSO_PLNT, 2},
                           {SSO_PLNT, 4},  {SSO_PLNT, 5},   {SSO_PLNT, 6}, {SSO_PLNT, 7},
                           {SSO_PLNT, 8},  {SSO_PLNT, 9},   {SSO_STAR, 1}, {SSO_STAR, 2},
                           {SSO_STAR, 3}};
constexpr int kCount = static_cast<int>(std::size(kObjects));

void add_stars(CSWSolSys& model) {
    constexpr double places[3][2] = {
        {101.2872, -16.7161}, {279.2347, 38.7837}, {37.9546, 89.2641}};
    for (int i = 0; i < 3; ++i) {
        StarObject star;
        star.ra = places[i][0] * kDegree;
        star.dec = places[i][1] * kDegree;
        model.AddStar(SSO_ID(SSO_STAR, i + 1), star);
    }
}

OBSERVER site(double latitude, double height_km) {
    OBSERVER o;
    o.kind = LOCATION_SURFACE;
    o.body_type = SSO_PLNT, o.body_number = 3;
    o.location[0] = height_km / kAuKm;
    o.location[1] = 10 * kDegree;
    o.location[2] = latitude * kDegree;
    return o;
}

// The height over the level that the model gives, at the instant where it stands.
double height(CSWSolSys& model, const Target& target, const Level& level) {
    double place[3];
    if (!model.GetRADecVis(target.id, place, 0)) return std::nan("");
    double v[3] = {std::cos(place[2]) * std::cos(place[1]),
                   std::cos(place[2]) * std::sin(place[1]), std::sin(place[2])};
    model.VecFromRAToAzm(v, v);
    return v[2] - std::sin(level.of_centre(target, {place[0], place[1], place[2]}));
}

struct Tally {
    int crossings = 0, missing = 0, extra = 0;
    double worst = 0;
};

struct Case {
    Target target;
    Level level;
    std::vector<double> sampled;
    double before = 0;
};

void compare(CSWSolSys& model, const Case& c, const Passings& found, Tally& tally) {
    const auto at = [&](double t) {
        const Instant i = search::split(t);
        model.UpdateSys(i.day, i.fraction);
        return height(model, c.target, c.level);
    };
    std::size_t next = 0;
    const auto& list = found.list;
    for (const double minute : c.sampled) {
        const Bracket x{{minute - kMinute, at(minute - kMinute)}, {minute, at(minute)}};
        const double t = search::root(at, x, 1e-9).t;
        // Pairs that lie between two samples come before.
        while (next + 1 < list.size() && list[next + 1].time < t - kMinute / 2 &&
               list[next + 1].time - list[next].time < kMinute) {
            const double middle = (list[next].time + list[next + 1].time) / 2;
            if (at(middle) * at(list[next].time - kAllowed) > 0) ++tally.extra;
            next += 2;
        }
        ++tally.crossings;
        const double off = next < list.size() ? list[next].time - t : 1;
        if (std::fabs(off) > kAllowed) {
            ++tally.missing;
            std::printf("  %d: %.6f off %.2f s\n", c.target.id.number, t, off * kSecondsPerDay);
            if (off > 0) continue;
        }
        tally.worst = std::max(tally.worst, std::fabs(off));
        ++next;
    }
    while (next + 1 < list.size() && list[next + 1].time - list[next].time < kMinute) next += 2;
    tally.extra += static_cast<int>(list.size() - next);
}

Tally check(CSWSolSys& model, double latitude, double height_km, double days) {
    const OBSERVER observer = site(latitude, height_km);
    model.SetObserver(&observer);
    std::vector<Case> cases;
    for (const SSO_ID& id : kObjects)
        cases.push_back({Target(model, id),
                         {horizon_altitude(height_km), rises_with_its_limb(id)},
                         {},
                         std::nan("")});
    const int minutes = static_cast<int>(days * 1440);
    for (int i = 0; i <= minutes; ++i) {
        const double t = kStart + i * kMinute;
        const Instant split = search::split(t);
        model.UpdateSys(split.day, split.fraction);
        for (Case& c : cases) {
            const double f = height(model, c.target, c.level);
            if (changes_sign(Bracket{{0, c.before}, {1, f}})) c.sampled.push_back(t);
            c.before = f;
        }
    }
    Tally tally;
    const double end = kStart + minutes * kMinute;
    for (const Case& c : cases) {
        model.SetObserver(&observer);
        const auto found = level_passings(model, c.target.id, std::span(&c.level, 1),
                                          {kStart, end, kStart}, {});
        compare(model, c, found, tally);
    }
    return tally;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 3) return 2;
    CSWSolSys model;
    model.InitSys(argv[1]);
    add_stars(model);
    search::SearchModel keep_delta_t(&model);
    const double latitudes[] = {-90,  -89.9, -80, -66.56, -51.5, -23.4, 0,
                                23.4, 45,    55,  66.56,  75,    89.9,  90};
    bool good = true;
    for (const double latitude : latitudes) {
        if (argc > 3 && std::atof(argv[3]) != latitude) continue;
        for (const double height_km : {0.0, 3.0}) {
            const Tally t = check(model, latitude, height_km, std::atof(argv[2]));
            std::printf("%7.2f %4.0f m: %5d crossings, %d missing, %d extra, worst %.4f s\n",
                        latitude, 1000 * height_km, t.crossings, t.missing, t.extra,
                        t.worst * kSecondsPerDay);
            std::fflush(stdout);
            good = good && t.missing == 0 && t.extra == 0;
        }
    }
    return good ? 0 : 1;
}
