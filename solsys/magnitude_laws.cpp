#include <algorithm>
#include <cmath>
#include <cstddef>
#include <iterator>

#include "core/constants.h"
#include "core/linalg.h"
#include "solsys/magnitudes.h"

namespace solsys {
namespace {

constexpr signed char kSuccess = 0;
constexpr signed char kUnknownBody = 111;
constexpr float kAtTheBody = -25.0F;
constexpr int kSunBody = 10;
constexpr int kSaturnBody = 6;
constexpr double kSunAt1Au = 26.0;  // -mag, rounded

// The Galilean phase curves were measured below this phase angle [deg].
constexpr double kGalileanPhaseLimit = 12.0;

// Phase angles above 120 degrees lie outside the H-G system.
constexpr double kMaxPhaseHG = 2.0943951023931953;       // rad
constexpr double kMaxTanHalfPhase = 1.7320508075688772;  // tan 60 deg

struct SatelliteLaw {
    int number;
    double v10;             // magnitude at 1 au from Sun and observer, fully lit
    double phase1, phase2;  // mag/deg, mag/deg^2
    double g;               // slope parameter of the H-G system with H = v10, or 0
    const char* source;
};
constexpr SatelliteLaw kSatellites[] = {
#include "satellite_magnitudes.inc"
};

// Planets and the Moon: v0 + 5 log10(r delta) and a polynomial in the phase angle, in units of
// `unit` degrees, in force up to the angle `to`. Saturn's has a ring term besides.
struct PlanetLaw {
    int body;
    double v0, to, unit;
    double c1, c2, c3, c4;
    const char* source;

    [[nodiscard]] double at(double distance_term, double phase) const {
        const double u = phase / unit;
        return distance_term + v0 + (((c4 * u + c3) * u + c2) * u + c1) * u;
    }
};
constexpr const char* kHarris =
    "Harris 1961, in Planets and Satellites, ed. Kuiper & Middlehurst";
constexpr const char* kDanjon = "Danjon's earthshine, in Harris 1961, l.c.";
constexpr const char* kMallama = "Mallama & Hilton 2018, Astron. Comput. 25, 10";
constexpr const char* kSupplement =
    "Explanatory Supplement to the Astronomical Almanac 1992, planetary magnitudes";
constexpr PlanetLaw kPlanets[] = {
    {1, -0.36, 180.0, 100.0, 3.8, -2.73, 2.0, 0.0, kHarris},
    {2, -4.384, 163.7, 100.0, -0.1044, 3.687, -2.814, 0.8938, kMallama},
    {2, 236.05828, 180.0, 100.0, -281.914, 83.903, 0.0, 0.0, kMallama},
    {3, -3.87, 180.0, 100.0, 1.3, 0.19, 0.48, 0.0, kDanjon},
    {4, -1.52, 180.0, 1.0, 0.016, 0.0, 0.0, 0.0, kHarris},
    {5, -9.25, 180.0, 1.0, 0.005, 0.0, 0.0, 0.0, kHarris},
    {6, -8.88, 180.0, 1.0, 0.044, 0.0, 0.0, 0.0, kHarris},
    {7, -7.19, 180.0, 1.0, 0.0028, 0.0, 0.0, 0.0, kHarris},
    {8, -6.87, 180.0, 1.0, 0.0006, 0.0, 0.0, 0.0, kSupplement},
    {9, -1.0, 180.0, 1.0, 0.041, 0.0, 0.0, 0.0, kSupplement},
    {301, 0.21, 180.0, 100.0, 3.05, -1.02, 1.05, 0.0, kSupplement},
};

// Dwarf planets by the H-G law.
struct DwarfLaw {
    int body;
    float h, g;
    const char* source;
};
constexpr const char* kMinorPlanets = "Minor Planet Circulars";
constexpr DwarfLaw kDwarfs[] = {
    {11, 3.34F, 0.12F, kMinorPlanets},
    {12, -1.2F, 0.15F, kMinorPlanets},
    {13, -0.3F, 0.15F, kMinorPlanets},
    {14, 0.2F, 0.15F, kMinorPlanets},
};

const DwarfLaw* find(const DwarfLaw (&laws)[4], int body) {
    const auto* law = std::ranges::find(laws, body, &DwarfLaw::body);
    return law != std::end(laws) ? law : nullptr;
}

// The law of a planet at a phase angle; a phase that is no number takes the last.
const PlanetLaw* planet_law(int body, double phase) {
    const PlanetLaw* found = nullptr;
    for (const PlanetLaw& law : kPlanets) {
        if (law.body != body) continue;
        found = &law;
        if (phase <= law.to) break;
    }
    return found;
}

// The triangle of Sun, observer and body [au].
struct Distances {
    Vec3 from_body;  // body to observer
    Vec3 body;
    double r, delta;
};

Distances distances(const double* observer, const double* position) {
    const Vec3 body = load(position);
    const Vec3 from_body = load(observer) - body;
    return {from_body, body, norm(body), norm(from_body)};
}

double phase_degrees(const Distances& d) {
    const double product = d.r * d.delta;
    if (product <= 0) return 180.0;
    const double cosine = dot(d.from_body, d.body) / product;
    if (cosine >= 1.0) return 180.0;
    if (cosine <= -1.0) return 0.0;
    return 180.0 - kDegreesPerRadian * std::acos(cosine);
}

double distance_term(const Distances& d) { return 5.0 * std::log10(d.r * d.delta); }

// A satellite of the family first..last by the row of its constants; the family's own rows
// stand together in the order of the numbers.
template <int first, int last>
signed char satellite_magnitude(const double* observer, int body, const double* position,
                                float* out) {
    constexpr std::size_t start = [] {
        std::size_t i = 0;
        while (kSatellites[i].number != first) ++i;
        return i;
    }();
    static_assert(kSatellites[start + last - first].number == last);

    const Distances d = distances(observer, position);
    if (d.r * d.delta == 0.0) {
        *out = kAtTheBody;
        return kSuccess;
    }
    if (body < first || body > last) return kUnknownBody;

    const SatelliteLaw& law = kSatellites[start + static_cast<std::size_t>(body - first)];
    double v = law.v10 + distance_term(d);
    if (law.phase1 != 0.0) {
        const double i = std::min(phase_degrees(d), kGalileanPhaseLimit);
        v += (law.phase1 + law.phase2 * i) * i;
    }
    *out = static_cast<float>(v);
    return kSuccess;
}

// H-G law at a phase angle given by the tangent of its half, at most that of 60 degrees. The
// sum before the phase term is rounded to single precision.
float hg_magnitude(double r, double delta, double tan_half_phase, float h, float g) {
    const double log_t = std::log(tan_half_phase);
    const double phi1 = std::exp(-3.33 * std::exp(0.63 * log_t));
    const double phi2 = std::exp(-1.87 * std::exp(1.22 * log_t));
    const auto unlit = static_cast<float>(5.0 * std::log10(r * delta) + h);
    return static_cast<float>(unlit - 2.5 * std::log10((1.0 - g) * phi1 + g * phi2));
}

float dwarf_planet(const Distances& d, float h, float g) {
    // tan^2(i/2) = (1 - cos i) / (1 + cos i), without the angle itself.
    const double cosine =
        std::clamp(dot(d.from_body, d.body) / (d.r * d.delta), -1.0, 1.0);  // -cos i
    const double t = std::sqrt((1.0 + cosine) / (1.0 - cosine));
    return hg_magnitude(d.r, d.delta, std::min(t, kMaxTanHalfPhase), h, g);
}

}  // namespace
}  // namespace solsys

using namespace solsys;

float MagnitudeHG(double r, double delta, double phase, float h, float g) {
    return hg_magnitude(r, delta, std::tan(std::min(phase, kMaxPhaseHG) / 2.0), h, g);
}

float MagnitudeComet(double r, double delta, float h, float k) {
    return static_cast<float>(h + 5.0 * std::log10(delta) + k * std::log10(r));
}

double PhaseAngle(const double* observer, const double* position) {
    return phase_degrees(distances(observer, position));
}

signed char StarMagPlanet(const double* observer, int body, const double* position,
                          float* out) {
    const Distances d = distances(observer, position);
    if (body == kSunBody) {
        *out = static_cast<float>(5.0 * std::log10(d.delta) - kSunAt1Au);
        return kSuccess;
    }
    if (d.r * d.delta == 0.0) {
        *out = kAtTheBody;
        return kSuccess;
    }

    if (const DwarfLaw* law = find(kDwarfs, body)) {
        *out = dwarf_planet(d, law->h, law->g);
        return kSuccess;
    }
    const double i = phase_degrees(d);
    const PlanetLaw* law = planet_law(body, i);
    if (law == nullptr) return kUnknownBody;
    double v = law->at(distance_term(d), i);
    if (body == kSaturnBody) {
        // The rings, by the body's heliocentric latitude as it is passed.
        const double s = -d.body.z / std::hypot(d.body.x, d.body.y);
        v = v - 2.6 * std::fabs(s) + 1.25 * s * s;
    }
    *out = static_cast<float>(v);
    return kSuccess;
}

signed char StarMagMarsSat(const double* observer, int body, const double* position,
                           float* out) {
    return satellite_magnitude<401, 402>(observer, body, position, out);
}

signed char StarMagJupSat(const double* observer, int body, const double* position,
                          float* out) {
    return satellite_magnitude<501, 580>(observer, body, position, out);
}

signed char StarMagSaturnSat(const double* observer, int body, const double* position,
                             float* out) {
    return satellite_magnitude<601, 683>(observer, body, position, out);
}

signed char StarMagUranSat(const double* observer, int body, const double* position,
                           float* out) {
    return satellite_magnitude<701, 727>(observer, body, position, out);
}

signed char StarMagNepSat(const double* observer, int body, const double* position,
                          float* out) {
    return satellite_magnitude<801, 814>(observer, body, position, out);
}

signed char StarMagPlutoSat(const double* observer, int body, const double* position,
                            float* out) {
    return satellite_magnitude<901, 905>(observer, body, position, out);
}

signed char StarMagErisSat(const double* observer, int body, const double* position,
                           float* out) {
    if (body == kSunBody) return kUnknownBody;
    const Distances d = distances(observer, position);
    if (d.r * d.delta == 0.0) {
        *out = kAtTheBody;
        return kSuccess;
    }
    constexpr const SatelliteLaw* dysnomia =
        std::ranges::find(kSatellites, 1201, &SatelliteLaw::number);
    if (body != dysnomia->number) return kUnknownBody;
    *out = dwarf_planet(d, static_cast<float>(dysnomia->v10), static_cast<float>(dysnomia->g));
    return kSuccess;
}

signed char StarMagHaumeaSat(const double* observer, int body, const double* position,
                             float* out) {
    return satellite_magnitude<1401, 1402>(observer, body, position, out);
}

double calcVisibleDiskPart(double phase) { return (1.0 + std::cos(phase)) / 2.0; }

double diskCutArea(double r1, double r2, double d) {
    if (std::isnan(r1) || std::isnan(r2) || std::isnan(d)) return 0.0;
    const double large = std::max({r1, r2, 0.0});
    const double small = std::max(std::min(r1, r2), 0.0);
    d = std::fabs(d);
    if (small == 0.0 || d >= large + small) return 0.0;
    if (!(d > large - small)) return kPi * small * small;

    // The lens is the sectors of half-angles a and b about the two centres less the kite that
    // both cover, whose area is half the root of Heron's product.
    const double a = std::acos(
        std::clamp((d * d + (large - small) * (large + small)) / (2.0 * d * large), -1.0, 1.0));
    const double b = std::acos(
        std::clamp((d * d - (large - small) * (large + small)) / (2.0 * d * small), -1.0, 1.0));
    const double heron = (large + small - d) * (d - (large - small)) * (d + (large - small)) *
                         (d + large + small);
    const double lens =
        large * large * a + small * small * b - 0.5 * std::sqrt(std::max(0.0, heron));
    return std::clamp(lens, 0.0, kPi * small * small);
}
