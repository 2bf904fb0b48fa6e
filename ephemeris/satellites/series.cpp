#include "ephemeris/satellites/series.h"

namespace solsys::satellites {
namespace {

Phasor weighted_sum(std::size_t begin, std::size_t end, const double* weights,
                    const double* sines, const double* cosines) {
    // Two sums of each, so that one addition need not wait for the other.
    Phasor even, odd;
    std::size_t k = begin;
    for (; k + 1 < end; k += 2) {
        even.c += weights[k] * cosines[k];
        even.s += weights[k] * sines[k];
        odd.c += weights[k + 1] * cosines[k + 1];
        odd.s += weights[k + 1] * sines[k + 1];
    }
    if (k < end) {
        even.c += weights[k] * cosines[k];
        even.s += weights[k] * sines[k];
    }
    return {even.c + odd.c, even.s + odd.s};
}

}  // namespace

void sines_and_cosines(std::size_t n, const double* arguments, double* sines, double* cosines) {
    for (std::size_t k = 0; k < n; ++k) {
        const SinCos value = sin_cos(arguments[k]);
        sines[k] = value.sin;
        cosines[k] = value.cos;
    }
}

ElementSums sum_series(const ElementSeries& series, double t) {
    std::array<double, kMaxTerms> arguments;
    const std::size_t n = series.size();
    for (std::size_t k = 0; k < n; ++k)
        arguments[k] = series.phase[k] + series.frequency[k] * t;
    return sum_series(series, std::span(arguments).first(n));
}

ElementSums sum_series(const ElementSeries& series, std::span<const double> arguments) {
    std::array<double, kMaxTerms> sines, cosines;
    sines_and_cosines(series.size(), arguments.data(), sines.data(), cosines.data());

    const auto sum = [&](std::size_t v) {
        return weighted_sum(series.bounds[v], series.bounds[v + 1], series.amplitude,
                            sines.data(), cosines.data());
    };
    return {sum(0), sum(1), sum(2), sum(3)};
}

}  // namespace solsys::satellites
