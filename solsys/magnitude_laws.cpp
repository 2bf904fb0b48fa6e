#include <algorithm>
#include <cmath>
#include <cstddef>

#include "core/constants.h"
#include "core/linalg.h"
#include "solsys/magnitudes.h"

namespace solsys {
namespace {

constexpr signed char kSuccess = 0;
constexpr signed char kUnknownBody = 111;
constexpr float kAtTheBody = -25.0F;
constexpr int kSun = 10;

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
    if (body == kSun) {
        *out = static_cast<float>(5.0 * std::log10(d.delta) - 26.0);
        return kSuccess;
    }
    if (d.r * d.delta == 0.0) {
        *out = kAtTheBody;
        return kSuccess;
    }

    switch (body) {
        case 11:
            *out = dwarf_planet(d, 3.34F, 0.12F);
            return kSuccess;
        case 12:
            *out = dwarf_planet(d, -1.2F, 0.15F);
            return kSuccess;
        case 13:
            *out = dwarf_planet(d, -0.3F, 0.15F);
            return kSuccess;
        case 14:
            *out = dwarf_planet(d, 0.2F, 0.15F);
            return kSuccess;
        default:
            break;
    }

    const double l = distance_term(d);
    const double i = phase_degrees(d);
    const double u = i / 100.0;
    double v = 0;
    switch (body) {
        case 1:
            v = l - 0.36 + ((2.0 * u - 2.73) * u + 3.8) * u;
            break;
        case 2:
            v = i <= 163.7 ? l - 4.384 + (((0.8938 * u - 2.814) * u + 3.687) * u - 0.1044) * u
                           : l + 236.05828 + (83.903 * u - 281.914) * u;
            break;
        case 3:
            v = l - 3.87 + ((0.48 * u + 0.19) * u + 1.3) * u;
            break;
        case 4:
            v = l - 1.52 + 0.016 * i;
            break;
        case 5:
            v = l - 9.25 + 0.005 * i;
            break;
        case 6: {
            const double s = -d.body.z / std::hypot(d.body.x, d.body.y);
            v = l - 8.88 + 0.044 * i - 2.6 * std::fabs(s) + 1.25 * s * s;
            break;
        }
        case 7:
            v = l - 7.19 + 0.0028 * i;
            break;
        case 8:
            v = l - 6.87 + 0.0006 * i;
            break;
        case 9:
            v = l - 1.0 + 0.041 * i;
            break;
        case 301:
            v = l + 0.21 + ((1.05 * u - 1.02) * u + 3.05) * u;
            break;
        default:
            return kUnknownBody;
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
    if (body == kSun) return kUnknownBody;
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
