// A flat ordered table keyed by (type, number): small, scanned in order, searched often.
#pragma once

#include <algorithm>
#include <cstdint>
#include <utility>
#include <vector>

#include "core/answer_or.h"
#include "solsys/sso_id.h"

namespace solsys {

// (type, number) as one integer in the order of SSO_ID: both signed, type first.
constexpr std::uint64_t key_of(std::int32_t type, std::int32_t number) {
    constexpr std::uint32_t sign = 0x80000000U;
    return static_cast<std::uint64_t>(static_cast<std::uint32_t>(type) ^ sign) << 32 |
           (static_cast<std::uint32_t>(number) ^ sign);
}
inline std::uint64_t key_of(const SSO_ID& id) { return key_of(id.type, id.number); }
constexpr std::int32_t type_of(std::uint64_t key) {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(key >> 32) ^ 0x80000000U);
}
constexpr std::int32_t number_of(std::uint64_t key) {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(key) ^ 0x80000000U);
}

template <class Value>
class FlatTable {
  public:
    using Entry = std::pair<std::uint64_t, Value>;

    [[nodiscard]] const Value* find(std::uint64_t key) const {
        const auto at = lower(key);
        return at != entries_.end() && at->first == key ? &at->second : nullptr;
    }
    [[nodiscard]] Value* find(std::uint64_t key) {
        return const_cast<Value*>(std::as_const(*this).find(key));
    }
    // False, and nothing changes, when the key is there.
    bool insert(std::uint64_t key, Value value) {
        const auto at = lower(key);
        if (at != entries_.end() && at->first == key) return false;
        entries_.emplace(at, key, std::move(value));
        return true;
    }
    void replace(std::uint64_t key, Value value) {
        if (Value* old = find(key)) {
            *old = std::move(value);
        } else {
            insert(key, std::move(value));
        }
    }
    bool erase(std::uint64_t key) {
        const auto at = lower(key);
        if (at == entries_.end() || at->first != key) return false;
        entries_.erase(at);
        return true;
    }
    void clear() { entries_.clear(); }
    void erase_type(std::int32_t type) {
        std::erase_if(entries_, [type](const Entry& e) { return type_of(e.first) == type; });
    }
    // The next `insert` or `replace` takes no memory.
    void make_room() { solsys::make_room(entries_); }
    [[nodiscard]] const std::vector<Entry>& entries() const { return entries_; }

  private:
    // The usual host adds in ascending order: try the end first.
    [[nodiscard]] typename std::vector<Entry>::const_iterator lower(std::uint64_t key) const {
        if (entries_.empty() || entries_.back().first < key) return entries_.end();
        return std::lower_bound(
            entries_.begin(), entries_.end(), key,
            [](const Entry& entry, std::uint64_t wanted) { return entry.first < wanted; });
    }

    std::vector<Entry> entries_;
};

}  // namespace solsys
