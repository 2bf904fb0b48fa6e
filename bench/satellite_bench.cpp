// Cost of the satellites' states, position and velocity, at one instant that moves on each
// time.
#include <benchmark/benchmark.h>

#include <cmath>

#include "solsys/satellite_theory.h"

namespace {

// All moons `first` to `last` of one system at one instant.
template <class Theory>
void moons(benchmark::State& state, const Theory& theory, int first, int last) {
    int day = 2451545;
    for (auto _ : state) {
        for (int moon = first; moon <= last; ++moon) {
            double out[6];
            theory.GetSatVector(day, 0.25, moon, 1, out);
            benchmark::DoNotOptimize(out);
        }
        if (++day == 2466000) day = 2451545;
    }
}

BENCHMARK_CAPTURE(moons, mars_both, MartianSat{}, 1, 2);
BENCHMARK_CAPTURE(moons, galilean_four, JupiterSat{}, 1, 4);
BENCHMARK_CAPTURE(moons, saturn_eight, SaturnSat{}, 1, 8);
BENCHMARK_CAPTURE(moons, phoebe, SaturnSat{}, 9, 9);
BENCHMARK_CAPTURE(moons, trojans, SaturnSat{}, 12, 14);
BENCHMARK_CAPTURE(moons, uranus_five, UraSat{}, 1, 5);
BENCHMARK_CAPTURE(moons, nereid, NepSat{}, 2, 2);
BENCHMARK_CAPTURE(moons, triton_ellipse, NepSat{}, 1, 1);
BENCHMARK_CAPTURE(moons, himalia_table_row, JupiterSat{}, 6, 6);
BENCHMARK_CAPTURE(moons, pluto_five, PlutoSat{}, 1, 5);

void all_satellites(benchmark::State& state) {
    const MartianSat mars;
    const JupiterSat jupiter;
    const SaturnSat saturn;
    const UraSat uranus;
    const NepSat neptune;
    const PlutoSat pluto;
    const ErisSat eris;
    const HaumeaSat haumea;
    const struct {
        const SatTheory& theory;
        int moons;
    } systems[] = {{mars.AsTheory(), 2},    {jupiter.AsTheory(), 80}, {saturn.AsTheory(), 83},
                   {uranus.AsTheory(), 27}, {neptune.AsTheory(), 14}, {pluto.AsTheory(), 5},
                   {eris.AsTheory(), 1},    {haumea.AsTheory(), 2}};
    int day = 2451545;
    for (auto _ : state) {
        for (const auto& system : systems) {
            for (int moon = 1; moon <= system.moons; ++moon) {
                double out[6];
                system.theory.GetSatVector(day, 0.25, moon, 1, out);
                benchmark::DoNotOptimize(out);
            }
        }
        if (++day == 2466000) day = 2451545;
    }
}
BENCHMARK(all_satellites)->Unit(benchmark::kMicrosecond);

// The measure of the machine: one sine and cosine of the standard library.
void library_sine_and_cosine(benchmark::State& state) {
    double x = 1234.5;
    for (auto _ : state) {
        benchmark::DoNotOptimize(std::sin(x));
        benchmark::DoNotOptimize(std::cos(x));
        x += 0.01;
    }
}
BENCHMARK(library_sine_and_cosine);

}  // namespace
