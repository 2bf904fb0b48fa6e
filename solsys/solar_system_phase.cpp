// How an object is lit, and the age of the Moon.
#include "core/angles.h"
#include "ephemeris/planet_states.h"
#include "frames/frame_set.h"
#include "solsys/magnitudes.h"
#include "solsys/model.h"
#include "solsys/moon_age.h"
#include "solsys/pipeline.h"

using solsys::Instant;
using solsys::Mat3;
using solsys::Vec3;

namespace {

// Days since the last new Moon; 0 when there is no Moon or Earth at the instants needed. Only
// the first query of a lunation searches.
double age_of_moon(CSWSolSys::Model& model) {
    const Instant t = model.current.now;
    const SS_Object* sun = model.bodies.find(solsys::kSunKey);
    const std::uint32_t source = sun != nullptr ? sun->SourceChanges() : 0;
    solsys::KeptLunation& kept = model.lunation;
    if (!(kept.source == source && kept.before <= t.jd() && t.jd() < kept.after)) {
        const solsys::FrameSet frames = model.frames_for(t, true);
        const auto found = new_moons_around(
            model.bodies, t,
            frames.ecl_from_tod * (frames.tod_from_mod * frames.mod_from_j2000));
        if (!found) return 0.0;
        kept = {found->before, found->after, source};
    }
    return days_between(solsys::split(kept.before), t);
}

struct Sights {
    solsys::ApparentPlace body, sun;
};

// False when one of them cannot be computed, and for an observer at the body's very centre.
bool see(const CSWSolSys::Model& m, const SSO_ID& id, Sights& out) {
    const auto seen = [&m](solsys::BodyKey body, solsys::ApparentPlace& place) {
        return apparent(m.bodies, m.current.observer, find_source(m.bodies, body),
                        m.current.now, 0.0, place);
    };
    return seen(solsys::body_key(id), out.body) && seen(solsys::kSunKey, out.sun) &&
           out.body.distance != 0.0;
}

}  // namespace

bool CSWSolSys::PhaseElongation(const SSO_ID& id, double* phase_angle, double* illuminated,
                                double* elongation, double* bright_limb, double* age) {
    const auto answer = [](double* out, double value) {
        if (out != nullptr) *out = value;
    };
    for (double* out : {phase_angle, illuminated, elongation, bright_limb, age})
        answer(out, 0.0);

    Sights sights;
    if (!see(*model_, id, sights)) return false;
    const auto& [body, sun] = sights;
    if (solsys::body_key(id) == solsys::kSunKey) {
        answer(illuminated, 1.0);
        return true;
    }

    // The angle at the body between the ways to the Sun and to the observer.
    const solsys::ModelInstant& current = model_->current;
    const Vec3 heliocentric = current.observer.place.heliocentric.r + body.path;
    const double phase = solsys::separation(heliocentric, body.path);
    answer(phase_angle, phase);
    answer(illuminated, calcVisibleDiskPart(phase));

    const Vec3 ecliptic_north = current.frames.ecl_from_j2000.r2;
    const bool east = dot(cross(sun.direction, body.direction), ecliptic_north) >= 0.0;
    const double distance = solsys::separation(sun.direction, body.direction);
    answer(elongation, east ? distance : -distance);

    const Mat3& cur_from_j2000 = current.frames.cur_from_j2000;
    answer(bright_limb, solsys::position_angle(unit(cur_from_j2000 * body.direction),
                                               cur_from_j2000 * sun.direction));

    if (age != nullptr && id.type == SSO_MOON && id.number == solsys::kMoonNumber)
        *age = age_of_moon(*model_);
    return true;
}
