#include "solsys/sky/planet_year.h"

#include <algorithm>
#include <cmath>

#include "events/diary/quantities.h"
#include "sky/search_scope.h"
#include "sky/units.h"

namespace solsys::sky {

std::vector<ElongationCurve> elongation_curves(Model& model, const Span& span,
                                               double step_days) {
    SearchScope scope(model, span, nullptr);
    std::vector<ElongationCurve> curves;
    for (const int number : {1, 2, 4, 5, 6, 7, 8, 9})
        curves.push_back({Body(SSO_ID(SSO_PLNT, number)), {}});
    const double step = std::max(step_days, 0.01);
    for (double t = scope.span().start; t <= scope.span().end; t += step) {
        scope.sky.at(t);
        const Vec3 sun = scope.sky.sun().direction;
        for (ElongationCurve& curve : curves) {
            const diary::Difference d =
                diary::difference(scope.sky.ecliptic(),
                                  scope.sky.apparent(target_of(curve.planet)).direction, sun);
            if (std::isfinite(d.sine))
                curve.points.push_back(
                    {Instant::from_tt(t), std::atan2(d.sine, d.cosine) * kDegrees});
        }
    }
    return curves;
}

}  // namespace solsys::sky
