// Elements from what catalogues print.
#include "solsys/element_records.h"

#include <cmath>

#include "ephemeris/two_body/orbit_plane.h"
#include "solsys/element_tables.h"

namespace {

bool store_orbit(const Elements& elements, Elements* out) {
    if (out == nullptr || !solsys::is_orbit(elements)) return false;
    *out = elements;
    return true;
}

}  // namespace

bool ElementsFromPerihelion(double q, double e, double i, double node, double peri, int day,
                            double fraction, Elements* out) {
    const bool ellipse = solsys::conic_of(e) == solsys::Conic::ellipse;
    const double size = ellipse ? q / (1.0 - e) : q;
    return store_orbit({.q = size,
                        .e = e,
                        .i = i,
                        .node = node,
                        .peri = peri,
                        .n = solsys::mean_motion(size, e, solsys::kSunGm),
                        .M = 0.0,
                        .epochFraction = fraction,
                        .epochDay = day},
                       out);
}

bool ElementsFromMeanAnomaly(double a, double e, double i, double node, double peri, double M,
                             int day, double fraction, Elements* out) {
    if (!(e < 1.0) || solsys::conic_of(e) != solsys::Conic::ellipse) return false;
    return store_orbit({.q = a,
                        .e = e,
                        .i = i,
                        .node = node,
                        .peri = peri,
                        .n = solsys::mean_motion(a, e, solsys::kSunGm),
                        .M = M,
                        .epochFraction = fraction,
                        .epochDay = day},
                       out);
}
