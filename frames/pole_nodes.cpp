#include "frames/pole_nodes.h"

#include <cmath>
#include <cstddef>
#include <cstdlib>

#include "frames/cio_locator.h"
#include "frames/iau2000a_nutation.h"

namespace solsys {
namespace {

constexpr double kStep = 0.5;          // day
constexpr double kFarthest = 1e7;      // day from J2000: beyond, no nodes
constexpr int kVisitsBeforeNodes = 3;  // direct sums before nodes pay

// Signed binomial coefficients: barycentric weights of equidistant nodes.
template <std::size_t N>
constexpr std::array<double, N> barycentric_weights() {
    std::array<double, N> w{};
    w[0] = 1;
    for (std::size_t i = 1; i < N; ++i)
        w[i] = -w[i - 1] * static_cast<double>(N - i) / static_cast<double>(i);
    return w;
}

}  // namespace

PoleSeries pole_series(Instant tt) {
    const NutationOffsets n = nutation_iau2006(tt);
    return {n.d_psi, n.d_epsilon, cio_locator_plus_half_xy(tt)};
}

void PoleNodes::fill(std::int64_t first) {
    for (std::int64_t node = first; node < first + kNodes; ++node) {
        const auto slot = static_cast<std::size_t>(((node % kNodes) + kNodes) % kNodes);
        if (held_[slot] == node) continue;
        const double days = static_cast<double>(node) * kStep;
        const double whole = std::floor(days);
        values_[slot] = pole_series({kJ2000Day + static_cast<int>(whole), days - whole});
        held_[slot] = node;
    }
}

PoleSeries PoleNodes::at(Instant tt) {
    const double days = days_since_j2000(tt);
    if (!(std::fabs(days) < kFarthest)) return pole_series(tt);

    const double u = days / kStep;
    const auto cell = static_cast<std::int64_t>(std::floor(u));
    const bool near = last_cell_ != kNone && std::llabs(cell - last_cell_) <= 1;
    visits_ = near ? visits_ + (visits_ < kVisitsBeforeNodes) : 0;
    last_cell_ = cell;
    if (visits_ < kVisitsBeforeNodes) return pole_series(tt);

    constexpr auto kWeights = barycentric_weights<kNodes>();
    const std::int64_t first = cell - (kNodes / 2 - 1);
    fill(first);
    const double x = u - static_cast<double>(first);
    PoleSeries sum;
    double weights = 0;
    for (std::size_t i = 0; i < kWeights.size(); ++i) {
        const auto node = first + static_cast<std::int64_t>(i);
        const PoleSeries& v =
            values_[static_cast<std::size_t>(((node % kNodes) + kNodes) % kNodes)];
        const double distance = x - static_cast<double>(i);
        if (distance == 0) return v;
        const double w = kWeights[i] / distance;
        weights += w;
        sum.d_psi += w * v.d_psi;
        sum.d_epsilon += w * v.d_epsilon;
        sum.locator += w * v.locator;
    }
    return {sum.d_psi / weights, sum.d_epsilon / weights, sum.locator / weights};
}

}  // namespace solsys
