// Magnitudes as the typed layer gives them.
#pragma once

#include <cmath>
#include <optional>

namespace solsys::sky {

// To the digits that single precision holds. What is fainter than all is one of the marks for
// "not known".
inline std::optional<double> shown_magnitude(float magnitude) {
    constexpr float kFaintest = 60;
    if (!(magnitude < kFaintest)) return std::nullopt;
    return std::round(double{magnitude} * 1e4) / 1e4;
}

}  // namespace solsys::sky
