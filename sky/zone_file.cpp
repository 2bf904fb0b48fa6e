// The system's zone files (TZif, RFC 8536): the block of 64-bit times and the rule behind it.
#include <cstdint>

#include "sky/zone_rules.h"

namespace solsys::sky {
namespace {

constexpr std::size_t kHeader = 44;

std::int64_t big_endian(std::string_view bytes, std::size_t at, int size) {
    std::uint64_t value = 0;
    for (int i = 0; i < size; ++i)
        value =
            value << 8 | static_cast<unsigned char>(bytes[at + static_cast<std::size_t>(i)]);
    if (size == 4) return static_cast<std::int32_t>(static_cast<std::uint32_t>(value));
    return static_cast<std::int64_t>(value);
}

// The counts in a block's header.
struct Counts {
    std::size_t is_ut, is_standard, leaps, times, types, characters;

    [[nodiscard]] std::size_t body(std::size_t time_size) const {
        return times * (time_size + 1) + types * 6 + characters + leaps * (time_size + 4) +
               is_standard + is_ut;
    }
};

Counts counts_at(std::string_view bytes, std::size_t header) {
    const auto count = [&](std::size_t field) {
        return static_cast<std::size_t>(big_endian(bytes, header + 20 + 4 * field, 4) &
                                        0xffffff);
    };
    return {count(0), count(1), count(2), count(3), count(4), count(5)};
}

}  // namespace

std::optional<Zone::Rules> read_zone_file(std::string_view bytes) {
    if (bytes.size() < kHeader || !bytes.starts_with("TZif") || bytes[4] < '2')
        return std::nullopt;
    const std::size_t second = kHeader + counts_at(bytes, 0).body(4);
    if (second > bytes.size() || bytes.size() - second < kHeader) return std::nullopt;
    const Counts counts = counts_at(bytes, second);
    const std::size_t begin = second + kHeader;
    if (counts.types == 0 || counts.body(8) > bytes.size() - begin) return std::nullopt;

    const auto offset_of = [&](std::size_t type) {
        return static_cast<int>(big_endian(bytes, begin + counts.times * 9 + type * 6, 4));
    };
    for (std::size_t type = 0; type < counts.types; ++type)
        if (!is_offset(offset_of(type))) return std::nullopt;
    Zone::Rules rules;
    rules.initial_offset = offset_of(0);
    for (std::size_t i = 0; i < counts.times; ++i) {
        const auto type = static_cast<unsigned char>(bytes[begin + counts.times * 8 + i]);
        if (type >= counts.types) return std::nullopt;
        const std::int64_t at = big_endian(bytes, begin + i * 8, 8);
        if (i > 0 && at <= rules.transitions.back().at) return std::nullopt;
        rules.transitions.push_back({at, offset_of(type)});
    }
    rules.standard_offset = rules.daylight_offset =
        rules.transitions.empty() ? rules.initial_offset : rules.transitions.back().offset;
    std::string_view footer = bytes.substr(begin + counts.body(8));
    while (footer.starts_with('\n')) footer.remove_prefix(1);
    while (footer.ends_with('\n')) footer.remove_suffix(1);
    if (!footer.empty() && !rules.take_tz_string(footer)) return std::nullopt;
    return rules;
}

}  // namespace solsys::sky
