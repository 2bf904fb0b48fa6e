// Prepared sets of many satellites in blocks of lanes, a kind to a block.
#pragma once

#include <array>
#include <cstddef>
#include <span>
#include <vector>

#include "core/instant.h"
#include "ephemeris/tle/sgp4_kernel.h"
#include "ephemeris/tle/sgp4_set.h"

namespace solsys {

// The widest kernel that the processor has.
using Sgp4LanesFn = void (*)(Sgp4Kind, const Sgp4Block&, ResonanceState<Sgp4Lanes>&, Sgp4Work&);
Sgp4LanesFn sgp4_lanes();

// Puts one set into a lane.
void store_lane(const Sgp4Set& set, std::size_t lane, Sgp4Block& block);

class CatalogueBlocks {
  public:
    void add(const Sgp4Set& set);
    void clear() { *this = {}; }
    [[nodiscard]] std::size_t count() const { return count_; }

    // As TLECatalogue::GetStates has it.
    std::size_t states(std::span<const int> day, std::span<const double> fraction,
                       double* states, unsigned char* status) const;

  private:
    struct Block {
        Sgp4Kind kind;
        std::size_t used;                            // lanes
        std::array<std::size_t, kSgp4Lanes> number;  // of the satellites
        Sgp4Block sets;                              // lanes not used repeat the first
    };
    std::vector<Block> blocks_;
    std::array<std::size_t, kSgp4Kinds>
        open_{};  // by kind: its last block's place + 1; 0: none
    std::size_t count_ = 0;
};

// States of one set at many times [minutes from epoch], as TLEConvert::GetStates has it.
std::size_t states_of_set(const Sgp4Set& set, std::span<const double> minutes, double* states,
                          unsigned char* status);

}  // namespace solsys
