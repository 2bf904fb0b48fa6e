// How an object is lit, and the age of the Moon.
#include <cmath>

#include "frames/frame_set.h"
#include "solsys/light_time.h"
#include "solsys/magnitudes.h"
#include "solsys/positions.h"

using solsys::Instant;
using solsys::Mat3;
using solsys::State;
using solsys::Vec3;

namespace {

// Mean new Moons, from that of 2000 January 6: Meeus 1998, Astronomical Algorithms, chapter 49.
// True ones are within 0.7 day.
constexpr double kFirstNewMoon = 2451550.09766;  // JDE
constexpr double kSynodicMonth = 29.530588861;   // day
constexpr double kLunationsPerCentury = 1236.85;
constexpr double kSecularTerm = 0.00015437;  // day per century^2
constexpr double kLargestInequality = 1.0;   // day

double mean_new_moon(double lunation) {
    const double T = lunation / kLunationsPerCentury;
    return kFirstNewMoon + kSynodicMonth * lunation + kSecularTerm * T * T;
}

Instant instant_of(double jd) {
    const int day = static_cast<int>(jd);
    return {day, jd - day};
}

// Position angle of `towards` as seen at `from`, both unit vectors on the equator of date, from
// the north through east, in [0, 2 pi).
double position_angle(Vec3 from, Vec3 towards) {
    const double east = from.x * towards.y - from.y * towards.x;
    const double north = towards.z - from.z * dot(from, towards);
    const double angle = std::atan2(east, north);
    return angle < 0.0 ? angle + solsys::kTwoPi : angle;
}

double angle_between(Vec3 a, Vec3 b) { return std::atan2(norm(cross(a, b)), dot(a, b)); }

}  // namespace

class CSWSolSys::Lunations {
  public:
    explicit Lunations(CSWSolSys& system) : system_(system), model_(*system.model_) {}

    // Days since the last new Moon; 0 when there is no Moon or Earth at the instants needed.
    double age() {
        const Instant t = model_.current.now;
        if (!(model_.new_moon_before <= t.jd() && t.jd() < model_.new_moon_after) &&
            !search(t)) {
            return 0.0;
        }
        const Instant new_moon = instant_of(model_.new_moon_before);
        return days_between(new_moon, t);
    }

  private:
    bool search(Instant t) {
        const solsys::FrameSet frames =
            solsys::frames_at(t, true, model_.precession, model_.nutation);
        ecliptic_from_j2000_ =
            frames.ecl_from_tod * (frames.tod_from_mod * frames.mod_from_j2000);

        // The host's save slot is not ours to overwrite.
        const solsys::ModelInstant saved = model_.saved;
        const bool has_saved = model_.has_saved;
        const double lunation = std::floor((t.jd() - kFirstNewMoon) / kSynodicMonth);
        double before = new_moon(lunation);
        double after = new_moon(lunation + 1);
        if (before > t.jd()) {
            after = before;
            before = new_moon(lunation - 1);
        } else if (after <= t.jd()) {
            before = after;
            after = new_moon(lunation + 2);
        }
        model_.saved = saved;
        model_.has_saved = has_saved;
        if (!computable_) return false;
        model_.new_moon_before = before;
        model_.new_moon_after = after;
        return before <= t.jd() && t.jd() < after;
    }

    double new_moon(double lunation) {
        const double mean = mean_new_moon(lunation);
        const double found = system_.FindNewMoon(mean - kLargestInequality,
                                                 mean + kLargestInequality, &crossing, this);
        computable_ = computable_ && found > 0.0;
        return found;
    }

    // A function of the instant with the zeros of the difference in longitude. False position
    // answers with the left end of its bracket, and that end is the one that closes in when the
    // function is convex: the exponential makes it so, against the Moon's own inequality (a
    // change of speed of at most 0.01 rad/day^2 at a speed of 0.2 rad/day).
    static double crossing(CSWSolSys&, double jd, void* context) {
        auto& self = *static_cast<Lunations*>(context);
        double difference = 0.0;
        self.computable_ = self.computable_ && self.moon_past_sun(instant_of(jd), difference);
        if (!self.computable_) return 0.0;  // ends the search
        return std::expm1(0.5 * difference);
    }

    // Apparent ecliptic longitude of date of the Moon less that of the Sun, seen from the
    // Earth's centre, in [-pi, pi]. A body seen from the Earth at t is where it was, relative
    // to the Earth, when the light left it: light time and aberration in one, to (v/c)^2.
    bool moon_past_sun(Instant t, double& difference) const {
        const auto from_earth = [t](auto&& state_at, Vec3& out) {
            return state_at(t, out) &&
                   state_at(solsys::earlier(t, norm(out) * solsys::kLightDayPerAu), out);
        };
        double r[3];
        Vec3 moon{};
        Vec3 sun{};
        if (model_.moon == nullptr || model_.earth == nullptr) return false;
        const auto moon_at = [&](Instant when, Vec3& out) {
            if (model_.moon->GetState(when.day, when.fraction, false, r) != SS_OK) return false;
            out = solsys::load(r);
            return true;
        };
        const auto sun_at = [&](Instant when, Vec3& out) {
            if (model_.earth->ComputeState(when.day, when.fraction, false, r) != SS_OK) {
                return false;
            }
            out = -solsys::load(r);
            return true;
        };
        if (!from_earth(moon_at, moon) || !from_earth(sun_at, sun)) return false;
        moon = ecliptic_from_j2000_ * moon;
        sun = ecliptic_from_j2000_ * sun;
        difference =
            std::atan2(sun.x * moon.y - sun.y * moon.x, sun.x * moon.x + sun.y * moon.y);
        return true;
    }

    CSWSolSys& system_;
    Model& model_;
    Mat3 ecliptic_from_j2000_ = solsys::kIdentity;
    bool computable_ = true;
};

bool CSWSolSys::PhaseElongation(const SSO_ID& id, double* phase_angle, double* illuminated,
                                double* elongation, double* bright_limb, double* age) {
    const auto answer = [](double* out, double value) {
        if (out != nullptr) *out = value;
    };
    for (double* out : {phase_angle, illuminated, elongation, bright_limb, age})
        answer(out, 0.0);

    Positions positions(*this);
    const Instant now = model_->current.now;
    solsys::ApparentPlace body;
    solsys::ApparentPlace sun;
    const bool known = positions.apparent(positions.find(id), 0.0, body) &&
                       positions.apparent(positions.find(SSO_PLNT, 10), 0.0, sun);
    model_->current.now = now;
    if (!known || body.distance == 0.0) return false;
    if (id.type == SSO_PLNT && id.number == 10) {
        answer(illuminated, 1.0);
        return true;
    }

    // The angle at the body between the ways to the Sun and to the observer.
    const Vec3 heliocentric = model_->current.observer.heliocentric.r + body.path;
    const double phase = angle_between(heliocentric, body.path);
    answer(phase_angle, phase);
    answer(illuminated, calcVisibleDiskPart(phase));

    const Vec3 ecliptic_north = model_->current.frames.ecl_from_j2000.r2;
    const bool east = dot(cross(sun.direction, body.direction), ecliptic_north) >= 0.0;
    const double distance = angle_between(sun.direction, body.direction);
    answer(elongation, east ? distance : -distance);

    const Mat3& cur_from_j2000 = model_->current.frames.cur_from_j2000;
    answer(bright_limb, position_angle(unit(cur_from_j2000 * body.direction),
                                       cur_from_j2000 * sun.direction));

    if (age != nullptr && id.type == SSO_MOON && id.number == 301) {
        *age = Lunations(*this).age();
    }
    return true;
}
