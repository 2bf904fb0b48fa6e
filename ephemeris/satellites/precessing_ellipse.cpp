#include "ephemeris/satellites/precessing_ellipse.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <string_view>

#include "ephemeris/satellites/turns.h"

namespace solsys::satellites {
namespace {

struct Row {
    int body;
    std::string_view name, solution, frame;
    double epoch_jd, a_km, h, k, l_deg, p, q;
    double apsis_rate_deg_s, mean_motion_deg_s, node_rate_deg_s;
    double pole_ra_deg, pole_dec_deg, tilt_deg;
};

constexpr Row kRows[] = {
#include "precessing_ellipses.inc"
};
static_assert(std::size(kRows) == 27);

// From the mean equator and equinox of B1950.0 to those of J2000.0 (FK4 to FK5, without the
// terms that belong to stars).
constexpr Mat3 kJ2000FromB1950{{0.9999256782, -0.0111820611, -0.0048579477},
                               {0.0111820610, 0.9999374784, -0.0000271765},
                               {0.0048579479, -0.0000271474, 0.9999881997}};

// Neptune's pole goes round the pole of the invariable plane: the node of its equator, degrees
// and degrees per Julian century. Jacobson & Owen 2004, Astron. J. 128, 1412.
constexpr double kNeptuneNode = 357.85;
constexpr double kNeptuneNodeRate = 52.316;

constexpr PrecessingEllipse prepared(const Row& row) {
    constexpr double kPerDay = kDegree * kSecondsPerDay;
    const auto frame = row.frame == "b1950"     ? EllipseFrame::b1950
                       : row.frame == "neptune" ? EllipseFrame::neptune
                                                : EllipseFrame::j2000;
    const Mat3 plane =
        turn_z((row.pole_ra_deg + 90) * kDegree) * turn_x((90 - row.pole_dec_deg) * kDegree);
    return {row.body,
            frame,
            row.epoch_jd,
            row.a_km / kAuKm,
            row.h,
            row.k,
            row.p,
            row.q,
            row.l_deg * kDegree,
            row.apsis_rate_deg_s * kPerDay,
            row.mean_motion_deg_s * kPerDay,
            row.node_rate_deg_s * kPerDay,
            frame == EllipseFrame::b1950 ? kJ2000FromB1950 * plane : plane,
            row.tilt_deg * kDegree};
}

constexpr auto kEllipses = [] {
    std::array<PrecessingEllipse, std::size(kRows)> ellipses{};
    std::transform(std::begin(kRows), std::end(kRows), ellipses.begin(), prepared);
    return ellipses;
}();

}  // namespace

const PrecessingEllipse* find_ellipse(int body) {
    const auto found = std::find_if(kEllipses.begin(), kEllipses.end(),
                                    [&](const auto& ellipse) { return ellipse.body == body; });
    return found == kEllipses.end() ? nullptr : &*found;
}

int ellipse_state(const PrecessingEllipse& ellipse, Instant t, State& state) {
    const double dt = days_since(ellipse.epoch_jd, t);
    const SinCos apsis = sin_cos(ellipse.apsis_rate * dt);
    const SinCos node = sin_cos(ellipse.node_rate * dt);
    // From tan(I/2) to sin(I/2).
    const double scale = 1 / std::sqrt(1 + ellipse.p * ellipse.p + ellipse.q * ellipse.q);

    State in_plane;
    const int code = state_of({.a = ellipse.a,
                               .n = ellipse.mean_motion,
                               .l = ellipse.l + ellipse.mean_motion * dt,
                               .k = ellipse.k * apsis.cos - ellipse.h * apsis.sin,
                               .h = ellipse.h * apsis.cos + ellipse.k * apsis.sin,
                               .q = scale * (ellipse.q * node.cos - ellipse.p * node.sin),
                               .p = scale * (ellipse.p * node.cos + ellipse.q * node.sin)},
                              in_plane);
    if (code != kOk) return code;

    if (ellipse.frame == EllipseFrame::neptune) {
        const double node_deg = kNeptuneNode + kNeptuneNodeRate * centuries_since_j2000(t);
        in_plane = turn_z(node_deg * kDegree) * (turn_x(ellipse.tilt) * in_plane);
    }
    state = ellipse.equator_from_plane * in_plane;
    return kOk;
}

}  // namespace solsys::satellites
