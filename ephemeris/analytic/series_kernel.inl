// The body of the kernel, included by series_kernel_baseline.cpp and series_kernel_avx2.cpp.
//
// Plain loops over kSeriesLanes elements, each short enough for the compiler to turn it into
// vector instructions; choices are minima and maxima, never branches.
#include "ephemeris/analytic/series_kernel.h"

namespace solsys {
namespace {

constexpr int kLanes = kSeriesLanes;
constexpr double kTurn = 6.28318530717958647692;  // rad

inline double smaller(double a, double b) { return a < b ? a : b; }
inline double larger(double a, double b) { return a > b ? a : b; }

// The nearest whole number, |x| < 2^51: adding 1.5 * 2^52 leaves no room for a fraction.
inline double nearest(double x) {
    constexpr double kShift = 6755399441055744.0;
    return (x + kShift) - kShift;
}

// sin 2 pi y for |y| <= 1/4, to 9e-17 and rounding. With u = 4 y, the expansion
//     sin(pi u / 2) = 2 sum (-1)^k J_{2k+1}(pi / 2) T_{2k+1}(u)
// (Abramowitz & Stegun 9.1.45) up to T_15, written out in powers of y; the first term left out
// is 2 J_17(pi / 2) = 9e-17.
inline double sine_of_turns(double y) {
    const double y2 = y * y;
    const double y4 = y2 * y2;
    const double a = 6.28318530717958038182 - 41.3417022403950768258 * y2;
    const double b = 81.6052492750252875351 - 76.7058596473931460775 * y2;
    const double c = 42.0586883024023833808 - 15.0944715540541356631 * y2;
    const double d = 3.81699676081059334701 - 0.690933034270318414932 * y2;
    return ((a + b * y4) + (c + d * y4) * (y4 * y4)) * y;
}

// The same for cosine and sine of |x| <= 1/2 turn, folded into the first quadrants.
inline double cosine(double x) { return sine_of_turns(smaller(0.25 - x, 0.25 + x)); }
inline double sine(double x) { return sine_of_turns(smaller(0.5 - x, larger(x, -0.5 - x))); }

template <int kDegree, bool kWithRate>
void sum_series(const SeriesView& series, double t, double* sum, double* rate) {
    const double* row = series.blocks;
    for (int coordinate = 0; coordinate < 3; ++coordinate) {
        // Horner's scheme in t over the groups of rows with equal power: value is the sum so
        // far, turning its derivative through the arguments (over -2 pi), power that through
        // the powers of t.
        double value[kLanes] = {};
        double turning[kLanes] = {};
        double power[kLanes] = {};
        for (int n = kSeriesPowers - 1; n >= 0; --n) {
            if constexpr (kWithRate) {
                for (int i = 0; i < kLanes; ++i) power[i] = power[i] * t + value[i];
                for (int i = 0; i < kLanes; ++i) turning[i] *= t;
            }
            for (int i = 0; i < kLanes; ++i) value[i] *= t;

            for (int block = series.block_count[coordinate][n]; block > 0; --block) {
                const double* amplitude = row;
                const double* phase = row + kLanes;
                const double* c1 = row + 2 * kLanes;
                double x[kLanes];
                if constexpr (kDegree == 1) {
                    for (int i = 0; i < kLanes; ++i) x[i] = phase[i] + c1[i] * t;
                } else {
                    const double *c2 = c1 + kLanes, *c3 = c2 + kLanes, *c4 = c3 + kLanes;
                    for (int i = 0; i < kLanes; ++i)
                        x[i] = phase[i] + (c1[i] + (c2[i] + (c3[i] + c4[i] * t) * t) * t) * t;
                }
                for (int i = 0; i < kLanes; ++i) x[i] -= nearest(x[i]);
                for (int i = 0; i < kLanes; ++i) value[i] += amplitude[i] * cosine(x[i]);
                if constexpr (kWithRate && kDegree == 1) {
                    for (int i = 0; i < kLanes; ++i)
                        turning[i] += amplitude[i] * c1[i] * sine(x[i]);
                } else if constexpr (kWithRate) {
                    const double *c2 = c1 + kLanes, *c3 = c2 + kLanes, *c4 = c3 + kLanes;
                    double speed[kLanes];
                    for (int i = 0; i < kLanes; ++i)
                        speed[i] = c1[i] + (2 * c2[i] + (3 * c3[i] + 4 * c4[i] * t) * t) * t;
                    for (int i = 0; i < kLanes; ++i)
                        turning[i] += amplitude[i] * speed[i] * sine(x[i]);
                }
                row += (2 + kDegree) * kLanes;
            }
        }
        sum[coordinate] = (value[0] + value[2]) + (value[1] + value[3]);
        if constexpr (kWithRate) {
            rate[coordinate] = ((power[0] + power[2]) + (power[1] + power[3])) -
                               kTurn * ((turning[0] + turning[2]) + (turning[1] + turning[3]));
        }
    }
}

inline void sum_series_of_any_degree(const SeriesView& series, double t, double* sum,
                                     double* rate) {
    if (series.degree == 1) {
        rate ? sum_series<1, true>(series, t, sum, rate)
             : sum_series<1, false>(series, t, sum, rate);
    } else {
        rate ? sum_series<4, true>(series, t, sum, rate)
             : sum_series<4, false>(series, t, sum, rate);
    }
}

}  // namespace
}  // namespace solsys
