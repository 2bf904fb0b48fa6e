// The Earth's orientation at an instant. Every call has another day, as in a search.
#include <benchmark/benchmark.h>

#include "solsys/earth_orientation.h"

namespace {

using Series = void (*)(int, double, double&, double&, double&);

template <Series F>
void series(benchmark::State& state) {
    int day = 2451545;
    double obliquity = 0, d_psi = 0, d_epsilon = 0;
    for (auto _ : state) {
        F(day++, 0.25, obliquity, d_psi, d_epsilon);
        benchmark::DoNotOptimize(d_psi);
        benchmark::DoNotOptimize(d_epsilon);
    }
}
BENCHMARK(series<NutationSeidelman>)->Name("NutationSeidelman");
BENCHMARK(series<NutationSeidelmanBest>)->Name("NutationSeidelmanBest");

void short_model(benchmark::State& state) {
    int day = 2451545;
    double obliquity = 0, d_psi = 0, d_epsilon = 0;
    for (auto _ : state) {
        NutBretagnon(day++, 0.25, &obliquity, &d_psi, &d_epsilon);
        benchmark::DoNotOptimize(d_psi);
    }
}
void short_matrix(benchmark::State& state) {
    int day = 2451545;
    double matrix[9], obliquity = 0, d_psi = 0, d_epsilon = 0;
    for (auto _ : state) {
        Nutation(day++, 0.25, matrix, &obliquity, &d_epsilon, &d_psi);
        benchmark::DoNotOptimize(matrix);
    }
}
void precession(benchmark::State& state) {
    int day = 2451545;
    double matrix[9], zeta = 0, z = 0, theta = 0;
    for (auto _ : state) {
        Precession(2451545, 0.0, day++, 0.25, matrix, &zeta, &z, &theta);
        benchmark::DoNotOptimize(matrix);
    }
}
void sidereal_time(benchmark::State& state) {
    const bool apparent = state.range(0) != 0;
    int day = 2451545;
    for (auto _ : state) benchmark::DoNotOptimize(SiderialTime(apparent, day++, 0.25));
}
BENCHMARK(short_model)->Name("NutBretagnon");
BENCHMARK(short_matrix)->Name("Nutation");
BENCHMARK(precession)->Name("Precession");
BENCHMARK(sidereal_time)->Name("SiderialTime")->ArgName("apparent")->Arg(0)->Arg(1);

}  // namespace
