// States from the open DE file at many instants.
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <span>

#include "core/instant.h"

namespace solsys {

// As de_state with velocities, to the same bits, for every instant (TDB; normalised or not).
// Where the file does not reach, NaN. How many it does; nothing, and `out` left alone, without
// an open file, for a body that is none (1 to 11), and for spans of different lengths.
//
// Eight instants go through the series together; neighbours that share a sub-interval of it
// read its coefficients once. Takes nothing from an evaluation state.
std::optional<std::size_t> de_states(int body, std::span<const Instant> instants,
                                     std::span<std::array<double, 6>> out);

}  // namespace solsys
