// The body of the kernel, included by batch_kernel_baseline.cpp, _avx2.cpp and _avx512.cpp.
//
// Eight instants side by side in vectors that the compiler cuts to the processor's width;
// nothing branches on a value.
#include "ephemeris/de/batch_kernel.h"

namespace solsys {
namespace {

// As wide as the processor's registers, or twice (the compiler cuts wider ones badly).
#ifdef __AVX512F__
using Wide = double __attribute__((vector_size(64)));
#else
using Wide = double __attribute__((vector_size(32)));
#endif
constexpr int kWidth = sizeof(Wide) / sizeof(double);
using Four = double __attribute__((vector_size(32)));
static_assert(kSeriesBatch == 8);

template <class V>
inline V load_from(const double* from) {
    V v;
    __builtin_memcpy(&v, from, sizeof v);
    return v;
}
template <class V>
inline void store_to(double* to, V v) {
    __builtin_memcpy(to, &v, sizeof v);
}

// A number in all places: taking zero away changes none.
inline Wide everywhere(double x) { return x - Wide{}; }

// T_j and T_j' of all instants (Newhall 1989, Celest. Mech. 45, 305), by term.
struct Polynomials {
    double value[kMostSeriesTerms][kSeriesBatch];
    double rate[kMostSeriesTerms][kSeriesBatch];
};

// From the instant `i` on.
inline void make_polynomials(const double* time, int i, int terms, Polynomials& p) {
    const Wide t = load_from<Wide>(time + i), two_t = 2.0 * t;
    Wide t2 = everywhere(1), t1 = t, d2 = everywhere(0), d1 = everywhere(1);
    store_to(p.value[0] + i, t2), store_to(p.rate[0] + i, d2);
    store_to(p.value[1] + i, t1), store_to(p.rate[1] + i, d1);
    for (int j = 2; j < terms; ++j) {
        const Wide value = two_t * t1 - t2;
        const Wide rate = two_t * d1 + (2.0 * t1 - d2);
        store_to(p.value[j] + i, value), store_to(p.rate[j] + i, rate);
        t2 = t1, t1 = value;
        d2 = d1, d1 = rate;
    }
}

// The sums of one coordinate. The small terms of high degree go first; even and odd degrees
// have sums of their own, which do not wait for each other.
template <class V>
struct Sums {
    V value[2] = {}, rate[2] = {};

    void add(int odd, V c, const double* polynomial, const double* derivative) {
        value[odd] += c * load_from<V>(polynomial);
        rate[odd] += c * load_from<V>(derivative);
    }
};

// Where the instants have their coefficients, and their polynomials there.
struct Series {
    const double* at[kSeriesBatch];
    int terms;
    bool shared;  // one place for all
    Polynomials p;
};

// The sub-interval of each instant, and its normalised time in it, -1 to +1. The very end of a
// record belongs to its last sub-interval.
inline void find_series(const SeriesBatch& batch, const SeriesRow& row, Series& s) {
    double time[kSeriesBatch];
    s.terms = row.terms;
    s.shared = true;
    for (int i = 0; i < kSeriesBatch; ++i) {
        const double scaled = batch.within[i] * row.subs;
        const int whole = static_cast<int>(scaled);
        const int sub = whole < row.subs ? whole : row.subs - 1;
        time[i] = 2.0 * (scaled - sub) - 1.0;
        s.at[i] = batch.coefficients + batch.record[i] + row.offset + sub * 3 * row.terms;
        s.shared = s.shared && s.at[i] == s.at[0];
    }
    for (int i = 0; i < kSeriesBatch; i += kWidth) make_polynomials(time, i, row.terms, s.p);
}

// All instants share the coefficients.
inline void sum_shared(const Series& series, int row, int i, SeriesSums& out) {
    const double* c = series.at[0] + row * series.terms;
    const Polynomials& p = series.p;
    Sums<Wide> s;
    const auto add = [&](int odd, int j) {
        s.add(odd, everywhere(c[j]), p.value[j] + i, p.rate[j] + i);
    };
    int j = series.terms;
    if (j % 2 != 0) --j, add(0, j);
    while (j > 0) {
        --j, add(1, j);
        --j, add(0, j);
    }
    store_to(out.value[row] + i, s.value[0] + s.value[1]);
    store_to(out.rate[row] + i, s.rate[0] + s.rate[1]);
}

// Four numbers that follow each other at each of four places become vectors over the places.
inline void transpose(const double* const at[4], int from, Four c[4]) {
    const Four r0 = load_from<Four>(at[0] + from), r1 = load_from<Four>(at[1] + from);
    const Four r2 = load_from<Four>(at[2] + from), r3 = load_from<Four>(at[3] + from);
    const Four a = __builtin_shufflevector(r0, r1, 0, 4, 2, 6);
    const Four b = __builtin_shufflevector(r0, r1, 1, 5, 3, 7);
    const Four d = __builtin_shufflevector(r2, r3, 0, 4, 2, 6);
    const Four e = __builtin_shufflevector(r2, r3, 1, 5, 3, 7);
    c[0] = __builtin_shufflevector(a, d, 0, 1, 4, 5);
    c[1] = __builtin_shufflevector(b, e, 0, 1, 4, 5);
    c[2] = __builtin_shufflevector(a, d, 2, 3, 6, 7);
    c[3] = __builtin_shufflevector(b, e, 2, 3, 6, 7);
}

// Every instant has coefficients of its own: four instants and four terms at a time.
inline void sum_scattered(const Series& series, int row, int half, SeriesSums& out) {
    const Polynomials& p = series.p;
    const double* at[4];
    for (int i = 0; i < 4; ++i) at[i] = series.at[4 * half + i] + row * series.terms;
    Sums<Four> s;
    const auto add = [&](int odd, Four c, int j) {
        s.add(odd, c, p.value[j] + 4 * half, p.rate[j] + 4 * half);
    };
    const auto add_one = [&](int odd, int j) {
        add(odd, Four{at[0][j], at[1][j], at[2][j], at[3][j]}, j);
    };
    int j = series.terms;
    if (j % 2 != 0) --j, add_one(0, j);
    if (j % 4 != 0) {
        --j, add_one(1, j);
        --j, add_one(0, j);
    }
    while (j > 0) {
        Four c[4];
        j -= 4;
        transpose(at, j, c);
        add(1, c[3], j + 3);
        add(0, c[2], j + 2);
        add(1, c[1], j + 1);
        add(0, c[0], j);
    }
    store_to(out.value[row] + 4 * half, s.value[0] + s.value[1]);
    store_to(out.rate[row] + 4 * half, s.rate[0] + s.rate[1]);
}

inline void sum_row(const Series& series, const SeriesRow& row, SeriesSums& out) {
    for (int k = 0; k < 3; ++k) {
        if (series.shared) {
            for (int i = 0; i < kSeriesBatch; i += kWidth) sum_shared(series, k, i, out);
        } else {
            sum_scattered(series, k, 0, out);
            sum_scattered(series, k, 1, out);
        }
        for (int i = 0; i < kSeriesBatch; i += kWidth) {
            double *value = out.value[k] + i, *rate = out.rate[k] + i;
            store_to(value, load_from<Wide>(value) * row.value_unit);
            store_to(rate, load_from<Wide>(rate) * row.rate_unit);
        }
    }
}

inline void take_off(double* from, const double* what, double share) {
    for (int i = 0; i < kSeriesBatch; i += kWidth)
        store_to(from + i, load_from<Wide>(from + i) - load_from<Wide>(what + i) * share);
}

// The polynomials of all rows first: each waits for the one before, but no row for another.
inline void sum_batch(const SeriesBatch& batch, const SeriesRow* rows, int count,
                      SeriesSums& out) {
    Series series[kMostSeriesRows];
    for (int r = 0; r < count; ++r) find_series(batch, rows[r], series[r]);
    sum_row(series[0], rows[0], out);
    for (int r = 1; r < count; ++r) {
        SeriesSums other;
        sum_row(series[r], rows[r], other);
        for (int k = 0; k < 3; ++k) {
            take_off(out.value[k], other.value[k], rows[r].share);
            take_off(out.rate[k], other.rate[k], rows[r].share);
        }
    }
}

}  // namespace
}  // namespace solsys
