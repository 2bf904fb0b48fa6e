// Meteor showers, by the Sun's longitude.
#include <algorithm>
#include <cmath>
#include <cstring>
#include <iterator>

#include "core/calendar.h"
#include "core/constants.h"
#include "events/diary/quantities.h"
#include "events/diary/search.h"
#include "solsys/magnitudes.h"

using solsys::kDegree;
using solsys::Vec3;
using solsys::diary::Diary;
using solsys::diary::GeocentricSky;
using solsys::diary::kSunRate;

namespace {

struct ShowerRow {
    int number;
    const char* code;
    const char* name;
    double sol_start, sol_end, sol_peak;  // deg, equinox J2000.0
    double ra, dec;                       // deg
    double speed, r, zhr;
};
constexpr ShowerRow kShowers[] = {
#include "meteor_showers.inc"
};

constexpr double kYear = 365.2564;       // day: of the Sun's longitude from a fixed equinox
constexpr double kShowerSettled = 1e-6;  // day

// Geometric longitude of the Sun on the ecliptic and equinox J2000.0.
double solar_longitude_of_j2000(GeocentricSky& sky, double t) {
    sky.at_in_same_frames(t);
    const Vec3 sun = solsys::load_matrix(sky.model().GetMtrxEq2K_Ecl2K()) * (-sky.earth().r);
    return std::atan2(sun.y, sun.x);
}

double instant_of_longitude(GeocentricSky& sky, double longitude, double t) {
    const auto at = [&sky](double when) { return solar_longitude_of_j2000(sky, when); };
    return solsys::diary::instant_of_sun(at, longitude, t, kShowerSettled);
}

double new_year_of(int year) {
    return static_cast<double>(solsys::day_number({year, 1, 1})) - 0.5;
}

int year_of(double jd) {
    return static_cast<int>(
        solsys::civil_date(static_cast<std::int64_t>(std::floor(jd + 0.5))).year);
}

// The Moon's illuminated fraction: the cosine of the angle at the Moon.
double moon_illuminated(GeocentricSky& sky, double t) {
    sky.at_in_same_frames(t);
    const Vec3 moon = sky.heliocentric(solsys::diary::kMoon).r;
    return calcVisibleDiskPart(solsys::separation(-moon, sky.earth().r - moon));
}

// Degrees from one longitude back to an earlier one.
double degrees_before(double earlier, double later) {
    const double d = std::fmod(later - earlier, 360);
    return d < 0 ? d + 360 : d;
}

void fill(GeocentricSky& sky, const ShowerRow& row, double peak, SHOWER& shower) {
    using solsys::search::ut_from_tt;
    shower.number = row.number;
    shower.peak = ut_from_tt(peak);
    shower.start = ut_from_tt(instant_of_longitude(
        sky, row.sol_start * kDegree,
        peak - degrees_before(row.sol_start, row.sol_peak) * kDegree / kSunRate));
    shower.end = ut_from_tt(instant_of_longitude(
        sky, row.sol_end * kDegree,
        peak + degrees_before(row.sol_peak, row.sol_end) * kDegree / kSunRate));
    shower.ra = row.ra * kDegree;
    shower.dec = row.dec * kDegree;
    shower.speed = row.speed;
    shower.population_index = row.r;
    shower.zhr = row.zhr;
    shower.moon_illuminated = moon_illuminated(sky, peak);
    std::strncpy(shower.code, row.code, sizeof shower.code - 1);
    std::strncpy(shower.name, row.name, sizeof shower.name - 1);
}

// The radiant as a star without motion.
StarObject radiant(const SHOWER& shower) {
    StarObject star;
    star.ra = shower.ra;
    star.dec = shower.dec;
    return star;
}

}  // namespace

bool Diary::fill_shower(SHOWER& shower) {
    const auto* row =
        std::find_if(std::begin(kShowers), std::end(kShowers),
                     [&shower](const ShowerRow& r) { return r.number == shower.number; });
    if (row == std::end(kShowers) || std::abs(shower.year) > 20000) return false;
    GeocentricSky sky(*model);
    // The first maximum of the calendar year.
    const double new_year = solsys::search::tt_from_ut(new_year_of(shower.year));
    double peak = instant_of_longitude(sky, row->sol_peak * kDegree, new_year + 0.4 * kYear);
    if (peak >= new_year + kYear)
        peak = instant_of_longitude(sky, row->sol_peak * kDegree, peak - kYear);
    if (peak < new_year)
        peak = instant_of_longitude(sky, row->sol_peak * kDegree, peak + kYear);
    if (!std::isfinite(peak)) return false;
    SHOWER filled;
    filled.year = shower.year;
    fill(sky, *row, peak, filled);
    const StarObject star = radiant(filled);
    horizontal({SSO_ID(SSO_STAR, 0), &star}, peak, filled.azimuth, filled.altitude);
    shower = filled;
    return true;
}

bool Diary::find_showers() {
    GeocentricSky sky(*model);
    solsys::search::Span walk = span;
    while (!walk.over() && control.go_on(walk)) {
        // The next maximum of all showers from the cursor on.
        const double now = solar_longitude_of_j2000(sky, walk.cursor) / kDegree;
        if (!std::isfinite(now)) return true;
        const auto* next = std::min_element(std::begin(kShowers), std::end(kShowers),
                                            [now](const ShowerRow& a, const ShowerRow& b) {
                                                return degrees_before(now, a.sol_peak) <
                                                       degrees_before(now, b.sol_peak);
                                            });
        const double ahead = degrees_before(now, next->sol_peak) * kDegree / kSunRate;
        const double peak =
            instant_of_longitude(sky, next->sol_peak * kDegree, walk.cursor + ahead);
        // All of them with this very longitude.
        for (const ShowerRow& row : kShowers) {
            if (row.sol_peak != next->sol_peak || !within(peak)) continue;
            SHOWER shower;
            fill(sky, row, peak, shower);
            shower.year = year_of(shower.peak);
            const StarObject star = radiant(shower);
            horizontal({SSO_ID(SSO_STAR, 0), &star}, peak, shower.azimuth, shower.altitude);
            if (!add(peak, SKYEVENT_METEOR_SHOWER, shower)) return false;
        }
        walk.cursor = std::max(peak, walk.cursor) + 1e-4;
    }
    return !control.stopped();
}
