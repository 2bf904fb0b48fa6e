// The members of CSWEclipses that draw on the globe.
#include <algorithm>
#include <cmath>

#include "core/angles.h"
#include "core/answer_or.h"
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

// Draws along the path of a record into a vector, in place of what it holds. False without
// either, and where memory ends, with nothing in the vector.
template <class Path, class Out, class Draw>
bool drawn(const Path* path, std::vector<Out>* out, Draw&& draw) {
    if (path == nullptr || out == nullptr) return false;
    out->clear();
    const bool whole = solsys::answer_or(false, [&] { return draw(*path, *out), true; });
    if (!whole) out->clear();
    return whole;
}

// The places that have the Moon's centre on the horizon, refraction 34 arcmin, in a circle.
EclipseCurve moon_on_horizon(const LunarPath& path, double h) {
    constexpr double kHorizon = solsys::kHalfPi + 34.0 / 60 * solsys::kDegree;
    constexpr int kCirclePoints = 144;
    const double distance = std::sqrt(std::pow(path.x.at(h), 2) + std::pow(path.y.at(h), 2) +
                                      std::pow(path.z.at(h), 2));
    // From the sub-lunar point to where the Moon stands on the horizon, its parallax off.
    const double radius = kHorizon - std::asin(std::sin(kHorizon) / distance);
    const double sin_dec = path.dec.at(h), cos_dec = std::sqrt(1 - sin_dec * sin_dec);
    EclipseCurve circle;
    for (int i = 0; i <= kCirclePoints; ++i) {
        const double azimuth = solsys::kTwoPi * (i % kCirclePoints) / kCirclePoints;
        const double s =
            sin_dec * std::cos(radius) + cos_dec * std::sin(radius) * std::cos(azimuth);
        const double east = std::sin(radius) * std::sin(azimuth);
        const double out =
            cos_dec * std::cos(radius) - sin_dec * std::sin(radius) * std::cos(azimuth);
        const double longitude =
            solsys::wrap_half_turn(std::atan2(east, out) - path.hour_angle.at(h));
        circle.push_back({std::asin(std::clamp(s, -1.0, 1.0)), longitude, path.jd_ut(h)});
    }
    return circle;
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
    return drawn(state_->solar_path_of(eclipse), curves, [](const SolarPath& path, auto& all) {
        all = central_line(path, central_line(path));
    });
}

bool CSWEclipses::GetCentralPath(const ECLIPSE* eclipse, double step,
                                 std::vector<EclipsePathPoint>* points) {
    if (!(step >= 1)) return false;
    return drawn(state_->solar_path_of(eclipse), points, [&](const SolarPath& path, auto& all) {
        const Pair line = central_line(path);
        if (std::isnan(line.first)) return;
        const auto add = [&](double h) {
            EclipsePathPoint p;
            if (path_point(path, h, p)) all.push_back(p);
        };
        add(line.first + 1e-7);
        // Whole steps of UT from midnight on.
        const double midnight = std::floor(path.jd_ut(line.first) - 0.5) + 0.5;
        const double days = step / 86400;
        double n = std::ceil((path.jd_ut(line.first) - midnight) / days);
        for (; path.hours(midnight + n * days) < line.last; n += 1)
            add(path.hours(midnight + n * days));
        add(line.last - 1e-7);
    });
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
    return drawn(state_->solar_path_of(eclipse), curves, [](const SolarPath& path, auto& all) {
        both_limits(path, solar_contacts(path).umbra_outer, umbra, 0, all);
    });
}

bool CSWEclipses::GetPenumbralLimits(const ECLIPSE* eclipse,
                                     std::vector<EclipseCurve>* curves) {
    return GetMagnitudeCurve(eclipse, 0, curves);
}

bool CSWEclipses::GetMagnitudeCurve(const ECLIPSE* eclipse, double magnitude,
                                    std::vector<EclipseCurve>* curves) {
    if (!(magnitude >= 0 && magnitude <= 1)) return false;
    return drawn(state_->solar_path_of(eclipse), curves, [&](const SolarPath& path, auto& all) {
        both_limits(path, solar_contacts(path).penumbra_outer, magnitude_cone, magnitude, all);
    });
}

bool CSWEclipses::GetRiseSetCurves(const ECLIPSE* eclipse, std::vector<EclipseCurve>* curves) {
    return drawn(state_->solar_path_of(eclipse), curves, [](const SolarPath& path, auto& all) {
        all = rise_set_curves(path, solar_contacts(path));
    });
}

bool CSWEclipses::GetMaximumAtHorizon(const ECLIPSE* eclipse,
                                      std::vector<EclipseCurve>* curves) {
    return drawn(state_->solar_path_of(eclipse), curves, [](const SolarPath& path, auto& all) {
        const Pair span = solar_contacts(path).penumbra_outer;
        if (std::isnan(span.first)) return;
        append(all, maximum_at_horizon(path, span, Side::kNorth));
        append(all, maximum_at_horizon(path, span, Side::kSouth));
    });
}

bool CSWEclipses::GetIsochrones(const ECLIPSE* eclipse, double step,
                                std::vector<EclipseCurve>* curves) {
    if (!(step >= 0.1)) return false;
    return drawn(state_->solar_path_of(eclipse), curves, [&](const SolarPath& path, auto& all) {
        const Pair span = solar_contacts(path).penumbra_outer;
        if (std::isnan(span.first)) return;
        const double midnight = std::floor(path.jd_ut(span.first) - 0.5) + 0.5;
        const double days = step / 1440;
        double n = std::ceil((path.jd_ut(span.first) - midnight) / days);
        for (; path.hours(midnight + n * days) < span.last; n += 1)
            append(all, isochrone(path, path.hours(midnight + n * days)));
    });
}

bool CSWEclipses::GetVisibilityRegion(const ECLIPSE* eclipse,
                                      std::vector<EclipseCurve>* circles) {
    return drawn(state_->lunar_path_of(eclipse), circles, [](const LunarPath& path, auto& all) {
        const LunarContacts c = lunar_contacts(path);
        for (const double h :
             {c.penumbra_outer.first, c.umbra_outer.first, c.umbra_inner.first, path.greatest,
              c.umbra_inner.last, c.umbra_outer.last, c.penumbra_outer.last}) {
            if (!std::isnan(h)) all.push_back(moon_on_horizon(path, h));
        }
    });
}

bool CSWEclipses::FindTimeLimits(const ECLIPSE* eclipse, double times[4]) {
    const SolarPath* path = state_->solar_path_of(eclipse);
    if (!path || !times) return false;
    const SolarContacts contacts = solar_contacts(*path);
    const bool has_umbra = !std::isnan(contacts.umbra_outer.first);
    const Pair span = has_umbra ? contacts.umbra_outer : contacts.penumbra_outer;
    const ConeAt cone = has_umbra ? umbra : magnitude_cone;
    Pair south, north;
    const bool whole = solsys::answer_or(false, [&] {
        south = extent(limit_curves(*path, span, cone, 0, Side::kSouth));
        north = extent(limit_curves(*path, span, cone, 0, Side::kNorth));
        return true;
    });
    if (!whole) return false;
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
