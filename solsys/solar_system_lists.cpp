// Which bodies a model holds, and what they go round.
#include "solsys/model.h"
#include "solsys/spacecraft_track.h"

namespace {

using solsys::FlatTable;

constexpr std::int32_t kAllTypes = 0;

template <class Value>
void append(const FlatTable<Value>& table, std::int32_t wanted, std::vector<SSO_ID>* list) {
    for (const auto& [key, value] : table.entries()) {
        const std::int32_t type = solsys::type_of(key);
        if (wanted == kAllTypes || wanted == type)
            list->emplace_back(type, solsys::number_of(key));
    }
}

template <class Record>
SSO_ID centre_of(const Record* record) {
    return record != nullptr ? SSO_ID(record->central_type, record->central_number)
                             : SSO_ID(-1, -1);
}

int size_of(const std::vector<SSO_ID>& list) { return static_cast<int>(list.size()); }

}  // namespace

int CSWSolSys::GetFullList(std::vector<SSO_ID>* list) const {
    // The tables in the order of their type codes: astr, comt, moon and plnt, scft, uSCO.
    const Model& m = *model_;
    append(m.elements.asteroids, kAllTypes, list);
    append(m.elements.comets, kAllTypes, list);
    append(m.objects, kAllTypes, list);
    append(m.elements.spacecraft, kAllTypes, list);
    append(m.elements.user_objects, kAllTypes, list);
    return size_of(*list);
}

int CSWSolSys::GetPlanetsList(std::vector<SSO_ID>* list) const {
    append(model_->objects, SSO_PLNT, list);
    return size_of(*list);
}

int CSWSolSys::GetMoonsList(std::vector<SSO_ID>* list) const {
    append(model_->objects, SSO_MOON, list);
    return size_of(*list);
}

int CSWSolSys::GetAstersList(std::vector<SSO_ID>* list) const {
    append(model_->elements.asteroids, SSO_ASTR, list);
    return size_of(*list);
}

int CSWSolSys::GetCometsList(std::vector<SSO_ID>* list) const {
    append(model_->elements.comets, SSO_COMT, list);
    return size_of(*list);
}

int CSWSolSys::GetMoonsListFor(const SSO_ID& planet, std::vector<SSO_ID>* list) const {
    if (planet.type != SSO_PLNT) return 0;
    for (const auto& [key, object] : model_->objects.entries()) {
        const std::int32_t number = solsys::number_of(key);
        if (solsys::type_of(key) == SSO_MOON && number / 100 == planet.number)
            list->emplace_back(SSO_MOON, number);
    }
    return size_of(*list);
}

SS_Object* CSWSolSys::GetSS_Object(const SSO_ID& id) const { return model_->find(id); }

bool CSWSolSys::CheckSSO(const SSO_ID* id) const {
    if (id == nullptr) return false;
    const Model& m = *model_;
    const std::uint64_t key = solsys::key_of(*id);
    return m.objects.find(key) != nullptr || m.elements.asteroids.find(key) != nullptr ||
           m.elements.comets.find(key) != nullptr ||
           m.elements.spacecraft.find(key) != nullptr ||
           m.elements.user_objects.find(key) != nullptr;
}

SSO_ID CSWSolSys::GetCentralBodyID(const SSO_ID& id) const {
    const Model& m = *model_;
    switch (id.type) {
        case SSO_PLNT:
        case SSO_ASTR:
        case SSO_COMT:
        case SSO_FAST:
        case SSO_FCOM:
            return {SSO_PLNT, 10};
        case SSO_MOON:
            return {SSO_PLNT, id.number / 100};
        case SSO_SCFT: {
            const auto* track = m.elements.spacecraft.find(solsys::key_of(id));
            if (track == nullptr) return {-1, -1};
            const auto* record = solsys::locate(*track, m.current.now).record;
            return centre_of(record != nullptr ? record : &track->records.front());
        }
        case SSO_USCO:
            return centre_of(m.elements.user_objects.find(solsys::key_of(id)));
        default:
            return {-1, -1};
    }
}
