// The inner loop of the trigonometric series: up to three coordinates, each a sum over powers n
// and arguments a of
//     t^n (p cos 2 pi a(t) + q sin 2 pi a(t)),  a(t) = c0 + c1 t + ... + cd t^d,
// compiled for every x86-64 processor, for those with AVX2 and for those with AVX-512.
// Coordinates and powers share their arguments: the sine and the cosine of each are worked out
// once.
//
// This header and the kernel's sources include nothing: a function shared with the rest of
// the library must not be compiled for a processor that may not be there.
#pragma once

namespace solsys {

// Arguments are worked through in blocks of this many interleaved lanes, whatever the width of
// the vectors, so that every build gives the same bits.
constexpr int kSeriesLanes = 8;
// Blocks that go through both passes together (sines and cosines, then sums), so that what the
// first leaves to the second stays in the nearest cache.
constexpr int kSeriesChunk = 16;
// Powers t^0 to t^5.
constexpr int kSeriesPowers = 6;

// A series packed for the loop. Arguments are sorted by the highest power of t that they occur
// with, falling: those that occur with t^n or more are the first blocks[n] blocks.
struct SeriesView {
    // By block: c0 of its lanes, then c1, to cd [turn per unit of t^k].
    const double* arguments;
    // By chunk, within a chunk by power, within a power by block, within a block by coordinate:
    // p of the lanes, then q. What does not occur is zero.
    const double* weights;
    int degree;       // of the arguments: 1 or 4
    int coordinates;  // 1 to 3
    int blocks[kSeriesPowers];
};

// Sums of the coordinates at t and, unless `rate` is null, their derivatives by t. The sums are
// the same bits with and without rates, and from every build. Arguments up to 1e9 turns;
// beyond, or for a t that is not finite, the sums are meaningless.
void sum_series_baseline(const SeriesView& series, double t, double* sum, double* rate);
void sum_series_avx2(const SeriesView& series, double t, double* sum, double* rate);
void sum_series_avx512(const SeriesView& series, double t, double* sum, double* rate);

}  // namespace solsys
