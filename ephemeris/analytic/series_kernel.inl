// The body of the kernel, included by series_kernel_baseline.cpp, _avx2.cpp and _avx512.cpp.
//
// Plain loops over kSeriesLanes elements, each short enough for the compiler to turn it into
// vector instructions; nothing branches on a value.
#include "ephemeris/analytic/series_kernel.h"

namespace solsys {
namespace {

constexpr int kLanes = kSeriesLanes;
constexpr double kTurn = 6.28318530717958647692;  // rad

struct Lanes {
    double at[kLanes];
};

// The nearest whole number, |x| < 2^51: adding 1.5 * 2^52 leaves no room for a fraction.
inline double nearest(double x) {
    constexpr double kShift = 6755399441055744.0;
    return (x + kShift) - kShift;
}

// sin pi x and cos pi x for |x| <= 1/2, x2 = x^2. With u = 2 x, the expansions
//     sin(pi u / 2) = 2 sum (-1)^k J_{2k+1}(pi / 2) T_{2k+1}(u)
//     cos(pi u / 2) = J_0(pi / 2) + 2 sum (-1)^k J_{2k}(pi / 2) T_{2k}(u)
// (Abramowitz & Stegun 9.1.44 and 9.1.45) up to T_15 and T_16, written out in powers of x; the
// first terms left out are 2 J_17(pi / 2) = 9e-17 and 2 J_18(pi / 2) = 4e-18.
inline double sin_pi(double x, double x2) {
    const double x4 = x2 * x2;
    const double a = 3.14159265358979019091 - 5.16771278004938460322 * x2;
    const double b = 2.55016403984454023547 - 0.59926452849525895373 * x2;
    const double c = 0.0821458755906296550406 - 0.00737034743850299592924 * x2;
    const double d = 0.00046594198740363688318 - 0.0000210856028524877445963 * x2;
    return ((a + b * x4) + (c + d * x4) * (x4 * x4)) * x;
}
inline double cos_pi(double x2) {
    const double x4 = x2 * x2;
    const double a = 0.999999999999999996083 - 4.93480220054467677053 * x2;
    const double b = 4.05871212641649727354 - 1.33526276884345586117 * x2;
    const double c = 0.235330630129670611786 - 0.0258068887381775806807 * x2;
    const double d = (0.0019295562780374169402 - 0.000104566567061745839002 * x2) +
                     0.00000414957802705712042536 * x4;
    return (a + b * x4) + (c + d * x4) * (x4 * x4);
}

// Cosines and sines of the arguments of a chunk and, if asked for, their derivatives by t over
// 2 pi, each lane beside the others of its block.
struct Chunk {
    double cosine[kSeriesChunk * kLanes], sine[kSeriesChunk * kLanes];
    double cosine_rate[kSeriesChunk * kLanes], sine_rate[kSeriesChunk * kLanes];
};

template <int kDegree, bool kWithRate>
inline void evaluate_arguments(const double* c, int blocks, double t, Chunk& chunk) {
    for (int b = 0; b < blocks; ++b, c += (kDegree + 1) * kLanes) {
        double x[kLanes], x2[kLanes], s[kLanes], half_cosine[kLanes];
        const double *c1 = c + kLanes, *c2 = c1 + kLanes, *c3 = c2 + kLanes, *c4 = c3 + kLanes;
        double* cosine = chunk.cosine + b * kLanes;
        double* sine = chunk.sine + b * kLanes;
        if constexpr (kDegree == 1) {
            for (int i = 0; i < kLanes; ++i) x[i] = c[i] + c1[i] * t;
        } else {
            for (int i = 0; i < kLanes; ++i)
                x[i] = c[i] + (c1[i] + (c2[i] + (c3[i] + c4[i] * t) * t) * t) * t;
        }
        // By the half angle: sin 2 a = 2 sin a cos a, cos 2 a = cos^2 a - sin^2 a.
        for (int i = 0; i < kLanes; ++i) x[i] -= nearest(x[i]);
        for (int i = 0; i < kLanes; ++i) x2[i] = x[i] * x[i];
        for (int i = 0; i < kLanes; ++i) s[i] = sin_pi(x[i], x2[i]);
        for (int i = 0; i < kLanes; ++i) half_cosine[i] = cos_pi(x2[i]);
        for (int i = 0; i < kLanes; ++i) sine[i] = 2 * s[i] * half_cosine[i];
        for (int i = 0; i < kLanes; ++i)
            cosine[i] = (half_cosine[i] - s[i]) * (half_cosine[i] + s[i]);
        if constexpr (kWithRate) {
            double speed[kLanes];
            if constexpr (kDegree == 1) {
                for (int i = 0; i < kLanes; ++i) speed[i] = c1[i];
            } else {
                for (int i = 0; i < kLanes; ++i)
                    speed[i] = c1[i] + (2 * c2[i] + (3 * c3[i] + 4 * c4[i] * t) * t) * t;
            }
            for (int i = 0; i < kLanes; ++i)
                chunk.cosine_rate[b * kLanes + i] = -speed[i] * sine[i];
            for (int i = 0; i < kLanes; ++i)
                chunk.sine_rate[b * kLanes + i] = speed[i] * cosine[i];
        }
    }
}

inline void add_block(Lanes& sum, const double* weights, const double* cosine,
                      const double* sine) {
    for (int i = 0; i < kLanes; ++i)
        sum.at[i] += weights[i] * cosine[i] + weights[kLanes + i] * sine[i];
}

// Adds what `blocks` blocks of one power give to the coordinates.
template <int kCoordinates>
inline void add_blocks(const double* weights, int blocks, const double* cosine,
                       const double* sine, Lanes* total) {
    constexpr int kY = kCoordinates > 1 ? 1 : 0, kZ = kCoordinates > 2 ? 2 : 0;
    Lanes x = total[0], y = total[kY], z = total[kZ];
    for (; blocks > 0; --blocks, cosine += kLanes, sine += kLanes) {
        add_block(x, weights, cosine, sine);
        if constexpr (kCoordinates > 1) add_block(y, weights + 2 * kLanes, cosine, sine);
        if constexpr (kCoordinates > 2) add_block(z, weights + 4 * kLanes, cosine, sine);
        weights += 2 * kLanes * kCoordinates;
    }
    if constexpr (kCoordinates > 2) total[kZ] = z;
    if constexpr (kCoordinates > 1) total[kY] = y;
    total[0] = x;
}

inline double total(const Lanes& x) {
    return ((x.at[0] + x.at[4]) + (x.at[2] + x.at[6])) +
           ((x.at[1] + x.at[5]) + (x.at[3] + x.at[7]));
}

template <int kDegree, int kCoordinates, bool kWithRate>
void sum_series(const SeriesView& series, double t, double* sum, double* rate) {
    Lanes value[kSeriesPowers][kCoordinates] = {};
    Lanes turning[kSeriesPowers][kCoordinates] = {};  // derivatives through the arguments
    Chunk chunk;
    const double* weights = series.weights;
    for (int first = 0; first < series.blocks[0]; first += kSeriesChunk) {
        const auto blocks_of = [&](int n) {
            const int rest = series.blocks[n] - first;
            return rest < kSeriesChunk ? rest : kSeriesChunk;
        };
        evaluate_arguments<kDegree, kWithRate>(
            series.arguments + first * (kDegree + 1) * kLanes, blocks_of(0), t, chunk);
        for (int n = 0; n < kSeriesPowers && blocks_of(n) > 0; ++n) {
            add_blocks<kCoordinates>(weights, blocks_of(n), chunk.cosine, chunk.sine, value[n]);
            if constexpr (kWithRate)
                add_blocks<kCoordinates>(weights, blocks_of(n), chunk.cosine_rate,
                                         chunk.sine_rate, turning[n]);
            weights += blocks_of(n) * 2 * kLanes * kCoordinates;
        }
    }
    // Horner's scheme in t: the value, and its derivatives through the powers and the
    // arguments.
    for (int k = 0; k < kCoordinates; ++k) {
        double in_t = 0, by_power = 0, by_argument = 0;
        for (int n = kSeriesPowers - 1; n >= 0; --n) {
            by_power = by_power * t + in_t;
            in_t = in_t * t + total(value[n][k]);
            by_argument = by_argument * t + total(turning[n][k]);
        }
        sum[k] = in_t;
        if constexpr (kWithRate) rate[k] = by_power + kTurn * by_argument;
    }
}

template <int kDegree, int kCoordinates>
void sum_series(const SeriesView& series, double t, double* sum, double* rate) {
    rate ? sum_series<kDegree, kCoordinates, true>(series, t, sum, rate)
         : sum_series<kDegree, kCoordinates, false>(series, t, sum, rate);
}

template <int kDegree>
void sum_series(const SeriesView& series, double t, double* sum, double* rate) {
    if (series.coordinates == 1) return sum_series<kDegree, 1>(series, t, sum, rate);
    if (series.coordinates == 2) return sum_series<kDegree, 2>(series, t, sum, rate);
    sum_series<kDegree, 3>(series, t, sum, rate);
}

inline void sum_series_of_any_shape(const SeriesView& series, double t, double* sum,
                                    double* rate) {
    series.degree == 1 ? sum_series<1>(series, t, sum, rate)
                       : sum_series<4>(series, t, sum, rate);
}

}  // namespace
}  // namespace solsys
