// Which bodies a model holds, and what they go round.
#include "core/answer_or.h"
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

// The size of the host's list with what is added to it. Where memory ends the list is what it
// was, and the answer -1.
template <class Add>
int grown(std::vector<SSO_ID>* list, Add&& add) {
    if (list == nullptr) return 0;
    const std::size_t before = list->size();
    const bool whole = solsys::answer_or(false, [&] { return add(), true; });
    if (!whole) list->resize(before);
    return whole ? static_cast<int>(list->size()) : -1;
}

}  // namespace

int CSWSolSys::GetFullList(std::vector<SSO_ID>* list) const {
    // The tables in the order of their type codes: TLE_, astr, comt, fAST, fCOM, fSCO, moon and
    // plnt, scft, uSCO.
    const solsys::Bodies& m = model_->bodies;
    return grown(list, [&] {
        append(m.satellites, kAllTypes, list);
        append(m.elements.asteroids, kAllTypes, list);
        append(m.elements.comets, kAllTypes, list);
        append(m.integrated.asteroids, kAllTypes, list);
        append(m.integrated.comets, kAllTypes, list);
        append(m.integrated.user_objects, kAllTypes, list);
        append(m.objects, kAllTypes, list);
        append(m.elements.spacecraft, kAllTypes, list);
        append(m.elements.user_objects, kAllTypes, list);
    });
}

int CSWSolSys::GetPlanetsList(std::vector<SSO_ID>* list) const {
    return grown(list, [&] { append(model_->bodies.objects, SSO_PLNT, list); });
}

int CSWSolSys::GetMoonsList(std::vector<SSO_ID>* list) const {
    return grown(list, [&] { append(model_->bodies.objects, SSO_MOON, list); });
}

int CSWSolSys::GetAstersList(std::vector<SSO_ID>* list) const {
    return grown(list, [&] { append(model_->bodies.elements.asteroids, SSO_ASTR, list); });
}

int CSWSolSys::GetCometsList(std::vector<SSO_ID>* list) const {
    return grown(list, [&] { append(model_->bodies.elements.comets, SSO_COMT, list); });
}

int CSWSolSys::GetMoonsListFor(const SSO_ID& planet, std::vector<SSO_ID>* list) const {
    if (planet.type != SSO_PLNT) return 0;
    return grown(list, [&] {
        for (const auto& [key, object] : model_->bodies.objects.entries()) {
            const std::int32_t number = solsys::number_of(key);
            if (solsys::type_of(key) == SSO_MOON && number / 100 == planet.number)
                list->emplace_back(SSO_MOON, number);
        }
    });
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
