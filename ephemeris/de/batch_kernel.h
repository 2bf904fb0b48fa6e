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
constexpr int kMostSeriesRows = 3;  // Earth-Moon barycentre, Sun, Moon

// One body's series in every record: `subs` sub-intervals of three rows of `terms`
// coefficients.
struct SeriesRow {
    int offset;         // of the first coefficient from the start of the record
    int terms;          // 2 to kMostSeriesTerms
    int subs;           // 1 or more
    double value_unit;  // of the sums, and of their derivatives by the normalised time
    double rate_unit;
    double share;  // of this row in what is asked for: taken off the first one
};

// Eight instants: where their records start, and where in them they are, 0 to 1.
struct SeriesBatch {
    const double* coefficients;  // of the whole file
    long long record[kSeriesBatch];
    double within[kSeriesBatch];
};
// By coordinate, within it by instant.
struct SeriesSums {
    double value[3][kSeriesBatch];
    double rate[3][kSeriesBatch];
};

// The first row less the shares of the others.
void sum_batch_baseline(const SeriesBatch& batch, const SeriesRow* rows, int count,
                        SeriesSums& out);
void sum_batch_avx2(const SeriesBatch& batch, const SeriesRow* rows, int count,
                    SeriesSums& out);
void sum_batch_avx512(const SeriesBatch& batch, const SeriesRow* rows, int count,
                      SeriesSums& out);

}  // namespace solsys
