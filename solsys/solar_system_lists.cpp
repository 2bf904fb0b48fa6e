// Which bodies a model holds, and what they go round.
#include "solsys/model.h"
#include "solsys/states.h"

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

int size_of(const std::vector<SSO_ID>& list) { return static_cast<int>(list.size()); }

}  // namespace

int CSWSolSys::GetFullList(std::vector<SSO_ID>* list) const {
    if (list == nullptr) return 0;
    // The tables in the order of their type codes: TLE_, astr, comt, fAST, fCOM, fSCO, moon and
    // plnt, scft, uSCO.
    const solsys::Bodies& m = model_->bodies;
    append(m.satellites, kAllTypes, list);
    append(m.elements.asteroids, kAllTypes, list);
    append(m.elements.comets, kAllTypes, list);
    append(m.integrated.asteroids, kAllTypes, list);
    append(m.integrated.comets, kAllTypes, list);
    append(m.integrated.user_objects, kAllTypes, list);
    append(m.objects, kAllTypes, list);
    append(m.elements.spacecraft, kAllTypes, list);
    append(m.elements.user_objects, kAllTypes, list);
    return size_of(*list);
}

int CSWSolSys::GetPlanetsList(std::vector<SSO_ID>* list) const {
    if (list == nullptr) return 0;
    append(model_->bodies.objects, SSO_PLNT, list);
    return size_of(*list);
}

int CSWSolSys::GetMoonsList(std::vector<SSO_ID>* list) const {
    if (list == nullptr) return 0;
    append(model_->bodies.objects, SSO_MOON, list);
    return size_of(*list);
}

int CSWSolSys::GetAstersList(std::vector<SSO_ID>* list) const {
    if (list == nullptr) return 0;
    append(model_->bodies.elements.asteroids, SSO_ASTR, list);
    return size_of(*list);
}

int CSWSolSys::GetCometsList(std::vector<SSO_ID>* list) const {
    if (list == nullptr) return 0;
    append(model_->bodies.elements.comets, SSO_COMT, list);
    return size_of(*list);
}

int CSWSolSys::GetMoonsListFor(const SSO_ID& planet, std::vector<SSO_ID>* list) const {
    if (list == nullptr || planet.type != SSO_PLNT) return 0;
    for (const auto& [key, object] : model_->bodies.objects.entries()) {
        const std::int32_t number = solsys::number_of(key);
        if (solsys::type_of(key) == SSO_MOON && number / 100 == planet.number)
            list->emplace_back(SSO_MOON, number);
    }
    return size_of(*list);
}

SS_Object* CSWSolSys::GetSS_Object(const SSO_ID& id) const {
    return model_->bodies.find(solsys::body_key(id));
}

bool CSWSolSys::CheckSSO(const SSO_ID* id) const {
    if (id == nullptr) return false;
    const solsys::Bodies& m = model_->bodies;
    const std::uint64_t key = solsys::key_of(*id);
    return m.objects.find(key) != nullptr || m.elements.asteroids.find(key) != nullptr ||
           m.elements.comets.find(key) != nullptr ||
           m.elements.spacecraft.find(key) != nullptr ||
           m.elements.user_objects.find(key) != nullptr ||
           m.integrated.elements(key) != nullptr || m.satellites.find(key) != nullptr ||
           m.integrated.user_objects.find(key) != nullptr;
}

SSO_ID CSWSolSys::GetCentralBodyID(const SSO_ID& id) const {
    const solsys::BodyKey centre =
        centre_of(model_->bodies, solsys::body_key(id), model_->current.now);
    return {centre.type, centre.number};
}
