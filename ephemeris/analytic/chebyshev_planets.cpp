// Fits to DE431: Folkner, Williams, Boggs, Park & Kuchynka 2014, IPN Progress Report 42-196.
#include "ephemeris/analytic/chebyshev_planets.h"

#include <algorithm>
#include <array>
#include <span>

#include "core/chebyshev.h"

namespace solsys {
namespace {

struct ChebyshevRow {
    int segment, k;
    double x, y, z;  // au: coefficients of T_k
};

constexpr ChebyshevRow kUranus[] = {
#include "uranus_barycentric_chebyshev.inc"
};
constexpr ChebyshevRow kNeptune[] = {
#include "neptune_barycentric_chebyshev.inc"
};
constexpr ChebyshevRow kPluto[] = {
#include "pluto_barycentric_chebyshev.inc"
};

// The coefficients alone, segment after segment.
template <std::size_t kCount>
constexpr std::array<Vec3, kCount> coefficients(const ChebyshevRow (&rows)[kCount]) {
    std::array<Vec3, kCount> c{};
    for (std::size_t i = 0; i < kCount; ++i) c[i] = {rows[i].x, rows[i].y, rows[i].z};
    return c;
}
constexpr auto kUranusCoefficients = coefficients(kUranus);
constexpr auto kNeptuneCoefficients = coefficients(kNeptune);
constexpr auto kPlutoCoefficients = coefficients(kPluto);

struct ChebyshevTable {
    std::span<const Vec3> coefficients;
    int terms;            // per segment
    double segment_days;  // all of one length
};
constexpr ChebyshevTable kTables[] = {
    {kUranusCoefficients, 25, 18262.5},
    {kNeptuneCoefficients, 11, 18262.5},
    {kPlutoCoefficients, 23, 36525.0},
};
// Every table covers the span.
static_assert(std::ranges::all_of(kTables, [](const ChebyshevTable& t) {
    return static_cast<double>(t.coefficients.size()) / t.terms * t.segment_days ==
           kChebyshevEnd - kChebyshevStart;
}));

}  // namespace

State chebyshev_planet(int planet, double days, bool with_velocity) {
    const ChebyshevTable& table = kTables[planet - 7];
    const auto terms = static_cast<std::size_t>(table.terms);
    const std::size_t segments = table.coefficients.size() / terms;

    // The end of the span belongs to the last segment.
    const double since_start = days - kChebyshevStart;
    const std::size_t segment =
        std::min(static_cast<std::size_t>(since_start / table.segment_days), segments - 1);
    const double start = static_cast<double>(segment) * table.segment_days;
    const double u = 2 * (since_start - start) / table.segment_days - 1;

    const auto c = table.coefficients.subspan(segment * terms, terms);
    if (!with_velocity) return {chebyshev_sum<false>(c, u).value, {}};
    const auto sum = chebyshev_sum<true>(c, u);
    return {sum.value, (2 / table.segment_days) * sum.rate};
}

}  // namespace solsys
