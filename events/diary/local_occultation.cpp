#include "events/diary/local_occultation.h"

#include <cmath>

#include "core/constants.h"
#include "events/search/crossings.h"

namespace solsys::diary {

namespace {

constexpr double kMoonRadius = 1737.4 / kAuKm;  // mean limb
constexpr double kWindow = 0.25;                // day: from the conjunction to the contacts
constexpr double kContactPrecision = 0.1 * search::kSecond;
// Of the cosine of the topocentric angle: squares of the rates of Moon and site (0.42 rad/day),
// accelerations times the angle.
constexpr double kBound = 0.42 * 0.42 + 0.06 * 0.75;
constexpr double kOccultationStep = 0.02;  // day

}  // namespace

std::array<double, 4> occultation_near(CSWSolSys& model, const OBSERVER& site,
                                       const Target& target, double conjunction) {
    std::array<double, 4> contacts{};
    const double radius = target.star != nullptr ? 0 : model.GetRadiEq(target.id) / kAuKm;
    model.SetObserver(&site);
    search::Control control;
    for (const double edge : {1.0, -1.0}) {
        const auto clearance = [&](double t) {
            const Instant instant = search::split(t);
            model.UpdateSys(instant.day, instant.fraction);
            double moon[4];
            double body[4] = {0, 0, 0, 1};
            const bool known = model.GetSSOVisVec2K(kMoon, moon, 0) &&
                               (target.star != nullptr
                                    ? model.GetRADecVisStar(target.star, nullptr, body, false)
                                    : model.GetSSOVisVec2K(target.id, body, 0));
            if (!known) return std::nan("");
            const double reach =
                std::asin(kMoonRadius / moon[3]) + edge * std::asin(radius / body[3]);
            return std::cos(reach) - dot(load(moon), unit(load(body)));
        };
        search::Span walk{conjunction - kWindow, conjunction + kWindow, conjunction - kWindow};
        crossings(walk, control, clearance, kBound, kOccultationStep,
                  [&](const search::Bracket& x) {
                      const double t = search::root(clearance, x, kContactPrecision).t;
                      const bool begins = x.a.f > 0;
                      contacts[begins ? (edge > 0 ? 0 : 1) : (edge > 0 ? 3 : 2)] = t;
                      return true;
                  });
        if (contacts[0] == 0) break;
    }
    return contacts;
}

}  // namespace solsys::diary
