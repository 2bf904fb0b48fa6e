#include "ephemeris/tle/catalogue_blocks.h"

#include <algorithm>

#include "platform/cpu_features.h"
#include "solsys/element_sets.h"

namespace solsys {
namespace {

constexpr double kMinutesPerDay = 1440;

// Takes a lane's state to its place. Whether it has one.
bool store_state(const Sgp4Work& work, std::size_t lane, std::size_t place, double* states,
                 unsigned char* status) {
    const int code = static_cast<int>(work.code.at[lane]);
    if (status != nullptr) status[place] = static_cast<unsigned char>(code);
    if (code != TLE_OK && code != TLE_DECAYED) return false;
    for (std::size_t k = 0; k < 6; ++k) states[6 * place + k] = work.state[k].at[lane];
    return true;
}

}  // namespace

Sgp4LanesFn sgp4_lanes() {
    if (cpu_has_avx512()) return sgp4_lanes_avx512;
    return cpu_has_avx2() ? sgp4_lanes_avx2 : sgp4_lanes_baseline;
}

void store_lane(const Sgp4Set& set, std::size_t lane, Sgp4Block& block) {
    constexpr std::size_t kNumbers = sizeof set.c / sizeof(double);
    static_assert(sizeof block == kNumbers * sizeof(Sgp4Lanes));
    const auto* numbers = reinterpret_cast<const double*>(&set.c);
    auto* lanes = reinterpret_cast<double*>(&block);
    for (std::size_t k = 0; k < kNumbers; ++k) lanes[k * kSgp4Lanes + lane] = numbers[k];
}

void CatalogueBlocks::add(const Sgp4Set& set) {
    std::size_t& open = open_[static_cast<std::size_t>(set.kind)];
    if (open == 0 || blocks_[open - 1].used == kSgp4Lanes) {
        blocks_.push_back({set.kind, 0, {}, {}});
        open = blocks_.size();
        for (std::size_t lane = 0; lane < kSgp4Lanes; ++lane)
            store_lane(set, lane, blocks_.back().sets);
    }
    Block& block = blocks_[open - 1];
    store_lane(set, block.used, block.sets);
    block.number[block.used++] = count_++;
}

std::size_t CatalogueBlocks::states(std::span<const int> day, std::span<const double> fraction,
                                    double* states, unsigned char* status) const {
    const Sgp4LanesFn lanes_of = sgp4_lanes();
    std::size_t found = 0;
    Sgp4Work work;
    for (const Block& block : blocks_) {
        ResonanceState<Sgp4Lanes> resonance{};
        for (std::size_t i = 0; i < day.size(); ++i) {
            std::fill_n(work.day.at, kSgp4Lanes, day[i]);
            std::fill_n(work.fraction.at, kSgp4Lanes, fraction[i]);
            lanes_of(block.kind, block.sets, resonance, work);
            for (std::size_t lane = 0; lane < block.used; ++lane)
                found += store_state(work, lane, block.number[lane] * day.size() + i, states,
                                     status);
        }
    }
    return found;
}

std::size_t states_of_set(const Sgp4Set& set, std::span<const double> minutes, double* states,
                          unsigned char* status) {
    const Sgp4LanesFn lanes_of = sgp4_lanes();
    Sgp4Set from_zero = set;  // minutes are days since an epoch of 0
    from_zero.c.epoch_day = from_zero.c.epoch_fraction = 0;
    Sgp4Block block;
    for (std::size_t lane = 0; lane < kSgp4Lanes; ++lane) store_lane(from_zero, lane, block);
    ResonanceState<Sgp4Lanes> resonance{};
    Sgp4Work work{};
    std::size_t found = 0;
    for (std::size_t first = 0; first < minutes.size(); first += kSgp4Lanes) {
        const std::size_t used = std::min<std::size_t>(kSgp4Lanes, minutes.size() - first);
        for (std::size_t lane = 0; lane < kSgp4Lanes; ++lane)
            work.fraction.at[lane] = minutes[first + std::min(lane, used - 1)] / kMinutesPerDay;
        lanes_of(set.kind, block, resonance, work);
        for (std::size_t lane = 0; lane < used; ++lane)
            found += store_state(work, lane, first + lane, states, status);
    }
    return found;
}

}  // namespace solsys
