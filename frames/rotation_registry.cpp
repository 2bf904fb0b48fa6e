#include "frames/rotation_registry.h"

#include <cstddef>
#include <deque>
#include <map>

namespace solsys::rotation_registry {
namespace {

struct Registry {
    std::deque<BodyRotationParams> entries;  // grows without moving what it holds
    std::map<ObjectKey, const BodyRotationParams*> by_key;
};

Registry& registry() {
    static Registry instance;
    return instance;
}

}  // namespace

void add(const ObjectKey& key, const BodyRotationParams& params) {
    Registry& r = registry();
    const auto [place, is_new] = r.by_key.try_emplace(key, nullptr);
    if (is_new) place->second = &r.entries.emplace_back(params);
}

int count() { return static_cast<int>(registry().entries.size()); }

const BodyRotationParams* get(int index) {
    if (index < 0 || index >= count()) return nullptr;
    return &registry().entries[static_cast<std::size_t>(index)];
}

const BodyRotationParams* get(const ObjectKey& key) {
    const auto& by_key = registry().by_key;
    const auto found = by_key.find(key);
    return found == by_key.end() ? nullptr : found->second;
}

}  // namespace solsys::rotation_registry
