// The inner loop of the trigonometric series: three coordinates, each a sum over its rows of
//     A t^n cos 2 pi (b + c1 t + ... + cd t^d),
// compiled once for every x86-64 processor and once for those with AVX2.
//
// This header and the kernel's sources include nothing: a function shared with the rest of
// the library must not be compiled for a processor that may not be there.
#pragma once

namespace solsys {

// Rows are summed in this many interleaved partial sums, whatever the width of the vectors, so
// that every build gives the same bits.
constexpr int kSeriesLanes = 4;
// Powers t^0 to t^5.
constexpr int kSeriesPowers = 6;

// A series packed for the loop. Blocks hold kSeriesLanes rows each: the amplitudes, then the
// phases b [turn], then c1 to cd [turn per unit of t^k]. They follow each other by coordinate
// and, within a coordinate, from the highest power of t to the lowest; short ones are padded
// with rows of zeros.
struct SeriesView {
    const double* blocks;
    int degree;  // of the arguments: 1 or 4
    int block_count[3][kSeriesPowers];
};

// Sums of the three coordinates at t and, unless `rate` is null, their derivatives by t. The
// sums are the same bits with and without rates, and from both builds. Arguments up to 1e9
// turns; beyond, or for a t that is not finite, the sums are meaningless.
void sum_series_baseline(const SeriesView& series, double t, double sum[3], double* rate);
void sum_series_avx2(const SeriesView& series, double t, double sum[3], double* rate);

}  // namespace solsys
