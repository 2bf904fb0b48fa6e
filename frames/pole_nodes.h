// The slowly varying series of the modern reduction, and a memory of them for neighbouring
// instants.
#pragma once

#include <array>
#include <cstdint>

#include "core/instant.h"

namespace solsys {

// What is summed from long tables [rad]: nutation (IAU 2000A fitted to the IAU 2006 precession)
// and the part s + XY/2 of the CIO locator.
struct PoleSeries {
    double d_psi = 0, d_epsilon = 0, locator = 0;
};

// All terms, every time: some 50 thousand instructions.
PoleSeries pole_series(Instant tt);

// The same, interpolated where instants follow one another closely.
//
// Values at nodes half a day apart are kept; twelve of them around the instant agree with the
// sums within 1e-15 rad. An instant far from the last ones is summed directly, so that jumping
// about costs one sum each, and nodes are made only once a few instants fell into the same
// neighbourhood. A value: copying a model copies its nodes.
class PoleNodes {
  public:
    PoleSeries at(Instant tt);

  private:
    static constexpr int kNodes = 12;
    static constexpr std::int64_t kNone = INT64_MIN;

    void fill(std::int64_t first);

    std::array<PoleSeries, kNodes> values_{};
    std::array<std::int64_t, kNodes> held_ = [] {
        std::array<std::int64_t, kNodes> none{};
        none.fill(kNone);
        return none;
    }();
    std::int64_t last_cell_ = kNone;
    int visits_ = 0;
};

}  // namespace solsys
