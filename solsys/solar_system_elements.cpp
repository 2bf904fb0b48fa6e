// The tables of bodies that a host adds by their elements.
#include <algorithm>
#include <cmath>

#include "solsys/model.h"

namespace {

bool finite(std::initializer_list<double> values) {
    return std::all_of(values.begin(), values.end(), [](double x) { return std::isfinite(x); });
}

// q stands for the pericentre distance or the semi-major axis: both are positive.
bool is_orbit(double q, double e, std::initializer_list<double> others) {
    return finite({q, e}) && finite(others) && q > 0.0 && e >= 0.0;
}

bool is_orbit(const Elements& elements) {
    return is_orbit(elements.q, elements.e,
                    {elements.i, elements.node, elements.peri, elements.n, elements.M,
                     elements.epochFraction});
}

bool is_orbit(const SpacecraftRecord& record) {
    return is_orbit(
        record.q, record.e,
        {record.i, record.node, record.peri, record.n, record.M, record.epoch_fraction});
}

template <class Record>
void hold(std::unique_ptr<Record>& slot, const Record* record) {
    slot = record != nullptr ? std::make_unique<Record>(*record) : nullptr;
}

}  // namespace

bool CSWSolSys::AddAsteroid(std::int32_t number, const AsteroidRecord& record) {
    if (!is_orbit(record.elements)) return false;
    model_->elements.asteroids.replace(solsys::key_of(SSO_ASTR, number), record);
    return true;
}

bool CSWSolSys::RemoveAsteroid(std::int32_t number) {
    return model_->elements.asteroids.erase(solsys::key_of(SSO_ASTR, number));
}

void CSWSolSys::ClearAsteroids() { model_->elements.asteroids.clear(); }

const AsteroidRecord* CSWSolSys::GetAsteroid(std::int32_t number) const {
    return std::as_const(model_->elements).asteroids.find(solsys::key_of(SSO_ASTR, number));
}

bool CSWSolSys::AddComet(std::int32_t number, const CometRecord& record) {
    if (!is_orbit(record.elements)) return false;
    model_->elements.comets.replace(solsys::key_of(SSO_COMT, number), record);
    return true;
}

bool CSWSolSys::RemoveComet(std::int32_t number) {
    return model_->elements.comets.erase(solsys::key_of(SSO_COMT, number));
}

void CSWSolSys::ClearComets() { model_->elements.comets.clear(); }

const CometRecord* CSWSolSys::GetComet(std::int32_t number) const {
    return std::as_const(model_->elements).comets.find(solsys::key_of(SSO_COMT, number));
}

bool CSWSolSys::AddSpacecraft(std::int32_t number, const SpacecraftRecord* records, int count) {
    if (records == nullptr || count <= 0) return false;
    solsys::SpacecraftTrack track{{records, records + count}};
    if (!std::all_of(track.records.begin(), track.records.end(),
                     [](const SpacecraftRecord& record) { return is_orbit(record); })) {
        return false;
    }
    std::stable_sort(track.records.begin(), track.records.end(),
                     [](const SpacecraftRecord& a, const SpacecraftRecord& b) {
                         return days_between(solsys::Instant{a.epoch_day, a.epoch_fraction},
                                             {b.epoch_day, b.epoch_fraction}) > 0.0;
                     });
    model_->elements.spacecraft.replace(solsys::key_of(SSO_SCFT, number), std::move(track));
    return true;
}

bool CSWSolSys::RemoveSpacecraft(std::int32_t number) {
    return model_->elements.spacecraft.erase(solsys::key_of(SSO_SCFT, number));
}

void CSWSolSys::ClearSpacecraft() { model_->elements.spacecraft.clear(); }

bool CSWSolSys::AddUserObject(std::int32_t number, const UserObjectRecord& record) {
    const double* s = record.state;
    if (!finite({s[0], s[1], s[2], s[3], s[4], s[5], record.epoch_fraction})) return false;
    const solsys::State start = solsys::load_state(s);
    if (norm(cross(start.r, start.v)) == 0.0) return false;  // at the centre, or bound for it
    model_->elements.user_objects.replace(solsys::key_of(SSO_USCO, number), record);
    return true;
}

bool CSWSolSys::RemoveUserObject(std::int32_t number) {
    return model_->elements.user_objects.erase(solsys::key_of(SSO_USCO, number));
}

void CSWSolSys::ClearUserObjects() { model_->elements.user_objects.clear(); }

void CSWSolSys::HoldAsteroid(const tagAster_SPH_5* record) {
    hold(model_->elements.held_asteroid, record);
}

void CSWSolSys::HoldComet(const tagComet_SPH_5* record) {
    hold(model_->elements.held_comet, record);
}
