#include "solsys/sky/refraction.h"

#include <algorithm>
#include <cmath>

#include "sky/refraction_integral.h"
#include "sky/units.h"

namespace solsys::sky {
namespace {

constexpr double kPole = 1e-9;       // deg: what counts as the zenith
constexpr double kTolerance = 1e-8;  // deg
constexpr int kMaxSteps = 20;
constexpr double kHighestEye = 10000;  // m above the ground

double factor(const Air& air) {
    return air.pressure_hpa / 1010 * 283 / (273 + air.temperature_c);
}
double cotangent(double deg) { return 1 / std::tan(deg / kDegrees); }

// [arcmin]
double bennett(double apparent_deg) {
    return cotangent(apparent_deg + 7.31 / (apparent_deg + 4.4));
}
double saemundsson(double true_deg) {
    return 1.02 * cotangent(true_deg + 10.3 / (true_deg + 5.11));
}

bool within(double x, double least, double most) { return x >= least && x <= most; }

bool in_range(const Air& air) {
    return within(air.pressure_hpa, 0, 1200) && within(air.temperature_c, -100, 60) &&
           within(air.humidity, 0, 1) && within(air.wavelength_um, 0.2, 20);
}

bool in_range(const Atmosphere& a) {
    return in_range(a.air) && within(a.latitude_deg, -90, 90) &&
           within(a.height_m, -1000, 20000);
}

double of_apparent(const AirColumn& column, double apparent_deg) {
    if (apparent_deg >= 90 - kPole) return 0;
    return refraction_integral(column, (90 - apparent_deg) / kDegrees) * kDegrees;
}

// The apparent altitude a with a - refraction(a) = true_deg, by the secant method.
std::optional<double> apparent_of(const AirColumn& column, double true_deg, double start) {
    const auto excess = [&](double a) { return a - of_apparent(column, a) - true_deg; };
    const auto clamped = [](double a) { return std::clamp(a, kLowestApparentAltitude, 90.0); };
    double a0 = clamped(start), a1 = clamped(true_deg + 0.9 * (start - true_deg));
    double f0 = excess(a0);
    for (int step = 0; step < kMaxSteps && std::fabs(a1 - a0) > kTolerance; ++step) {
        const double f1 = excess(a1);
        if (f1 == f0) break;
        const double next = clamped(a1 - f1 * (a1 - a0) / (f1 - f0));
        a0 = a1, f0 = f1, a1 = next;
    }
    if (std::fabs(excess(a1)) > 1e-7) return std::nullopt;  // below the lowest ray
    return a1;
}

}  // namespace

Air standard_air(double height_m) {
    const double base = std::max(1 - 2.25577e-5 * height_m, 0.0);
    return {.pressure_hpa = 1013.25 * std::pow(base, 5.25588),
            .temperature_c = 15 - 0.0065 * height_m};
}

Result<Air> checked_air(const Air& air) {
    if (!within(air.pressure_hpa, 0, 1200))
        return Failure{"the pressure must be from 0 to 1200 hPa"};
    if (!within(air.temperature_c, -100, 60))
        return Failure{"the temperature must be from -100 to 60 degrees Celsius"};
    if (!within(air.humidity, 0, 1)) return Failure{"the humidity must be from 0 to 1"};
    if (!within(air.wavelength_um, 0.2, 20))
        return Failure{"the wavelength must be from 0.2 to 20 micrometres"};
    return air;
}

std::optional<double> refraction_of_apparent_short(double apparent_deg, const Air& air) {
    if (!in_range(air) || !within(apparent_deg, kLowestApparentAltitude, 90))
        return std::nullopt;
    return std::max(0.0, bennett(apparent_deg) * factor(air) / 60);
}

std::optional<double> refraction_of_true_short(double true_deg, const Air& air) {
    if (!in_range(air) || !within(true_deg, kLowestApparentAltitude - 1, 90))
        return std::nullopt;
    const double refraction = std::max(0.0, saemundsson(true_deg) * factor(air) / 60);
    if (true_deg + refraction < kLowestApparentAltitude) return std::nullopt;
    return refraction;
}

std::optional<double> refraction_of_apparent(double apparent_deg,
                                             const Atmosphere& atmosphere) {
    if (!in_range(atmosphere) || !within(apparent_deg, kLowestApparentAltitude, 90))
        return std::nullopt;
    return of_apparent(AirColumn(atmosphere), apparent_deg);
}

std::optional<double> refraction_of_true(double true_deg, const Atmosphere& atmosphere) {
    if (!in_range(atmosphere) || !within(true_deg, kLowestApparentAltitude - 1.5, 90))
        return std::nullopt;
    const double guess = saemundsson(std::max(true_deg, -2.0)) * factor(atmosphere.air) / 60;
    const auto apparent = apparent_of(AirColumn(atmosphere), true_deg, true_deg + guess);
    if (!apparent) return std::nullopt;
    return *apparent - true_deg;
}

std::optional<double> dip_of_horizon(double above_ground_m, const Atmosphere& atmosphere) {
    if (!in_range(atmosphere) || !(above_ground_m <= kHighestEye)) return std::nullopt;
    if (!(above_ground_m > 0)) return 0.0;
    // n r sin z is the same at the eye and where the ray grazes the ground, with z = 90
    // degrees.
    const AirColumn column(atmosphere);
    const double foot = column.ground - above_ground_m;
    const double sine = column.troposphere(foot).n * foot /
                        (column.troposphere(column.ground).n * column.ground);
    return std::acos(std::min(sine, 1.0)) * kDegrees;
}

std::optional<double> true_altitude_of_horizon(double above_ground_m,
                                               const Atmosphere& atmosphere) {
    const auto dip = dip_of_horizon(above_ground_m, atmosphere);
    if (!dip) return std::nullopt;
    return -*dip - of_apparent(AirColumn(atmosphere), -*dip);
}

std::optional<double> apparent_altitude(double true_deg,
                                        const std::optional<Atmosphere>& atmosphere) {
    const auto r = atmosphere ? refraction_of_true(true_deg, *atmosphere)
                              : refraction_of_true_short(true_deg);
    return r ? std::optional(true_deg + *r) : std::nullopt;
}

std::optional<double> true_altitude(double apparent_deg,
                                    const std::optional<Atmosphere>& atmosphere) {
    const auto r = atmosphere ? refraction_of_apparent(apparent_deg, *atmosphere)
                              : refraction_of_apparent_short(apparent_deg);
    return r ? std::optional(apparent_deg - *r) : std::nullopt;
}

}  // namespace solsys::sky
