// The members of CSWEclipses that draw on the globe.
#include <algorithm>
#include <cmath>

#include "core/angles.h"
#include "events/eclipses/curves.h"
#include "events/eclipses/state.h"
#include "solsys/calendar.h"
#include "solsys/platform.h"

using namespace solsys::eclipses;

namespace {

void append(std::vector<EclipseCurve>& all, Curves&& more) {
    for (EclipseCurve& curve : more) all.push_back(std::move(curve));
}

Cone umbra(const ShadowElements& e, double) { return umbral_cone(e); }

// Both limits of a cone.
void both_limits(const SolarPath& path, Pair span, ConeAt cone, double parameter,
                 std::vector<EclipseCurve>& all) {
    append(all, limit_curves(path, span, cone, parameter, Side::kNorth));
    append(all, limit_curves(path, span, cone, parameter, Side::kSouth));
}

void print_limit(const char* name, double jd_ut) {
    short year = 0, month = 0, date = 0, hour = 0, minute = 0;
    double day_fraction = 0, second = 0;
    const int day = static_cast<int>(jd_ut);
    JD(day, jd_ut - day, &year, &month, &date, &day_fraction, &hour, &minute, &second);
    PrintDebugString("%s - %4.4d/%2.2d/%2.2d - %2.2d:%2.2d:%5.2f\n", name, year, month, date,
                     hour, minute, second);
}

// First and last time of curves.
Pair extent(const Curves& curves) {
    Pair p;
    for (const EclipseCurve& curve : curves) {
        for (const EclipsePoint& point : curve) {
            if (!(point.time >= p.first)) p.first = point.time;
            if (!(point.time <= p.last)) p.last = point.time;
        }
    }
    return p;
}

}  // namespace

bool CSWEclipses::GetCentralLine(const ECLIPSE* eclipse, std::vector<EclipseCurve>* curves) {
    const SolarPath* path = state_->solar_path_of(eclipse);
    if (!path || !curves) return false;
    *curves = central_line(*path, central_line(*path));
    return true;
}

bool CSWEclipses::GetCentralPath(const ECLIPSE* eclipse, double step,
                                 std::vector<EclipsePathPoint>* points) {
    const SolarPath* path = state_->solar_path_of(eclipse);
    if (!path || !points || !(step >= 1)) return false;
    points->clear();
    const Pair line = central_line(*path);
    if (std::isnan(line.first)) return true;
    const auto add = [&](double h) {
        EclipsePathPoint p;
        if (path_point(*path, h, p)) points->push_back(p);
    };
    add(line.first + 1e-7);
    // Whole steps of UT from midnight on.
    const double midnight = std::floor(path->jd_ut(line.first) - 0.5) + 0.5;
    const double days = step / 86400;
    double n = std::ceil((path->jd_ut(line.first) - midnight) / days);
    for (; path->hours(midnight + n * days) < line.last; n += 1)
        add(path->hours(midnight + n * days));
    add(line.last - 1e-7);
    return true;
}

bool CSWEclipses::GetPathPoint(const ECLIPSE* eclipse, double time, EclipsePathPoint* point) {
    const SolarPath* path = state_->solar_path_of(eclipse);
    if (!path || !point) return false;
    const double h = path->hours(time);
    return std::fabs(h) < kHalfSpan && path_point(*path, h, *point);
}

bool CSWEclipses::GetGreatestDuration(const ECLIPSE* eclipse, EclipsePathPoint* point) {
    const SolarPath* path = state_->solar_path_of(eclipse);
    if (!path || !point) return false;
    const Pair line = central_line(*path);
    return !std::isnan(line.first) && path_point(*path, longest(*path, line), *point);
}

bool CSWEclipses::GetUmbralLimits(const ECLIPSE* eclipse, std::vector<EclipseCurve>* curves) {
    const SolarPath* path = state_->solar_path_of(eclipse);
    if (!path || !curves) return false;
    curves->clear();
    both_limits(*path, solar_contacts(*path).umbra_outer, umbra, 0, *curves);
    return true;
}

bool CSWEclipses::GetPenumbralLimits(const ECLIPSE* eclipse,
                                     std::vector<EclipseCurve>* curves) {
    return GetMagnitudeCurve(eclipse, 0, curves);
}

bool CSWEclipses::GetMagnitudeCurve(const ECLIPSE* eclipse, double magnitude,
                                    std::vector<EclipseCurve>* curves) {
    const SolarPath* path = state_->solar_path_of(eclipse);
    if (!path || !curves || !(magnitude >= 0 && magnitude <= 1)) return false;
    curves->clear();
    both_limits(*path, solar_contacts(*path).penumbra_outer, magnitude_cone, magnitude,
                *curves);
    return true;
}

bool CSWEclipses::GetRiseSetCurves(const ECLIPSE* eclipse, std::vector<EclipseCurve>* curves) {
    const SolarPath* path = state_->solar_path_of(eclipse);
    if (!path || !curves) return false;
    *curves = rise_set_curves(*path, solar_contacts(*path));
    return true;
}

bool CSWEclipses::GetMaximumAtHorizon(const ECLIPSE* eclipse,
                                      std::vector<EclipseCurve>* curves) {
    const SolarPath* path = state_->solar_path_of(eclipse);
    if (!path || !curves) return false;
    const Pair span = solar_contacts(*path).penumbra_outer;
    curves->clear();
    if (std::isnan(span.first)) return true;
    append(*curves, maximum_at_horizon(*path, span, Side::kNorth));
    append(*curves, maximum_at_horizon(*path, span, Side::kSouth));
    return true;
}

bool CSWEclipses::GetIsochrones(const ECLIPSE* eclipse, double step,
                                std::vector<EclipseCurve>* curves) {
    const SolarPath* path = state_->solar_path_of(eclipse);
    if (!path || !curves || !(step >= 0.1)) return false;
    curves->clear();
    const Pair span = solar_contacts(*path).penumbra_outer;
    if (std::isnan(span.first)) return true;
    const double midnight = std::floor(path->jd_ut(span.first) - 0.5) + 0.5;
    const double days = step / 1440;
    double n = std::ceil((path->jd_ut(span.first) - midnight) / days);
    for (; path->hours(midnight + n * days) < span.last; n += 1)
        append(*curves, isochrone(*path, path->hours(midnight + n * days)));
    return true;
}

bool CSWEclipses::GetVisibilityRegion(const ECLIPSE* eclipse,
                                      std::vector<EclipseCurve>* circles) {
    constexpr double kHorizon = solsys::kHalfPi + 34.0 / 60 * solsys::kDegree;
    constexpr int kCirclePoints = 144;
    const LunarPath* path = state_->lunar_path_of(eclipse);
    if (!path || !circles) return false;
    circles->clear();
    const LunarContacts c = lunar_contacts(*path);
    for (const double h :
         {c.penumbra_outer.first, c.umbra_outer.first, c.umbra_inner.first, path->greatest,
          c.umbra_inner.last, c.umbra_outer.last, c.penumbra_outer.last}) {
        if (std::isnan(h)) continue;
        const double distance =
            std::sqrt(std::pow(path->x.at(h), 2) + std::pow(path->y.at(h), 2) +
                      std::pow(path->z.at(h), 2));
        // From the sub-lunar point to where the Moon stands on the horizon, its parallax off.
        const double radius = kHorizon - std::asin(std::sin(kHorizon) / distance);
        const double sin_dec = path->dec.at(h), cos_dec = std::sqrt(1 - sin_dec * sin_dec);
        EclipseCurve& circle = circles->emplace_back();
        for (int i = 0; i <= kCirclePoints; ++i) {
            const double azimuth = solsys::kTwoPi * (i % kCirclePoints) / kCirclePoints;
            const double s =
                sin_dec * std::cos(radius) + cos_dec * std::sin(radius) * std::cos(azimuth);
            const double east = std::sin(radius) * std::sin(azimuth);
            const double out =
                cos_dec * std::cos(radius) - sin_dec * std::sin(radius) * std::cos(azimuth);
            const double longitude =
                solsys::wrap_half_turn(std::atan2(east, out) - path->hour_angle.at(h));
            circle.push_back({std::asin(std::clamp(s, -1.0, 1.0)), longitude, path->jd_ut(h)});
        }
    }
    return true;
}

bool CSWEclipses::FindTimeLimits(const ECLIPSE* eclipse, double times[4]) {
    const SolarPath* path = state_->solar_path_of(eclipse);
    if (!path || !times) return false;
    const SolarContacts contacts = solar_contacts(*path);
    const bool has_umbra = !std::isnan(contacts.umbra_outer.first);
    const Pair span = has_umbra ? contacts.umbra_outer : contacts.penumbra_outer;
    const ConeAt cone = has_umbra ? umbra : magnitude_cone;
    const Pair south = extent(limit_curves(*path, span, cone, 0, Side::kSouth));
    const Pair north = extent(limit_curves(*path, span, cone, 0, Side::kNorth));
    const double found[4] = {south.first, north.first, south.last, north.last};
    static constexpr const char* kNames[4] = {"S1", "N1", "S2", "N2"};
    for (int i = 0; i < 4; ++i) {
        times[i] = std::isnan(found[i]) ? -1.0 : found[i];
        if (times[i] == -1.0) {
            PrintDebugString(
                "CSWEclipses::FindTimeLimits() iteration count exeeded for testpoint %d\n", i);
        } else {
            print_limit(kNames[i], times[i]);
        }
    }
    return true;
}

bool CSWEclipses::FindPhaseTimeLimits(const ECLIPSE* eclipse, double magnitude,
                                      double times[2]) {
    const SolarPath* path = state_->solar_path_of(eclipse);
    if (!path || !times || !(magnitude >= 0 && magnitude <= 1)) return false;
    const Pair pair = phase_limits(*path, magnitude);
    times[0] = times[1] = -1.0;
    if (std::isnan(pair.first)) return false;
    times[0] = path->jd_ut(pair.first);
    times[1] = path->jd_ut(pair.last);
    return true;
}
