#include "frames/rotation_series.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <iterator>
#include <span>

#include "core/constants.h"

namespace solsys {
namespace {

struct ElementRow {
    int body;
    double alpha0, alpha1, delta0, delta1, w0, w1, w2;
};
constexpr ElementRow kElements[] = {
#include "rotation_elements.inc"
};

struct Term {
    int body;
    double arg0, arg1, arg2, alpha_sin, delta_cos, w_sin;
};
constexpr Term kTerms[] = {
#include "rotation_terms.inc"
};

static_assert(std::ranges::is_sorted(kElements, {}, &ElementRow::body));
static_assert(std::ranges::is_sorted(kTerms, {}, &Term::body));

// Where the terms of each row of kElements begin; those of row i end where row i + 1 begins.
constexpr auto kFirstTerm = [] {
    std::array<std::size_t, std::size(kElements) + 1> first{};
    for (std::size_t row = 0, term = 0; row < std::size(kElements); ++row) {
        first[row] = term;
        while (term < std::size(kTerms) && kTerms[term].body == kElements[row].body) ++term;
        first[row + 1] = term;
    }
    return first;
}();
static_assert(kFirstTerm.back() == std::size(kTerms), "every term belongs to a body");

}  // namespace

std::optional<RotationAngles> rotation_series(int body, double t, double d) {
    const auto found = std::ranges::lower_bound(kElements, body, {}, &ElementRow::body);
    if (found == std::end(kElements) || found->body != body) return std::nullopt;
    const ElementRow& e = *found;

    // Whole revolutions leave the daily term before the constants join it.
    RotationAngles angles{e.alpha0 + e.alpha1 * t, e.delta0 + e.delta1 * t,
                          e.w0 + std::fmod(e.w1 * d, 360.0) + e.w2 * d * d};

    const std::size_t row = static_cast<std::size_t>(found - std::begin(kElements));
    const auto terms =
        std::span(kTerms).subspan(kFirstTerm[row], kFirstTerm[row + 1] - kFirstTerm[row]);
    for (const Term& term : terms) {
        const double a = kDegree * (term.arg0 + (term.arg1 + term.arg2 * t) * t);
        const double sin_a = std::sin(a);
        angles.alpha += term.alpha_sin * sin_a;
        angles.delta += term.delta_cos * std::cos(a);
        angles.w += term.w_sin * sin_a;
    }
    return angles;
}

}  // namespace solsys
