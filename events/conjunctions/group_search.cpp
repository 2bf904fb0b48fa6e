// Gatherings: 10-day samples of the radius about the middle of all bodies.
#include <algorithm>
#include <cmath>

#include "core/constants.h"
#include "core/linalg.h"
#include "events/conjunctions/state.h"
#include "solsys/platform.h"
#include "solsys/toolkit.h"

using solsys::Vec3;

namespace {

constexpr double kGroupStep = 10;                // day
constexpr double kHalfTurn = 1.570796326794897;  // rad: no gathering beyond

struct SkyPoint {
    double ra, dec;
};

// The angle in single precision, from its cosine in single precision.
float distance(SkyPoint centre, SkyPoint body) {
    const auto cosine = static_cast<float>(std::cos(centre.dec) * std::cos(body.dec) *
                                               std::cos(body.ra - centre.ra) +
                                           std::sin(centre.dec) * std::sin(body.dec));
    if (cosine <= -1.0F) return static_cast<float>(solsys::kPi);
    if (cosine >= 1.0F) return 0.0F;
    return std::acos(cosine);
}

SkyPoint middle(const std::vector<SkyPoint>& bodies) {
    Vec3 sum{};
    for (const SkyPoint& p : bodies) {
        sum += Vec3{std::cos(p.dec) * std::cos(p.ra), std::cos(p.dec) * std::sin(p.ra),
                    std::sin(p.dec)};
    }
    double mean[3];
    store((1.0 / static_cast<double>(bodies.size())) * sum, mean);
    double spherical[3];
    psf(mean, norm(solsys::load(mean)), spherical);
    return {spherical[1], spherical[2]};
}

// The largest distance from the middle; false when a body cannot be computed.
bool radius_at(CSWSolSys& model, const std::vector<SSO_ID>& ids, double jd_tt,
               std::vector<SkyPoint>& places, float& radius) {
    model.UpdateSys(0, jd_tt);
    for (std::size_t i = 0; i < ids.size(); ++i) {
        double v[3];
        if (!model.GetRADecVis(ids[i], v, 0)) return false;
        places[i] = {v[1], v[2]};
    }
    const SkyPoint centre = middle(places);
    radius = 0;
    for (const SkyPoint& p : places) radius = std::max(radius, distance(centre, p));
    return std::isfinite(radius);
}

}  // namespace

bool CSWConjunc::State::next_of_group(CONJUN& event) {
    std::vector<SkyPoint> places(request->size());
    bool first = true;
    double previous = solsys::kTwoPi;
    while (!span.over() && control.go_on(span)) {
        const double now = span.cursor;
        float radius = 0;
        if (!radius_at(*model, *request, now, places, radius)) return false;
        PrintDebugString("%f <=> %f\n", now, static_cast<double>(radius));
        const double r = radius;
        span.cursor += kGroupStep;
        if (r >= previous || r > kHalfTurn || first) {
            first = false;
        } else if (r < limit) {
            event.time = now + solsys::search::delta_t(now);
            event.separation = r;
            return true;
        }
        previous = r;
    }
    return false;
}
