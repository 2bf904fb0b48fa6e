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
using Integers = int __attribute__((vector_size(kWidth * sizeof(int))));
using Four = double __attribute__((vector_size(32)));
using Two = double __attribute__((vector_size(16)));
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
struct alignas(64) Polynomials {
    double value[kMostSeriesTerms][kSeriesBatch];
    double rate[kMostSeriesTerms][kSeriesBatch];
};

// From the instant `i` on.
inline void make_polynomials(Wide t, int i, int terms, Polynomials& p) {
    const Wide two_t = 2.0 * t;
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
    bool shared;  // one place for all
    Polynomials p;
};

// The sub-interval of each instant, and its normalised time in it, -1 to +1. The very end of a
// record belongs to its last sub-interval.
inline void find_series(const SeriesBatch& batch, const SeriesRow& row, Series& s) {
    s.shared = true;
    for (int i = 0; i < kSeriesBatch; i += kWidth) {
        const Wide scaled = load_from<Wide>(batch.within + i) * static_cast<double>(row.subs);
        Integers sub = __builtin_convertvector(scaled, Integers);
        sub = sub < row.subs ? sub : row.subs - 1 - Integers{};
        const Wide time = 2.0 * (scaled - __builtin_convertvector(sub, Wide)) - 1.0;
        make_polynomials(time, i, row.terms, s.p);
        for (int k = 0; k < kWidth; ++k) {
            s.at[i + k] =
                batch.coefficients + batch.record[i + k] + row.offset + sub[k] * 3 * row.terms;
            s.shared = s.shared && s.at[i + k] == s.at[0];
        }
    }
}

// What the sums of a row add to: the first one sets it, the others are taken off.
struct Target {
    const SeriesRow& row;
    bool first;
    SeriesSums& out;

    template <class V>
    void put(const Sums<V>& s, int coordinate, int i) const {
        store((s.value[0] + s.value[1]) * row.value_unit, out.value[coordinate] + i);
        store((s.rate[0] + s.rate[1]) * row.rate_unit, out.rate[coordinate] + i);
    }
    template <class V>
    void store(V v, double* to) const {
        store_to(to, first ? v : load_from<V>(to) - v * row.share);
    }
};

// All instants share the coefficients.
inline void sum_shared(const Series& series, int i, const Target& target) {
    const Polynomials& p = series.p;
    const int terms = target.row.terms;
    for (int k = 0; k < 3; ++k) {
        const double* c = series.at[0] + k * terms;
        Sums<Wide> s;
        const auto add = [&](int odd, int j) {
            s.add(odd, everywhere(c[j]), p.value[j] + i, p.rate[j] + i);
        };
        int j = terms;
        if (j % 2 != 0) --j, add(0, j);
        while (j > 0) {
            --j, add(1, j);
            --j, add(0, j);
        }
        target.put(s, k, i);
    }
}

inline Four pair_up(const double* low, const double* high) {
    return __builtin_shufflevector(load_from<Two>(low), load_from<Two>(high), 0, 1, 2, 3);
}

// Every instant has coefficients of its own: four instants and two terms at a time.
inline void sum_scattered(const Series& series, int i, const Target& target) {
    const Polynomials& p = series.p;
    const double* const* at = series.at + i;
    const int terms = target.row.terms;
    Sums<Four> s[3];
    int j = terms;
    if (j % 2 != 0) {
        --j;
        for (int k = 0; k < 3; ++k) {
            const int from = k * terms + j;
            s[k].add(0, Four{at[0][from], at[1][from], at[2][from], at[3][from]},
                     p.value[j] + i, p.rate[j] + i);
        }
    }
    while (j > 0) {
        j -= 2;
        for (int k = 0; k < 3; ++k) {
            const int from = k * terms + j;
            const Four a = pair_up(at[0] + from, at[2] + from);
            const Four b = pair_up(at[1] + from, at[3] + from);
            s[k].add(1, __builtin_shufflevector(a, b, 1, 5, 3, 7), p.value[j + 1] + i,
                     p.rate[j + 1] + i);
            s[k].add(0, __builtin_shufflevector(a, b, 0, 4, 2, 6), p.value[j] + i,
                     p.rate[j] + i);
        }
    }
    for (int k = 0; k < 3; ++k) target.put(s[k], k, i);
}

inline void sum_row(const Series& series, const Target& target) {
    if (series.shared) {
        for (int i = 0; i < kSeriesBatch; i += kWidth) sum_shared(series, i, target);
    } else {
        for (int i = 0; i < kSeriesBatch; i += 4) sum_scattered(series, i, target);
    }
}

// The polynomials of all rows first: each waits for the one before, but no row for another.
inline void sum_batch(const SeriesBatch& batch, const SeriesRow* rows, int count,
                      SeriesSums& out) {
    Series series[kMostSeriesRows];
    for (int r = 0; r < count; ++r) find_series(batch, rows[r], series[r]);
    for (int r = 0; r < count; ++r) sum_row(series[r], Target{rows[r], r == 0, out});
}

}  // namespace
}  // namespace solsys
