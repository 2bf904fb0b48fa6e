#include "events/conjunctions/pair.h"

#include <cmath>
#include <limits>
#include <utility>

#include "core/constants.h"

namespace solsys::conjunctions {

namespace {

const SSO_ID kSun{SSO_PLNT, 10};
const SSO_ID kMoon{SSO_MOON, 301};

constexpr double kNone = std::numeric_limits<double>::quiet_NaN();

double angle_of(double cosine) {
    if (cosine >= 1) return 0;
    if (cosine <= -1) return kPi;
    return std::acos(cosine);
}

bool apparent(CSWSolSys& model, const SSO_ID& id, Vec3& direction) {
    double place[4];
    if (!model.GetSSOVisVec2K(id, place, 0)) return false;
    direction = load(place);
    return true;
}

}  // namespace

bool BodyPair::has_moon() const { return first == kMoon || second == kMoon; }

BodyPair ordered(const SSO_ID& a, const SSO_ID& b) {
    if (b == kMoon) return {b, a};
    if (a.type == SSO_PLNT && b.type == SSO_PLNT &&
        (b == kSun || (!(a == kSun) && b.number < a.number))) {
        return {b, a};
    }
    return {a, b};
}

double angle_about_pole(Vec3 first, Vec3 second) {
    const Vec3 a = unit({first.x, first.y, 0});
    const Vec3 b = unit({second.x, second.y, 0});
    const double angle = angle_of(dot(a, b));
    return b.x * a.y - a.x * b.y < 0 ? -angle : angle;
}

double difference(CSWSolSys& model, const BodyPair& pair, bool ecliptic, double jd_tt) {
    model.UpdateSys(0, jd_tt);
    Vec3 first{};
    Vec3 second{};
    if (!apparent(model, pair.first, first) || !apparent(model, pair.second, second)) {
        return kNone;
    }
    const Mat3 of_date =
        load_matrix(ecliptic ? model.GetMtrxEq2K_EclCur() : model.GetMtrxEq2K_EqCur());
    return angle_about_pole(of_date * first, of_date * second);
}

double separation(CSWSolSys& model, const BodyPair& pair) {
    Vec3 first{};
    Vec3 second{};
    if (!apparent(model, pair.first, first) || !apparent(model, pair.second, second)) {
        return kNone;
    }
    return angle_of(dot(unit(first), unit(second)));
}

}  // namespace solsys::conjunctions
