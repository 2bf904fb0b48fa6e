#include "ephemeris/integrator/perturbers.h"

#include <algorithm>
#include <cmath>

#include "ephemeris/de/state.h"
#include "ephemeris/integrator/small_body_force.h"
#include "ephemeris/planet_states.h"
#include "solsys/kepler.h"

namespace solsys {
namespace {

constexpr double kTolerance = 1e-4;  // 1e-7 au in a century: their own masses are 1e-10
constexpr double kFirstStep = 10;    // day
constexpr double kIntegrated = 150 * kDaysPerJulianYear;  // day from the epoch, either way

constexpr short kMercuryInFile = 1, kMoonInFile = 10;

// day + offset from J2000 TDB; whole days far beyond any ephemeris, and of what is no number,
// stay within int.
Instant instant(double day, double offset) {
    constexpr double kFar = 1e8;
    const double wanted = day + offset;
    const double whole =
        std::isnan(wanted) ? kFar : std::floor(std::clamp(wanted, -kFar, kFar));
    return {kJ2000Day + static_cast<int>(whole), (day - whole) + offset};
}

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

using States = std::array<State, kCount>;

// Planets whose pull on the Sun is felt about its barycentre with Mercury; the Moon's mass
// stands with the Earth's.
constexpr std::array kSwaying{kVenus,  kEarth,  kMars,    kJupiter,
                              kSaturn, kUranus, kNeptune, kPluto};
constexpr double mass_of(MassiveBody body) {
    return kMassiveGm[body] + (body == kEarth ? kMassiveGm[kTheMoon] : 0.0);
}

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
          motion_(3 * kCount, 2, *this, kTolerance) {}

    // About the Sun, which is at `sun` from its barycentre with Mercury at that time.
    bool states(double day, const State& sun, States& out) {
        if (std::fabs(day - epoch_) > kIntegrated) {
            out = osculating(day);
            return true;
        }
        if (!started_ && !start()) return false;
        double s[6 * kCount];
        if (motion_.state_at(day - epoch_, s) != StepStatus::kOk) return false;
        for (std::size_t i = 0; i < kCount; ++i)
            out[i] = State{load(s + 3 * i), load(s + 3 * (kCount + i))} - sun;
        return true;
    }

    bool prepare(double t, std::span<const double> offsets) override {
        for (std::size_t i = 0; i < offsets.size(); ++i) {
            Node& node = nodes_[i];
            if (!owner_.planets(epoch_ + t, offsets[i], node.at)) return false;
            node.of_sun = Vec3{};
            for (const MassiveBody body : kSwaying)
                node.of_sun += attraction(mass_of(body), node.at.r[body]);
        }
        return true;
    }

    bool evaluate(int node, const double* x, const double* v, double* f) override {
        const auto& [at, of_sun] = nodes_[static_cast<std::size_t>(node)];
        std::array<Vec3, kCount> r;
        Vec3 of_sun_by_all = of_sun;
        std::array<Vec3, kCount> of_sun_by;
        for (std::size_t i = 0; i < kCount; ++i) {
            r[i] = load(x + 3 * i) - at.sun;
            of_sun_by[i] = attraction(kAsteroids[i].gm, r[i]);
            of_sun_by_all += of_sun_by[i];
        }
        for (std::size_t i = 0; i < kCount; ++i) {
            Vec3 sum = about_the_sun({r[i], load(v + 3 * i)}) - (of_sun_by_all - of_sun_by[i]) +
                       attraction(kMassiveGm[kMercury], at.r[kMercury] - r[i]);
            for (const MassiveBody body : kSwaying)
                sum += attraction(mass_of(body), at.r[body] - r[i]);
            for (std::size_t j = 0; j < kCount; ++j)
                if (j != i) sum += attraction(kAsteroids[j].gm, r[j] - r[i]);
            store(sum, f + 3 * i);
        }
        return true;
    }

  private:
    struct Node {
        MassivePositions at;
        Vec3 of_sun{};  // its acceleration by the planets
    };

    static States osculating(double day) {
        const double whole = std::floor(day);
        States out;
        for (std::size_t i = 0; i < kCount; ++i)
            out[i] = state_of(kAsteroids[i], kJ2000Day + static_cast<int>(whole), day - whole);
        return out;
    }

    bool start() {
        State sun{};
        if (!owner_.sun_sway(epoch_, 0, sun)) return false;
        const States from_sun = osculating(epoch_);
        double s[6 * kCount];
        for (std::size_t i = 0; i < kCount; ++i) {
            const State state = from_sun[i] + sun;
            store(state.r, s + 3 * i);
            store(state.v, s + 3 * (kCount + i));
        }
        started_ = motion_.start(s, kFirstStep, kFirstStep) == StepStatus::kOk;
        return started_;
    }

    Perturbers& owner_;
    double epoch_;
    std::array<Node, radau::kTerms + 1> nodes_;
    Trajectory motion_;
    bool started_ = false;
};

Perturbers::Perturbers(bool file) : use_file_(file) { start_asteroids(); }
Perturbers::~Perturbers() = default;

void Perturbers::start_asteroids() { asteroids_ = std::make_unique<Asteroids>(*this); }

bool Perturbers::renew() {
    if (file_changes_ == de_file_changes()) return false;
    start_asteroids();
    file_changes_ = de_file_changes();
    file_ = DE_EvalState{};
    return true;
}

bool Perturbers::planets(double day, double offset, MassivePositions& out) {
    std::array<Vec3, kPlanetsInFile> in_file;
    const bool from_file =
        use_file_ && de_planet_positions(file_, instant(day, offset), in_file);
    for (std::size_t body = 0; body <= kPluto; ++body) {
        if (body == kTheMoon) continue;
        if (from_file)
            out.r[body] = in_file[body < kTheMoon ? body : body - 1];
        else if (!windows_.position(static_cast<MassiveBody>(body), day, offset, out.r[body]))
            return false;
    }
    out.sun = -kMercuryShare * out.r[kMercury];
    out.r[kTheMoon] = out.earth_and_moon = out.r[kEarth];
    out.moon_known = false;
    return true;
}

bool Perturbers::all(double day, double offset, MassivePositions& out) {
    if (!planets(day, offset, out)) return false;
    States asteroids;
    if (!asteroids_->states(day + offset, {out.sun, {}}, asteroids)) return false;
    for (std::size_t i = 0; i < kCount; ++i) out.r[kCeres + i] = asteroids[i].r;
    return true;
}

bool Perturbers::place_moon(double day, double offset, MassivePositions& at) {
    if (!at.moon_known) {
        double moon[3];
        const bool in_file =
            use_file_ && de_state(file_, instant(day, offset), kMoonInFile, false, moon) == 0;
        if (in_file) at.moon_from_earth = load(moon);
        at.moon_known = in_file || windows_.position(kTheMoon, day, offset, at.moon_from_earth);
    }
    if (!at.moon_known) return false;
    at.r[kEarth] = at.earth_and_moon - kMoonShare * at.moon_from_earth;
    at.r[kTheMoon] = at.r[kEarth] + at.moon_from_earth;
    return true;
}

bool Perturbers::mercury(double day, double offset, State& out) {
    double state[6];
    if (!use_file_ || de_state(file_, instant(day, offset), kMercuryInFile, true, state) != 0)
        return windows_.state(kMercury, day, offset, out);
    out = load_state(state);
    return true;
}

bool Perturbers::sun_sway(double day, double offset, State& out) {
    State of_mercury{};
    if (!mercury(day, offset, of_mercury)) return false;
    out = -kMercuryShare * of_mercury;
    return true;
}

bool Perturbers::asteroid(MassiveBody body, double day, State& out) {
    if (body < kCeres || body > kVesta) return false;
    State sun{};
    States asteroids;
    if (!sun_sway(day, 0, sun) || !asteroids_->states(day, sun, asteroids)) return false;
    out = asteroids[body - kCeres];
    return true;
}

}  // namespace solsys
