// Source: Chapront & Francou 2003, Astron. Astrophys. 404, 735, and the explanatory note of the
// solution ELP/MPP02 (SYRTE, Paris Observatory, 2002).
#include "ephemeris/analytic/elpmpp02.h"

#include <cmath>
#include <iterator>

#include "core/constants.h"
#include "ephemeris/analytic/elpmpp02_terms.h"
#include "ephemeris/analytic/series_sum.h"

namespace solsys {
namespace {

// The mean longitude W1 of the Moon, then the arguments of the perturbations.
constexpr MoonArgument kArguments[] = {
#include "elpmpp02_arguments.inc"
};
static_assert(std::size(kArguments) == 14, "W1 and thirteen arguments");
constexpr MoonMainRow kMainLongitude[] = {
#include "elpmpp02_main_longitude.inc"
};
constexpr MoonMainRow kMainLatitude[] = {
#include "elpmpp02_main_latitude.inc"
};
constexpr MoonMainRow kMainDistance[] = {
#include "elpmpp02_main_distance.inc"
};
constexpr MoonPerturbationRow kPerturbedLongitude[] = {
#include "elpmpp02_pert_longitude.inc"
};
constexpr MoonPerturbationRow kPerturbedLatitude[] = {
#include "elpmpp02_pert_latitude.inc"
};
constexpr MoonPerturbationRow kPerturbedDistance[] = {
#include "elpmpp02_pert_distance.inc"
};

// Longitude and latitude in radians, the distance in au. Longitude and distance have their
// arguments in common; those of the latitude are others, with odd multiples of F.
constexpr std::array<MoonCoordinate, 2> kInPlane{{
    {kMainLongitude, kPerturbedLongitude, false, kArcsec},
    {kMainDistance, kPerturbedDistance, true, elpmpp02::kDistanceScale / kAuKm},
}};
constexpr std::array<MoonCoordinate, 1> kOutOfPlane{
    {{kMainLatitude, kPerturbedLatitude, false, kArcsec}}};

template <const auto& kCoordinates>
struct MoonTable {
    static constexpr std::size_t kTermCount = [] {
        std::size_t count = 0;
        for (const MoonCoordinate& coordinate : kCoordinates)
            count += coordinate.count_selected();
        return count;
    }();
    static constexpr auto kTerms =
        moon_terms<kTermCount>(kCoordinates, std::span(kArguments).subspan(1));
    static constexpr auto kPacked = pack_series<4, kTerms>();
};
constexpr SeriesView kLongitudeAndDistance = MoonTable<kInPlane>::kPacked.view();
constexpr SeriesView kLatitude = MoonTable<kOutOfPlane>::kPacked.view();

// P and Q of the pole of the moving ecliptic, T^1 to T^5, T in Julian centuries. Laskar 1986,
// Astron. Astrophys. 157, 59.
constexpr std::array<double, 5> kP{0.10180391e-4, 0.47020439e-6, -0.5417367e-9, -0.2507948e-11,
                                   0.463486e-14};
constexpr std::array<double, 5> kQ{-0.113469002e-3, 0.12372674e-6, 0.1265417e-8, -0.1371808e-11,
                                   -0.320334e-14};

// From the inertial mean ecliptic of J2000 to the equator: R3(-phi) R1(-eps) with
// eps = 23 deg 26' 21.40960", phi = -0.05028". Chapront, Chapront-Touze & Francou 2002, Astron.
// Astrophys. 387, 700.
constexpr Mat3 kEquatorFromEcliptic{
    {0.99999999999997025, 2.236494079798913e-07, -9.6963835838092942e-08},
    {-2.4376431886187222e-07, 0.91748213612269647, -0.39777698512567833},
    {0.0, 0.39777698512569015, 0.91748213612272378}};

// A quantity and its rate per century.
struct Rated {
    double value, rate;
};

// c[0] t + c[1] t^2 + ...
Rated polynomial_without_constant(const std::array<double, 5>& c, double t) {
    Rated p{0, 0};
    for (std::size_t k = c.size(); k-- > 0;) {
        p.value = p.value * t + c[k];
        p.rate = p.rate * t + static_cast<double>(k + 1) * c[k];
    }
    return {p.value * t, p.rate};
}

// The mean longitude of the Moon [rad], whole turns taken off.
Rated mean_longitude(double t) {
    constexpr auto& c = kArguments[0].c;
    constexpr double kTurnsPerArcsec = 1 / 1296000.0;
    const double turns =
        (c[0] + (c[1] + (c[2] + (c[3] + c[4] * t) * t) * t) * t) * kTurnsPerArcsec;
    return {kTwoPi * (turns - std::floor(turns)),
            kArcsec * (c[1] + (2 * c[2] + (3 * c[3] + 4 * c[4] * t) * t) * t)};
}

// From the mean ecliptic of date to that of J2000, by P and Q of its pole, and the rate of that
// per century.
Mat3 j2000_from_date(double p, double q) {
    const double pp = p * p, qq = q * q, pq = p * q;
    const double s = std::sqrt(1 - pp - qq);
    return {{1 - 2 * pp, 2 * pq, 2 * p * s},
            {2 * pq, 1 - 2 * qq, -2 * q * s},
            {-2 * p * s, 2 * q * s, 1 - 2 * pp - 2 * qq}};
}
Mat3 rate_of_j2000_from_date(const Rated& p, const Rated& q) {
    const double s = std::sqrt(1 - p.value * p.value - q.value * q.value);
    const double pp_rate = 2 * p.value * p.rate, qq_rate = 2 * q.value * q.rate;
    const double pq_rate = p.rate * q.value + p.value * q.rate;
    const double s_rate = -(pp_rate + qq_rate) / (2 * s);
    const double ps_rate = p.rate * s + p.value * s_rate;
    const double qs_rate = q.rate * s + q.value * s_rate;
    return {{-2 * pp_rate, 2 * pq_rate, 2 * ps_rate},
            {2 * pq_rate, -2 * qq_rate, -2 * qs_rate},
            {-2 * ps_rate, 2 * qs_rate, -2 * pp_rate - 2 * qq_rate}};
}

}  // namespace

State elpmpp02_moon(double days, bool with_velocity) {
    const double t = days / kDaysPerJulianCentury;

    // Longitude and latitude on the mean ecliptic of date, and the distance.
    const SeriesSum in_plane = sum_series(kLongitudeAndDistance, t, with_velocity);
    const SeriesSum out_of_plane = sum_series(kLatitude, t, with_velocity);
    const Rated w1 = mean_longitude(t);
    const double v = w1.value + in_plane.value[0];
    const double u = out_of_plane.value[0];
    const double r = in_plane.value[1];
    const double cos_v = std::cos(v), sin_v = std::sin(v);
    const double cos_u = std::cos(u), sin_u = std::sin(u);
    const Vec3 of_date = r * Vec3{cos_v * cos_u, sin_v * cos_u, sin_u};

    // To the mean ecliptic of J2000.
    const Rated p = polynomial_without_constant(kP, t);
    const Rated q = polynomial_without_constant(kQ, t);
    const Mat3 to_j2000 = j2000_from_date(p.value, q.value);
    State moon{to_j2000 * of_date, {0, 0, 0}};

    if (with_velocity) {
        const double v_rate = w1.rate + in_plane.rate[0];
        const double u_rate = out_of_plane.rate[0];
        const double r_rate = in_plane.rate[1];
        const Vec3 of_date_rate = (r_rate / r) * of_date +
                                  (r * v_rate) * Vec3{-sin_v * cos_u, cos_v * cos_u, 0} +
                                  (r * u_rate) * Vec3{-cos_v * sin_u, -sin_v * sin_u, cos_u};
        moon.v = (1 / kDaysPerJulianCentury) *
                 (to_j2000 * of_date_rate + rate_of_j2000_from_date(p, q) * of_date);
    }
    return kEquatorFromEcliptic * moon;
}

}  // namespace solsys
