// The tables of bodies that a host adds by their elements.
#include "core/answer_or.h"
#include "solsys/model.h"

using solsys::key_of;

namespace {

// Whether they are one orbit; a mean motion of 0 stands for the one that was derived.
bool same(const Elements& a, const Elements& b) {
    return a.q == b.q && a.e == b.e && a.i == b.i && a.node == b.node && a.peri == b.peri &&
           (a.n == b.n || b.n == 0) && a.M == b.M && a.epochFraction == b.epochFraction &&
           a.epochDay == b.epochDay;
}

template <class Record>
bool hold(std::unique_ptr<Record>& slot, const Record* record) {
    return solsys::answer_or(false, [&] {
        slot = record != nullptr ? std::make_unique<Record>(*record) : nullptr;
        return true;
    });
}

template <class... Record>
bool add_record(solsys::ElementTables& tables, std::int32_t number, const Record&... record) {
    return solsys::answer_or(false, [&] { return solsys::add(tables, number, record...); });
}

}  // namespace

bool CSWSolSys::AddAsteroid(std::int32_t number, const AsteroidRecord& record) {
    const AsteroidRecord* old = GetAsteroid(number);
    const bool another = old != nullptr && !same(old->elements, record.elements);
    if (!add_record(model_->bodies.elements, number, record)) return false;
    if (another) model_->bodies.integrated.forget(SSO_ASTR, number);
    return true;
}

bool CSWSolSys::RemoveAsteroid(std::int32_t number) {
    model_->bodies.integrated.forget(SSO_ASTR, number);
    return model_->bodies.elements.asteroids.erase(key_of(SSO_ASTR, number));
}

void CSWSolSys::ClearAsteroids() {
    model_->bodies.integrated.forget(SSO_ASTR);
    model_->bodies.elements.asteroids.clear();
}

const AsteroidRecord* CSWSolSys::GetAsteroid(std::int32_t number) const {
    return model_->bodies.elements.asteroids.find(key_of(SSO_ASTR, number));
}

bool CSWSolSys::AddComet(std::int32_t number, const CometRecord& record) {
    const CometRecord* old = GetComet(number);
    const bool another = old != nullptr && !same(old->elements, record.elements);
    if (!add_record(model_->bodies.elements, number, record)) return false;
    if (another) model_->bodies.integrated.forget(SSO_COMT, number);
    return true;
}

bool CSWSolSys::RemoveComet(std::int32_t number) {
    model_->bodies.integrated.forget(SSO_COMT, number);
    return model_->bodies.elements.comets.erase(key_of(SSO_COMT, number));
}

void CSWSolSys::ClearComets() {
    model_->bodies.integrated.forget(SSO_COMT);
    model_->bodies.elements.comets.clear();
}

const CometRecord* CSWSolSys::GetComet(std::int32_t number) const {
    return model_->bodies.elements.comets.find(key_of(SSO_COMT, number));
}

bool CSWSolSys::AddSpacecraft(std::int32_t number, const SpacecraftRecord* records, int count) {
    return add_record(model_->bodies.elements, number, records, count);
}

bool CSWSolSys::RemoveSpacecraft(std::int32_t number) {
    return remove_spacecraft(model_->bodies.elements, number);
}

void CSWSolSys::ClearSpacecraft() { clear_spacecraft(model_->bodies.elements); }

bool CSWSolSys::AddUserObject(std::int32_t number, const UserObjectRecord& record) {
    return add_record(model_->bodies.elements, number, record);
}

bool CSWSolSys::RemoveUserObject(std::int32_t number) {
    return remove_user_object(model_->bodies.elements, number);
}

void CSWSolSys::ClearUserObjects() { clear_user_objects(model_->bodies.elements); }

bool CSWSolSys::HoldAsteroid(const tagAster_SPH_5* record) {
    return hold(model_->bodies.elements.held_asteroid, record);
}

bool CSWSolSys::HoldComet(const tagComet_SPH_5* record) {
    return hold(model_->bodies.elements.held_comet, record);
}
