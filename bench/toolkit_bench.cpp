// The toolkit's hot paths, with the standard library's functions beside them.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <cmath>

#include "core/root_finder.h"
#include "solsys/calendar.h"
#include "solsys/time_scales.h"
#include "solsys/toolkit.h"

namespace {

// Arguments over a few turns, so that the branches are not always the same.
constexpr auto kAngles = [] {
    std::array<double, 1024> a{};
    for (std::size_t i = 0; i < a.size(); ++i)
        a[i] = static_cast<double>((i * 7919) % 1024) * 0.0184 - 9.4;
    return a;
}();

template <double (*F)(double)>
void scalar(benchmark::State& state) {
    std::size_t i = 0;
    for (auto _ : state) benchmark::DoNotOptimize(F(kAngles[i++ & 1023]));
}
double std_sin(double x) { return std::sin(x); }
double std_cos(double x) { return std::cos(x); }
BENCHMARK(scalar<fmSin>)->Name("fmSin");
BENCHMARK(scalar<std_sin>)->Name("std::sin");
BENCHMARK(scalar<fmCos>)->Name("fmCos");
BENCHMARK(scalar<std_cos>)->Name("std::cos");

const double kMatrix[9] = {0.36, 0.48, -0.8, -0.8, 0.6, 0, 0.48, 0.64, 0.6};

void vnorm(benchmark::State& state) {
    double v[3] = {1, 2, 3};
    double modulus = 0;
    for (auto _ : state) {
        Vnorm(v, v, 3, &modulus);
        benchmark::DoNotOptimize(v);
    }
}
void mv3prod(benchmark::State& state) {
    double v[3] = {1, 2, 3};
    for (auto _ : state) {
        MV3prod(kMatrix, v, v);
        benchmark::DoNotOptimize(v);
    }
}
void m3prod(benchmark::State& state) {
    double m[9] = {1, 0, 0, 0, 1, 0, 0, 0, 1};
    for (auto _ : state) {
        M3prod(kMatrix, m, m);
        benchmark::DoNotOptimize(m);
    }
}
void m3prod_loops(benchmark::State& state) {  // the same, written as three loops
    double m[9] = {1, 0, 0, 0, 1, 0, 0, 0, 1};
    for (auto _ : state) {
        double product[9];
        for (int i = 0; i < 3; ++i)
            for (int k = 0; k < 3; ++k) {
                double sum = 0;
                for (int j = 0; j < 3; ++j) sum += kMatrix[3 * i + j] * m[3 * j + k];
                product[3 * i + k] = sum;
            }
        std::copy(product, product + 9, m);
        benchmark::DoNotOptimize(m);
    }
}
BENCHMARK(vnorm)->Name("Vnorm");
BENCHMARK(mv3prod)->Name("MV3prod");
BENCHMARK(m3prod)->Name("M3prod");
BENCHMARK(m3prod_loops)->Name("M3prod as loops");

void spherical(benchmark::State& state) {
    std::size_t i = 0;
    double sph[3] = {1, 0, 0.3};
    double xyz[3];
    for (auto _ : state) {
        sph[1] = kAngles[i++ & 1023];
        sfp(sph, xyz);
        psf(xyz, 1, sph);
        benchmark::DoNotOptimize(sph);
    }
}
void planetographic(benchmark::State& state) {
    const double xyz[3] = {3000, 3000, 4700};
    double geo[3];
    for (auto _ : state) {
        benchmark::DoNotOptimize(Plc2Plg(6378.137, 1 / 298.257, xyz, geo));
    }
}
void root(benchmark::State& state) {
    for (auto _ : state)
        benchmark::DoNotOptimize(solsys::zeroin(
            0, 4, [](double x) { return x - 0.3 * std::sin(x) - 1; }, 1e-12));
}
BENCHMARK(spherical)->Name("sfp and psf");
BENCHMARK(planetographic)->Name("Plc2Plg");
BENCHMARK(root)->Name("zeroin, Kepler's equation");

void calendar(benchmark::State& state) {
    int day = 2451545;
    short year = 0, month = 0, date = 0, hour = 0, minute = 0;
    double fraction = 0.3, day_fraction = 0, second = 0;
    for (auto _ : state) {
        JD(day, fraction, &year, &month, &date, &day_fraction, &hour, &minute, &second);
        DJ(&day, &fraction, year, month, date, hour, minute, second);
        benchmark::DoNotOptimize(fraction);
    }
}
void delta_t(benchmark::State& state) {  // the argument is the day
    int day = static_cast<int>(state.range(0));
    for (auto _ : state) {
        benchmark::DoNotOptimize(day);
        benchmark::DoNotOptimize(ET_UT::Get(day, 0.3));
    }
}
BENCHMARK(calendar)->Name("JD and DJ");
BENCHMARK(delta_t)->Name("ET_UT::Get")->Arg(2460000)->Arg(2440000)->Arg(2350000)->Arg(2000000);

}  // namespace
