#include "sky/satellite_track.h"

#include <algorithm>
#include <cmath>

#include "core/ellipsoid.h"
#include "ephemeris/tle/teme.h"
#include "sky/units.h"

namespace solsys::sky {
namespace {

constexpr Ellipsoid kWgs84Figure{kEarthRadiusKm, 1 / 298.257223563};
constexpr double kNodeStep = 0.25;  // day: the cubic between two nodes is good to 1e-12
constexpr std::size_t kNodes = 64;

// Part of the Sun's disc outside a straight edge: x from 0 (hidden) to 1.
double part_outside(double x) {
    const double u = std::clamp(2 * x - 1, -1.0, 1.0);
    return 0.5 + (u * std::sqrt(1 - u * u) + std::asin(u)) / kPi;
}

// Of a sphere that scatters as paper does, over that at a right angle, in magnitudes.
double phase_magnitudes(double phase) {
    return -2.5 * std::log10(std::sin(phase) + (kPi - phase) * std::cos(phase));
}

double angle_between(Vec3 a, Vec3 b) { return std::atan2(norm(cross(a, b)), dot(a, b)); }

}  // namespace

const SunPath::Node& SunPath::node(long number) {
    if (nodes_.empty()) nodes_.resize(kNodes);
    Node& node = nodes_[static_cast<std::size_t>(number) % kNodes];
    if (node.known && node.number == number) return node;
    const JulianDate tt = start_.plus_days(static_cast<double>(number) * kNodeStep).tt();
    model_.SetTime(tt.day, tt.fraction, false);
    double earth[6] = {};
    model_.GetHelVec2K({SSO_PLNT, 3}, 1, earth);
    const State sun =
        transpose_times(j2000_from_teme({tt.day, tt.fraction}), load_state(earth));
    EarthOrientationRow row;
    const bool told = model_.GetEarthOrientation(&row) != EARTH_ORIENTATION_NONE;
    node = {number, true, -kAuKm * sun.r, -kAuKm * sun.v,
            told ? row.ut1_minus_utc / kSecondsPerDay : 0};
    return node;
}

SunPath::Place SunPath::at(double t) {
    const double place = std::floor(t / kNodeStep);
    const Node a = node(static_cast<long>(place));
    const Node b = node(static_cast<long>(place) + 1);
    const double s = t / kNodeStep - place, s2 = s * s, s3 = s2 * s;
    const Vec3 r = (1 - 3 * s2 + 2 * s3) * a.r + (3 * s2 - 2 * s3) * b.r +
                   kNodeStep * ((s - 2 * s2 + s3) * a.v + (s3 - s2) * b.v);
    return {r, a.ut1_utc + s * (b.ut1_utc - a.ut1_utc)};
}

SatelliteTrack::SatelliteTrack(Model& model, const Site& site, const PreparedElements& elements,
                               const Instant& start)
    : keep_(model.classic()), sun_(model.classic(), start), elements_(elements), start_(start) {
    const JulianDate utc = start.utc();
    first_minute_ = elements.minutes_at({utc.day, utc.fraction});
    const double lon = site.longitude_deg / kDegrees, lat = site.latitude_deg / kDegrees;
    site_ = cartesian(kWgs84Figure, {site.height_m / 1000, lon, lat});
    up_ = {std::cos(lat) * std::cos(lon), std::cos(lat) * std::sin(lon), std::sin(lat)};
    east_ = {-std::sin(lon), std::cos(lon), 0};
    north_ = cross(up_, east_);
}

Vec3 SatelliteTrack::turned(Vec3 fixed, double gmst) {
    const double c = std::cos(gmst), s = std::sin(gmst);
    return {c * fixed.x - s * fixed.y, s * fixed.x + c * fixed.y, fixed.z};
}

std::optional<SatelliteTrack::Look> SatelliteTrack::look(double t) {
    double state[6];
    if (elements_.teme_state(first_minute_ + 1440 * t, resonance_, state) != TLE_OK)
        return std::nullopt;
    const JulianDate utc = start_.utc();
    Look look;
    look.satellite = load(state), look.velocity = load(state + 3);
    look.gmst = sidereal_time_1982({utc.day, utc.fraction + t + sun_.at(t).ut1_utc});
    look.line = look.satellite - turned(site_, look.gmst);
    return look;
}

// A ray that grazes the Earth and goes at an angle alpha to the shadow's axis is, at a distance
// r behind, asin(R/r) off the axis, more or less alpha.
double SatelliteTrack::outside_shadow(const Look& look, double t, int side) {
    const Vec3 sun = sun_.at(t).sun;
    const double alpha = (kSunRadiusKm + side * kEarthRadiusKm) / norm(sun);
    const double edge = std::asin(std::min(1.0, kEarthRadiusKm / norm(look.satellite)));
    return angle_between(look.satellite, -sun) - (edge + side * alpha);
}

SatellitePlace SatelliteTrack::view(const Look& look, double t) {
    SatellitePlace view;
    view.at = start_.plus_days(t);
    const Vec3 line = look.line, north = turned(north_, look.gmst),
               east = turned(east_, look.gmst);
    view.range_km = norm(line);
    const double azimuth = std::atan2(dot(line, east), dot(line, north)) * kDegrees;
    view.azimuth_deg = azimuth < 0 ? azimuth + 360 : azimuth;
    view.altitude_deg = std::asin(std::clamp(sine_of_altitude(look), -1.0, 1.0)) * kDegrees;
    view.height_km = norm(look.satellite) - kEarthRadiusKm;

    const double umbra = outside_shadow(look, t, -1), penumbra = outside_shadow(look, t, 1);
    view.light = umbra < 0 ? Light::umbra : penumbra < 0 ? Light::penumbra : Light::sunlit;
    view.sun_visible = view.light == Light::penumbra ? part_outside(umbra / (umbra - penumbra))
                       : umbra < 0                   ? 0
                                                     : 1;
    const Vec3 sun = sun_.at(t).sun;
    view.sun_altitude_deg =
        std::asin(dot(up(look), unit(sun - turned(site_, look.gmst)))) * kDegrees;
    if (standard_magnitude_ && view.sun_visible > 0) {
        const double phase = angle_between(sun - look.satellite, -line);
        view.magnitude = *standard_magnitude_ + 5 * std::log10(view.range_km / 1000) +
                         phase_magnitudes(phase) - 2.5 * std::log10(view.sun_visible);
        if (!std::isfinite(*view.magnitude)) view.magnitude.reset();
    }
    return view;
}

}  // namespace solsys::sky
