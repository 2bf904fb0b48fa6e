#include "frames/pole_nodes.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdlib>

#include "frames/cio_locator.h"
#include "frames/iau2000a_nutation.h"

namespace solsys {
namespace {

constexpr double kStep = 0.5;      // day
constexpr double kFarthest = 1e7;  // day from J2000: beyond, no nodes
constexpr std::int64_t kNear = 4;  // cells from the last instant
constexpr int kEarnedByJump = 9;   // so that the third instant after a jump makes nodes

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

int PoleNodes::missing(std::int64_t first) const {
    if (first == whole_) return 0;
    int count = 0;
    for (std::int64_t node = first; node < first + kNodes; ++node)
        count += nodes_[slot_of(node)].number != node;
    return count;
}

void PoleNodes::fill(std::int64_t first) {
    for (std::int64_t node = first; node < first + kNodes; ++node) {
        Node& held = nodes_[slot_of(node)];
        if (held.number == node) continue;
        const double days = static_cast<double>(node) * kStep;
        const double whole = std::floor(days);
        held = {node, pole_series({kJ2000Day + static_cast<int>(whole), days - whole})};
    }
}

PoleSeries PoleNodes::interpolated(double u, std::int64_t first) const {
    constexpr auto kWeights = barycentric_weights<kNodes>();
    const double x = u - static_cast<double>(first);
    PoleSeries sum;
    double weights = 0;
    for (std::size_t i = 0; i < kWeights.size(); ++i) {
        const PoleSeries& v = nodes_[slot_of(first + static_cast<std::int64_t>(i))].value;
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

PoleSeries PoleNodes::at(Instant tt) {
    const double days = days_since_j2000(tt);
    if (!(std::fabs(days) < kFarthest)) return pole_series(tt);

    const double u = days / kStep;
    const auto cell = static_cast<std::int64_t>(std::floor(u));
    const bool near = last_cell_ != kNone && std::llabs(cell - last_cell_) <= kNear;
    earned_ = near ? std::min(earned_ + 1, kNodes) : kEarnedByJump;
    last_cell_ = cell;

    const std::int64_t first = cell - (kNodes / 2 - 1);
    if (const int wanted = missing(first); wanted > 0) {
        if (wanted > earned_) return pole_series(tt);
        fill(first);
        earned_ -= wanted;
    }
    whole_ = first;
    return interpolated(u, first);
}

}  // namespace solsys
