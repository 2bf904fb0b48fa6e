#include "ephemeris/integrator/perturbers.h"

#include <cmath>

#include "ephemeris/integrator/small_body_force.h"
#include "solsys/kepler.h"

namespace solsys {
namespace {

constexpr double kTolerance = 1e-4;  // 1e-7 au in a century: their own masses are 1e-10
constexpr double kFirstStep = 10;    // day
constexpr double kIntegrated = 150 * kDaysPerJulianYear;  // day from the epoch, either way

struct AsteroidRow {
    int number;
    double epoch_jd, a, e, i_deg, node_deg, peri_deg, mean_anomaly_deg, gm, radius_km;
};
constexpr AsteroidRow kAsteroids[] = {
#include "massive_asteroids.inc"
};
constexpr std::size_t kCount = std::size(kAsteroids);
static_assert(kCount == kVesta - kCeres + 1 && kAsteroids[0].gm == kMassiveGm[kCeres] &&
              kAsteroids[2].gm == kMassiveGm[kVesta]);

// J2000 ecliptic to equator, by the obliquity of the elements.
const Mat3 kEquatorFromEcliptic = rotate_x(-84381.448 * kArcsec);

State state_of(const AsteroidRow& row, int day, double fraction) {
    const Elements elements{row.a,
                            row.e,
                            row.i_deg * kDegree,
                            row.node_deg * kDegree,
                            row.peri_deg * kDegree,
                            std::sqrt(kGaussSquared / row.a) / row.a,
                            row.mean_anomaly_deg * kDegree,
                            0.5,
                            static_cast<int>(row.epoch_jd - 0.5)};
    double r[3], v[3];
    Kepler(1, kGaussSquared, day, fraction, elements, r, v);
    return kEquatorFromEcliptic * State{load(r), load(v)};
}

}  // namespace

// The three together, attracted by the planets and each other.
class Perturbers::Asteroids final : public Force {
  public:
    explicit Asteroids(Perturbers& owner)
        : owner_(owner),
          epoch_(kAsteroids[0].epoch_jd - kJ2000Day),
          motion_(3 * kCount, 2, *this, kTolerance) {
        double start[6 * kCount];
        osculating(epoch_, start);
        motion_.start(start, kFirstStep, kFirstStep);
    }

    bool states(double day, double* out) {
        if (std::fabs(day - epoch_) > kIntegrated) return osculating(day, out);
        if (day == asked_) return std::copy_n(kept_.begin(), kept_.size(), out), true;
        if (motion_.state_at(day - epoch_, kept_.data()) != StepStatus::kOk) {
            asked_ = HUGE_VAL;
            return false;
        }
        asked_ = day;
        std::copy_n(kept_.begin(), kept_.size(), out);
        return true;
    }

    bool prepare(double t, std::span<const double> offsets) override {
        for (std::size_t node = 0; node < offsets.size(); ++node)
            if (!owner_.planets(epoch_ + t, offsets[node], nodes_[node])) return false;
        return true;
    }

    bool evaluate(int node, const double* x, const double* v, double* f) override {
        MassivePositions& at = nodes_[static_cast<std::size_t>(node)];
        for (std::size_t i = 0; i < kCount; ++i) at.r[kCeres + i] = load(x + 3 * i);
        for (std::size_t i = 0; i < kCount; ++i) {
            Vec3 acceleration = about_the_sun({load(x + 3 * i), load(v + 3 * i)});
            for (std::size_t body = 0; body < kTheSun; ++body) {
                if (body == kTheMoon || body == kCeres + i) continue;
                const double gm = body == kEarth ? kMassiveGm[kEarth] + kMassiveGm[kTheMoon]
                                                 : kMassiveGm[body];
                acceleration +=
                    attraction(gm, at.r[body] - load(x + 3 * i)) - attraction(gm, at.r[body]);
            }
            store(acceleration, f + 3 * i);
        }
        return true;
    }

  private:
    static bool osculating(double day, double* out) {
        const double whole = std::floor(day);
        for (std::size_t i = 0; i < kCount; ++i) {
            const State state =
                state_of(kAsteroids[i], kJ2000Day + static_cast<int>(whole), day - whole);
            store(state.r, out + 3 * i);
            store(state.v, out + 3 * (kCount + i));
        }
        return true;
    }

    Perturbers& owner_;
    double epoch_;
    std::array<MassivePositions, radau::kTerms + 1> nodes_;
    Trajectory motion_;
    std::array<double, 6 * kCount> kept_{};
    double asked_ = HUGE_VAL;
};

Perturbers::Perturbers(bool file) : windows_(file) { start_asteroids(); }
Perturbers::~Perturbers() = default;

void Perturbers::start_asteroids() { asteroids_ = std::make_unique<Asteroids>(*this); }

bool Perturbers::renew() {
    if (!windows_.renew()) return false;
    start_asteroids();
    return true;
}

bool Perturbers::planets(double day, double offset, MassivePositions& out) {
    for (std::size_t body = 0; body <= kPluto; ++body) {
        if (body == kTheMoon) continue;
        if (!windows_.position(static_cast<MassiveBody>(body), day, offset, out.r[body]))
            return false;
    }
    out.r[kTheMoon] = out.r[kEarth];
    out.moon_known = false;
    return true;
}

bool Perturbers::all(double day, double offset, MassivePositions& out) {
    if (!planets(day, offset, out)) return false;
    double states[6 * kCount];
    if (!asteroids_->states(day + offset, states)) return false;
    for (std::size_t i = 0; i < kCount; ++i) out.r[kCeres + i] = load(states + 3 * i);
    return true;
}

bool Perturbers::place_moon(double day, double offset, MassivePositions& at) {
    if (!at.moon_known)
        at.moon_known = windows_.position(kTheMoon, day, offset, at.moon_from_earth);
    if (at.moon_known) at.r[kTheMoon] = at.r[kEarth] + at.moon_from_earth;
    return at.moon_known;
}

bool Perturbers::asteroid(MassiveBody body, double day, State& out) {
    if (body < kCeres || body > kVesta) return false;
    double states[6 * kCount];
    if (!asteroids_->states(day, states)) return false;
    const std::size_t i = body - kCeres;
    out = {load(states + 3 * i), load(states + 3 * (kCount + i))};
    return true;
}

}  // namespace solsys
