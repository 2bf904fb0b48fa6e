// Conjunctions of two objects in right ascension.
#include <cmath>

#include "events/diary/local_occultation.h"
#include "events/diary/motion_bounds.h"
#include "events/diary/quantities.h"
#include "events/diary/search.h"

using solsys::diary::Circle;
using solsys::diary::Diary;
using solsys::diary::Difference;
using solsys::diary::GeocentricSky;
using solsys::diary::kMoon;
using solsys::diary::MotionBounds;
using solsys::diary::Target;

namespace {

// Beyond this angle at conjunction no site sees the Moon cover the other one: the closest
// approach is at least 0.86 of it, parallax and disk are at most 1.3 degrees.
constexpr double kConjunctionReach = 0.03;  // rad

// Whether the model knows the object: it computes the place of the Sun for asteroids and comets
// that it does not hold.
bool known(const CSWSolSys& model, const Target& target) {
    if (target.star != nullptr) return true;
    const SSO_ID& id = target.id;
    switch (id.type) {
        case SSO_ASTR:
            return model.GetAsteroid(id.number) != nullptr;
        case SSO_COMT:
            return model.GetComet(id.number) != nullptr;
        case SSO_FAST:
        case SSO_FCOM:
            return false;
        default:
            return model.CheckSSO(&id) || model.GetStar(id) != nullptr;
    }
}

}  // namespace

bool Diary::find_conjunctions(const Target& first, const Target& second, std::int32_t kind) {
    if (!known(*model, first) || !known(*model, second)) return true;
    GeocentricSky sky(*model);
    const auto sine = [&](double t) {
        return difference_at(sky, first, second, Circle::kEquator, t).sine;
    };
    const MotionBounds a = bounds_of(first);
    const MotionBounds b = bounds_of(second);
    const double bound = solsys::diary::sine_bound(a.ra1, a.ra2, b.ra1, b.ra2);
    return zeros(sine, bound, 1, [&](double t, bool) {
        const Difference d = difference_at(sky, first, second, Circle::kEquator, t);
        if (d.cosine < 0) return true;  // half a turn apart
        SKYEVENT_BODY detail = body_detail(sky, t, first, &second);
        const bool moon_first = first.id == kMoon;
        const bool near =
            detail.separation < kConjunctionReach && (moon_first || second.id == kMoon);
        if (near && local && has_site) {
            const auto contacts = solsys::diary::occultation_near(
                *model, site_in_au(), moon_first ? second : first, t);
            for (int i = 0; i < 4; ++i)
                if (contacts[i] != 0)
                    detail.contact[i] = solsys::search::ut_from_tt(contacts[i]);
            model->SetObserver(&geocentre);
        }
        return add(t, kind, detail);
    });
}
