#include "solsys/dwarf_elements.h"

#include <cmath>

#include "core/constants.h"
#include "core/linalg.h"

namespace solsys {
namespace {

constexpr Mat3 kEclipticFromEquator =
    rotation_x(kCosObliquityOfElements, kSinObliquityOfElements);

struct DwarfLine {
    int number;
    int epoch_day;
    double epoch_fraction, a, e, i_deg, node_deg, peri_deg, m_deg, n;
};
constexpr DwarfLine kDwarfLines[] = {
#include "dwarf_planets.inc"
};

bool is_equatorial(int number) { return number == 13 || number == 14; }

// An orbit given on the J2000 equator, referred to the J2000 ecliptic by way of its state at
// the epoch. The state is that of the semi-major axis; the mean motion and the mean anomaly do
// not depend on the plane and are kept.
Elements on_ecliptic(const Elements& equatorial) {
    Elements keplerian = equatorial;
    keplerian.n = std::sqrt(kSunGm / equatorial.q) / equatorial.q;
    double r[3], v[3];
    Kepler(1, kSunGm, equatorial.epochDay, equatorial.epochFraction, keplerian, r, v);
    store(kEclipticFromEquator * load(r), r);
    store(kEclipticFromEquator * load(v), v);

    Elements ecliptic = equatorial;
    VectorToElements(kSunGm, r, v, &ecliptic);
    ecliptic.n = equatorial.n;
    return ecliptic;
}

}  // namespace

bool dwarf_planet_elements(int number, Elements* out) {
    for (const DwarfLine& line : kDwarfLines) {
        if (line.number != number) continue;
        const Elements elements{line.a,
                                line.e,
                                line.i_deg * kDegree,
                                line.node_deg * kDegree,
                                line.peri_deg * kDegree,
                                line.n,
                                line.m_deg * kDegree,
                                line.epoch_fraction,
                                line.epoch_day};
        *out = is_equatorial(number) ? on_ecliptic(elements) : elements;
        return true;
    }
    return false;
}

}  // namespace solsys
