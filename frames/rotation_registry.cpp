#include "frames/rotation_registry.h"

#include <cstddef>
#include <map>
#include <vector>

#include "core/answer_or.h"

namespace solsys::rotation_registry {
namespace {

// Takes no memory before the first entry: most hosts add none.
struct Registry {
    std::map<ObjectKey, BodyRotationParams> by_key;  // grows without moving what it holds
    std::vector<const BodyRotationParams*> in_order;
};

Registry& registry() {
    static Registry instance;
    return instance;
}

}  // namespace

void add(const ObjectKey& key, const BodyRotationParams& params) {
    Registry& r = registry();
    make_room(r.in_order);
    const auto [place, is_new] = r.by_key.try_emplace(key, params);
    if (is_new) r.in_order.push_back(&place->second);
}

int count() { return static_cast<int>(registry().in_order.size()); }

const BodyRotationParams* get(int index) {
    if (index < 0 || index >= count()) return nullptr;
    return registry().in_order[static_cast<std::size_t>(index)];
}

const BodyRotationParams* get(const ObjectKey& key) {
    const auto& by_key = registry().by_key;
    const auto found = by_key.find(key);
    return found == by_key.end() ? nullptr : &found->second;
}

}  // namespace solsys::rotation_registry
