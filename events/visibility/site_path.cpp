#include "events/visibility/site_path.h"

#include <algorithm>
#include <cmath>

#include "core/constants.h"
#include "events/search/span.h"
#include "frames/sidereal_time.h"
#include "solsys/star_place.h"

namespace solsys::visibility {
namespace {

constexpr double kBeyondParallax = 1e9;  // au: of stars

// Weights of the values at -2 .. 3 for a place x between 0 and 1.
std::array<double, 6> lagrange(double x) {
    const double a = x + 2, b = x + 1, c = x, d = x - 1, e = x - 2, f = x - 3;
    const double ab = a * b, cd = c * d, ef = e * f;
    return {-b * cd * ef / 120, a * cd * ef / 24,  -ab * d * ef / 12,
            ab * c * ef / 12,   -ab * cd * f / 24, ab * cd * e / 120};
}

Vec3 turned(Vec3 v, double c, double s) { return {c * v.x + s * v.y, c * v.y - s * v.x, v.z}; }

double lorentz_reciprocal(Vec3 beta) { return std::sqrt(1 - dot(beta, beta)); }

double mean_sidereal_time_at(double jd_tt) { return mean_sidereal_time(search::split(jd_tt)); }

State observer_of(const CSWSolSys& model) {
    double s[6];
    model.GetObserverVec2K(s);
    return load_state(s);
}

OBSERVER centre_of_earth() {
    OBSERVER o;
    o.kind = LOCATION_BODY_FIXED;
    o.body_type = SSO_PLNT;
    o.body_number = 3;
    return o;
}

}  // namespace

SitePath::SitePath(CSWSolSys& model, const SSO_ID& id, double jd_tt, double h)
    : sky_(model), id_(id), site_(model.GetObserver()), start_(jd_tt), h_(h) {
    const OBSERVER centre = centre_of_earth();
    sky_.at(jd_tt);
    const Mat3 date_from_j2000 = load_matrix(model.GetMtrxEq2K_EqCur());
    double matrix[9];
    model.GetLocal2CelestialMtrx(matrix);
    horizon_from_date_ = transpose(load_matrix(matrix));
    sidereal_at_start_ = sky_.sidereal_time() - site_.location[1];
    const State at_site = observer_of(model);
    model.SetObserver(&centre);
    const State relative = date_from_j2000 * (at_site - observer_of(model));
    offset_ = relative.r;
    spin_ = relative.v;
}

void SitePath::set_h(double h) {
    h_ = h;
    for (Node& n : nodes_) n.asked = false;
}

const SitePath::Node& SitePath::node(long index) {
    Node& n = nodes_[static_cast<unsigned long>(index) % nodes_.size()];
    if (n.asked && n.index == index) return n;
    n = {index, true, {search::kNone, search::kNone, search::kNone}, {}, 0};
    CSWSolSys& model = sky_.model();
    if (model.GetObserver().kind != LOCATION_BODY_FIXED) {
        const OBSERVER centre = centre_of_earth();
        model.SetObserver(&centre);
    }
    const double jd = start_ + static_cast<double>(index) * h_;
    if (!sky_.at(jd)) return n;
    const auto seen = sky_.direction(id_);
    if (!seen) return n;
    const Mat3 date_from_j2000 = load_matrix(model.GetMtrxEq2K_EqCur());
    const Vec3 velocity = observer_of(model).v;
    const Vec3 beta = kLightDayPerAu * velocity;
    // Seen with the opposite velocity the object is where it is without aberration.
    const Vec3 path = aberrated(unit(seen->u), -beta, lorentz_reciprocal(beta));
    const double distance = seen->distance > 0 ? seen->distance : kBeyondParallax;
    n.path = distance * (date_from_j2000 * path);
    n.velocity = date_from_j2000 * velocity;
    n.equinoxes = std::remainder(sky_.sidereal_time() - mean_sidereal_time_at(jd), kTwoPi);
    return n;
}

std::array<const SitePath::Node*, SitePath::kNodes> SitePath::around(double jd_tt, double& x) {
    const double steps = (jd_tt - start_) / h_;
    const double whole = std::floor(steps);
    x = steps - whole;
    const long first = static_cast<long>(whole) - 2;
    std::array<const Node*, kNodes> six{};
    for (int i = 0; i < kNodes; ++i) six[static_cast<unsigned>(i)] = &node(first + i);
    return six;
}

SitePath::Look SitePath::at(double jd_tt) {
    double x = 0;
    const auto six = around(jd_tt, x);
    const auto weights = lagrange(x);
    Vec3 path{};
    Vec3 velocity{};
    double equinoxes = 0;
    for (unsigned i = 0; i < kNodes; ++i) {
        path += weights[i] * six[i]->path;
        velocity += weights[i] * six[i]->velocity;
        equinoxes += weights[i] * six[i]->equinoxes;
    }
    // Back by the turn of the Earth since the start, where the site's vectors stand.
    const double turn = mean_sidereal_time_at(jd_tt) + equinoxes - sidereal_at_start_;
    const double c = std::cos(turn);
    const double s = std::sin(turn);
    const Vec3 geocentric = turned(path, c, s);
    const Vec3 earth = turned(velocity, c, s);
    Vec3 seen = geocentric - offset_;
    // The light that comes to the site left the moving object at another time than the light
    // that comes to the Earth's centre.
    const double sooner = (norm(geocentric) - norm(seen)) * kLightDayPerAu;
    const Vec3 own = turned((1 / h_) * (six[3]->path - six[2]->path), c, s);
    seen += sooner * (earth + own);
    const double distance = norm(seen);
    const Vec3 beta = kLightDayPerAu * (earth + spin_);
    const Vec3 u = aberrated((1 / distance) * seen, beta, lorentz_reciprocal(beta));
    return {horizon_from_date_ * u, distance};
}

SitePath::Motion SitePath::motion(double jd_tt) {
    double x = 0;
    const auto six = around(jd_tt, x);
    Motion m{norm(six[0]->path), 0, 0, 0};
    for (unsigned i = 1; i < kNodes; ++i) {
        m.distance = std::min(m.distance, norm(six[i]->path));
        const Vec3 step = six[i]->path - six[i - 1]->path;
        m.speed = std::max(m.speed, norm(step) / h_);
        if (i < 2) continue;
        const Vec3 bend = step - (six[i - 1]->path - six[i - 2]->path);
        m.acceleration = std::max(m.acceleration, norm(bend) / (h_ * h_));
    }
    // A sixth difference is about as large as a fifth where h is fit to be doubled, and the
    // middle of the six is off by 5/1024 of it.
    const Vec3 fifth = six[5]->path - six[0]->path + 5 * (six[1]->path - six[4]->path) +
                       10 * (six[3]->path - six[2]->path);
    m.error = 0.01 * norm(fifth) / m.distance;
    return m;
}

}  // namespace solsys::visibility
