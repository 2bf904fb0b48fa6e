#include "solsys/integrated_objects.h"

#include <cmath>

#include "core/answer_or.h"
#include "solsys/model.h"
#include "solsys/states.h"

namespace solsys {

const Elements* IntegratedObjects::elements(std::uint64_t key) const {
    if (const AsteroidRecord* record = asteroids.find(key)) return &record->elements;
    const CometRecord* record = comets.find(key);
    return record != nullptr ? &record->elements : nullptr;
}

IntegratedMotion* IntegratedObjects::motion(std::uint64_t key) const {
    const auto* found = motions.find(key);
    return found != nullptr ? found->get() : nullptr;
}

void IntegratedObjects::forget(std::int32_t type) { motions.erase_type(type); }

const std::shared_ptr<Perturbers>& IntegratedObjects::shared_perturbers() const {
    if (!perturbers) perturbers = std::make_shared<Perturbers>(true);
    return perturbers;
}

void IntegratedObjects::begin(std::uint64_t key, MassiveBody centre, Instant epoch,
                              const State& start, const SmallForces& forces) {
    const IntegratedMotion* present = motion(key);
    if (present != nullptr && present->starts_as(centre, epoch, start, forces)) return;
    motions.replace(key, std::make_unique<IntegratedMotion>(shared_perturbers(), centre, epoch,
                                                            start, forces));
}

Vec3 IntegratedObjects::up_from(std::int32_t centre_type, std::int32_t centre_number, Instant t,
                                const State& state) const {
    const auto massive = massive_body(centre_type, centre_number);
    if (!massive) return state.r;
    return answer_or(state.r, [&] {
        shared_perturbers()->renew();
        const auto down = acceleration(*perturbers, *massive, t, state);
        return down ? -norm(state.r) * unit(*down) : state.r;
    });
}

std::optional<MassiveBody> massive_body(std::int32_t type, std::int32_t number) {
    if (type == SSO_MOON && number == 301) return kTheMoon;
    if (type != SSO_PLNT) return std::nullopt;
    if (number == 10) return kTheSun;
    if (number < 1 || number > 9) return std::nullopt;
    return static_cast<MassiveBody>(number <= 3 ? number - 1 : number);
}

}  // namespace solsys

namespace {

using solsys::Instant;
using solsys::key_of;
using solsys::State;

// The heliocentric state at the epoch, J2000 equator.
bool state_at_epoch(const Elements& elements, bool comet, const solsys::Mat3& ecl2k_from_j2000,
                    State& out) {
    double r[3], v[3];
    const bool solved = comet ? KeplerForIntegr(1, solsys::kSunGm, elements.epochDay,
                                                elements.epochFraction, elements, r, v)
                              : Kepler(1, solsys::kSunGm, elements.epochDay,
                                       elements.epochFraction, elements, r, v);
    out = transpose_times(ecl2k_from_j2000, State{solsys::load(r), solsys::load(v)});
    return solved && std::isfinite(dot(out.r, out.r) + dot(out.v, out.v));
}

bool begin(solsys::Bodies& bodies, std::uint64_t key, const Elements& elements,
           const SmallForces& forces) {
    const std::int32_t type = solsys::type_of(key);
    const bool comet = type == SSO_COMT || type == SSO_FCOM;
    State start{};
    if (!state_at_epoch(elements, comet, bodies.ecl2k_from_j2000, start)) return false;
    bodies.integrated.begin(key, solsys::kTheSun, {elements.epochDay, elements.epochFraction},
                            start, forces);
    return true;
}

// A record of its own kind, its mean motion derived where it has none.
template <class Record>
bool add(solsys::Bodies& bodies, solsys::FlatTable<Record>& table, std::uint64_t key,
         Record record, const SmallForces& forces) {
    Elements& elements = record.elements;
    if (!solsys::is_orbit(elements)) return false;
    if (elements.n == 0)
        elements.n = solsys::mean_motion(elements.q, elements.e, solsys::kSunGm);
    return solsys::answer_or(false, [&] {
        table.make_room();
        if (!begin(bodies, key, elements, forces)) return false;
        table.replace(key, record);
        return true;
    });
}

}  // namespace

bool CSWSolSys::AddIntegratedAsteroid(std::int32_t number, const AsteroidRecord& record,
                                      const SmallForces& forces) {
    solsys::Bodies& bodies = model_->bodies;
    return add(bodies, bodies.integrated.asteroids, key_of(SSO_FAST, number), record, forces);
}

bool CSWSolSys::AddIntegratedComet(std::int32_t number, const CometRecord& record,
                                   const SmallForces& forces) {
    solsys::Bodies& bodies = model_->bodies;
    return add(bodies, bodies.integrated.comets, key_of(SSO_FCOM, number), record, forces);
}

bool CSWSolSys::AddIntegratedUserObject(std::int32_t number, const UserObjectRecord& record,
                                        const SmallForces& forces) {
    if (!solsys::is_orbit(record)) return false;
    solsys::Bodies& bodies = model_->bodies;
    const std::uint64_t key = key_of(SSO_FSCO, number);
    const auto centre = solsys::massive_body(record.central_type, record.central_number);
    return solsys::answer_or(false, [&] {
        bodies.integrated.user_objects.make_room();
        if (centre) {
            bodies.integrated.begin(key, *centre, {record.epoch_day, record.epoch_fraction},
                                    start_state(bodies, record), forces);
        } else {
            bodies.integrated.motions.erase(key);  // two bodies it stays
        }
        bodies.integrated.user_objects.replace(key, record);
        return true;
    });
}

bool CSWSolSys::SetIntegrated(const SSO_ID& id, bool integrated, const SmallForces& forces) {
    solsys::Bodies& bodies = model_->bodies;
    const std::uint64_t key = key_of(id);
    if (id.type != SSO_ASTR && id.type != SSO_COMT) return false;
    if (!integrated) return bodies.integrated.motions.erase(key);
    const Elements* elements = nullptr;
    if (const AsteroidRecord* asteroid = bodies.elements.asteroids.find(key))
        elements = &asteroid->elements;
    else if (const CometRecord* comet = bodies.elements.comets.find(key))
        elements = &comet->elements;
    return elements != nullptr &&
           solsys::answer_or(false, [&] { return begin(bodies, key, *elements, forces); });
}

bool CSWSolSys::IsIntegrated(const SSO_ID& id) const {
    const solsys::IntegratedMotion* motion = model_->bodies.integrated.motion(key_of(id));
    return motion != nullptr && motion->serves();
}

void CSWSolSys::SetIntegrCallBack(bool (*callback)(double done, void* context), void* context) {
    solsys::IntegratedObjects& integrated = model_->bodies.integrated;
    integrated.progress = nullptr;
    if (callback != nullptr)
        integrated.progress = [=](double done) { return callback(done, context); };
    for (const auto& [key, motion] : integrated.motions.entries()) motion->take_up();
}

bool CSWSolSys::RemoveIntegratedAsteroid(std::int32_t number) {
    model_->bodies.integrated.forget(SSO_FAST, number);
    return model_->bodies.integrated.asteroids.erase(key_of(SSO_FAST, number));
}

bool CSWSolSys::RemoveIntegratedComet(std::int32_t number) {
    model_->bodies.integrated.forget(SSO_FCOM, number);
    return model_->bodies.integrated.comets.erase(key_of(SSO_FCOM, number));
}

bool CSWSolSys::RemoveIntegratedUserObject(std::int32_t number) {
    model_->bodies.integrated.forget(SSO_FSCO, number);
    return model_->bodies.integrated.user_objects.erase(key_of(SSO_FSCO, number));
}

void CSWSolSys::ClearIntegratedAsteroids() {
    model_->bodies.integrated.forget(SSO_FAST);
    model_->bodies.integrated.asteroids.clear();
}

void CSWSolSys::ClearIntegratedComets() {
    model_->bodies.integrated.forget(SSO_FCOM);
    model_->bodies.integrated.comets.clear();
}

void CSWSolSys::ClearIntegratedUserObjects() {
    model_->bodies.integrated.forget(SSO_FSCO);
    model_->bodies.integrated.user_objects.clear();
}

const AsteroidRecord* CSWSolSys::GetIntegratedAsteroid(std::int32_t number) const {
    return std::as_const(model_->bodies.integrated).asteroids.find(key_of(SSO_FAST, number));
}

const CometRecord* CSWSolSys::GetIntegratedComet(std::int32_t number) const {
    return std::as_const(model_->bodies.integrated).comets.find(key_of(SSO_FCOM, number));
}

const UserObjectRecord* CSWSolSys::GetIntegratedUserObject(std::int32_t number) const {
    return std::as_const(model_->bodies.integrated).user_objects.find(key_of(SSO_FSCO, number));
}
