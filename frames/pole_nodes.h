// The slowly varying series of the modern reduction, and a memory of them for neighbouring
// instants.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

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
// Values at nodes half a day apart are kept, those of some five hundred days; twelve of them
// around the instant agree with the sums within 1e-15 rad. An instant whose nodes are there is
// interpolated. To make nodes costs a sum each, and so does an instant without them: every
// instant near the last one earns a node, and they are made once enough have been earned. A
// search that comes along in small steps has a sum for every new node, one that comes back over
// the same days has none, and jumping about costs one sum each. A value: copying a model copies
// its nodes.
class PoleNodes {
  public:
    PoleSeries at(Instant tt);

  private:
    static constexpr int kNodes = 12;
    static constexpr std::size_t kHeld = 1024;  // a power of two
    static constexpr std::int64_t kNone = INT64_MIN;

    struct Node {
        std::int64_t number = kNone;
        PoleSeries value;
    };
    static std::size_t slot_of(std::int64_t node) {
        return static_cast<std::size_t>(node) % kHeld;
    }
    // How many of the nodes from `first` on are not there.
    [[nodiscard]] int missing(std::int64_t first) const;
    void fill(std::int64_t first);
    [[nodiscard]] PoleSeries interpolated(double u, std::int64_t first) const;

    std::vector<Node> nodes_ = std::vector<Node>(kHeld);
    std::int64_t last_cell_ = kNone;
    std::int64_t whole_ = kNone;  // the first of twelve that are known to be there
    int earned_ = 0;
};

}  // namespace solsys
