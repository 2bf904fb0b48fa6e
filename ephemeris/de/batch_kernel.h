// The inner loop of many Chebyshev series at once: eight instants side by side, compiled for
// every x86-64 processor, for those with AVX2 and for those with AVX-512.
//
// This header and the kernel's sources include nothing: a function shared with the rest of the
// library must not be compiled for a processor that may not be there.
#pragma once

namespace solsys {

// Instants that go together, whatever the width of the vectors, so that every build gives the
// same bits: those of evaluate_series (chebyshev.h).
constexpr int kSeriesBatch = 8;
constexpr int kMostSeriesTerms = 20;

// One body's series at eight instants. Every instant has a sub-interval of its own, of three
// rows of `terms` coefficients, and its normalised time in it, -1 to +1.
struct SeriesBatch {
    const double* coefficients;     // of the whole file
    long long first[kSeriesBatch];  // where the sub-intervals start in it
    double time[kSeriesBatch];
    int terms;  // 2 to kMostSeriesTerms
};
// By coordinate, within it by instant: the sums, and their derivatives by the normalised time.
struct SeriesSums {
    double value[3][kSeriesBatch];
    double rate[3][kSeriesBatch];
};

void sum_batch_baseline(const SeriesBatch& batch, SeriesSums& out);
void sum_batch_avx2(const SeriesBatch& batch, SeriesSums& out);
void sum_batch_avx512(const SeriesBatch& batch, SeriesSums& out);

}  // namespace solsys
