// The body of the kernel, included by batch_kernel_baseline.cpp, _avx2.cpp and _avx512.cpp.
//
// Plain loops over eight instants, each short enough for the compiler to turn it into vector
// instructions; nothing branches on a value.
#include "ephemeris/de/batch_kernel.h"

namespace solsys {
namespace {

struct Lanes {
    double at[kSeriesBatch];
};

// T_j and T_j' of all instants (Newhall 1989, Celest. Mech. 45, 305).
struct Polynomials {
    Lanes value[kMostSeriesTerms];
    Lanes rate[kMostSeriesTerms];
};

inline void make_polynomials(const SeriesBatch& batch, Polynomials& p) {
    Lanes two_t;
    for (int i = 0; i < kSeriesBatch; ++i) {
        p.value[0].at[i] = 1, p.rate[0].at[i] = 0;
        p.value[1].at[i] = batch.time[i], p.rate[1].at[i] = 1;
        two_t.at[i] = 2.0 * batch.time[i];
    }
    for (int j = 2; j < batch.terms; ++j) {
        const Lanes &t1 = p.value[j - 1], &t2 = p.value[j - 2];
        const Lanes &d1 = p.rate[j - 1], &d2 = p.rate[j - 2];
        for (int i = 0; i < kSeriesBatch; ++i)
            p.value[j].at[i] = two_t.at[i] * t1.at[i] - t2.at[i];
        for (int i = 0; i < kSeriesBatch; ++i)
            p.rate[j].at[i] = two_t.at[i] * d1.at[i] + (2.0 * t1.at[i] - d2.at[i]);
    }
}

// Coefficients of one place in the rows, of all instants.
inline void read_shared(const SeriesBatch& batch, int place, Lanes& c) {
    const double coefficient = batch.coefficients[batch.first[0] + place];
    for (int i = 0; i < kSeriesBatch; ++i) c.at[i] = coefficient;
}
inline void read_scattered(const SeriesBatch& batch, int place, Lanes& c) {
    const double* at_place = batch.coefficients + place;
    for (int i = 0; i < kSeriesBatch; ++i) c.at[i] = at_place[batch.first[i]];
}

inline void add_product(Lanes& sum, const Lanes& c, const Lanes& p) {
    for (int i = 0; i < kSeriesBatch; ++i) sum.at[i] += c.at[i] * p.at[i];
}

// One coordinate. The small terms of high degree go first; even and odd degrees have sums of
// their own, which do not wait for each other.
template <bool kShared>
inline void sum_row(const SeriesBatch& batch, int row, const Polynomials& p, SeriesSums& out) {
    Lanes even = {}, odd = {}, even_rate = {}, odd_rate = {};
    const int first = row * batch.terms;
    const auto read = [&](int j, Lanes& c) {
        kShared ? read_shared(batch, first + j, c) : read_scattered(batch, first + j, c);
    };
    Lanes c;
    int j = batch.terms;
    if (j % 2 != 0) {
        read(--j, c);
        add_product(even, c, p.value[j]);
        add_product(even_rate, c, p.rate[j]);
    }
    while (j > 0) {
        read(--j, c);
        add_product(odd, c, p.value[j]);
        add_product(odd_rate, c, p.rate[j]);
        read(--j, c);
        add_product(even, c, p.value[j]);
        add_product(even_rate, c, p.rate[j]);
    }
    for (int i = 0; i < kSeriesBatch; ++i) out.value[row][i] = even.at[i] + odd.at[i];
    for (int i = 0; i < kSeriesBatch; ++i) out.rate[row][i] = even_rate.at[i] + odd_rate.at[i];
}

inline void sum_batch(const SeriesBatch& batch, SeriesSums& out) {
    Polynomials p;
    make_polynomials(batch, p);
    bool shared = true;
    for (int i = 1; i < kSeriesBatch; ++i)
        shared = shared && batch.first[i] == batch.first[0];
    for (int row = 0; row < 3; ++row)
        shared ? sum_row<true>(batch, row, p, out) : sum_row<false>(batch, row, p, out);
}

}  // namespace
}  // namespace solsys
