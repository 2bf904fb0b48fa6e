// Two-body orbits: one call of each routine, and the warm start of the compact records.
#include <benchmark/benchmark.h>

#include <cmath>
#include <random>
#include <vector>

#include "core/constants.h"
#include "solsys/kepler.h"

namespace {

using namespace solsys;

constexpr int kDay = 2460000;
constexpr std::size_t kOrbits = 1024;  // the records stay in the first-level caches

// A main belt, with its few long ellipses.
std::vector<Elements> main_belt() {
    std::mt19937 random(1);
    std::uniform_real_distribution<double> angle(0, kTwoPi), size(2.1, 3.4);
    std::vector<Elements> orbits(kOrbits);
    for (std::size_t k = 0; k < kOrbits; ++k) {
        const double a = size(random);
        const double e = k % 32 == 0 ? 0.85 : 0.3 * angle(random) / kTwoPi;
        orbits[k] = {a,
                     e,
                     0.1,
                     angle(random),
                     angle(random),
                     std::sqrt(kGaussSquared / a) / a,
                     angle(random),
                     0.5,
                     kDay};
    }
    return orbits;
}

std::vector<tagAster_SPH_5> compact_belt() {
    std::vector<tagAster_SPH_5> records;
    for (const Elements& el : main_belt()) {
        tagAster_SPH_5 record{};
        record.epoch = el.epochDay + el.epochFraction;
        record.P[0] = 0.8F, record.P[1] = 0.6F;
        record.Q[0] = -0.6F, record.Q[1] = 0.8F;
        record.a = static_cast<float>(el.q), record.e = static_cast<float>(el.e);
        record.M = static_cast<float>(el.M), record.n = static_cast<float>(el.n);
        record.number = static_cast<std::uint32_t>(records.size());
        records.push_back(record);
    }
    return records;
}

void KeplerByAngles(benchmark::State& state) {
    const auto orbits = main_belt();
    std::size_t k = 0;
    double r[3], v[3];
    for (auto _ : state) {
        Kepler(1, kGaussSquared, kDay + 300, 0.2, orbits[k++ % kOrbits], r, v);
        benchmark::DoNotOptimize(r);
        benchmark::DoNotOptimize(v);
    }
}
BENCHMARK(KeplerByAngles);

// Every record once an instant: always a cold start.
void KeplerPQ5Cold(benchmark::State& state) {
    const auto records = compact_belt();
    const auto velocity = static_cast<short>(state.range(0));
    std::size_t k = 0;
    int day = kDay;
    double out[6];
    for (auto _ : state) {
        if (k == kOrbits) k = 0, ++day;
        KeplerPQ5(velocity, day, 0.2, &records[k++], out);
        benchmark::DoNotOptimize(out);
    }
}
BENCHMARK(KeplerPQ5Cold)->Arg(0)->Arg(1)->ArgName("velocity");

// One record through time, a quarter of a day a step.
void KeplerPQ5Warm(benchmark::State& state) {
    const auto record = compact_belt()[1];
    const auto velocity = static_cast<short>(state.range(0));
    double fraction = 0;
    double out[6];
    for (auto _ : state) {
        fraction = fraction < 10000 ? fraction + 0.25 : 0;
        KeplerPQ5(velocity, kDay, fraction, &record, out);
        benchmark::DoNotOptimize(out);
    }
}
BENCHMARK(KeplerPQ5Warm)->Arg(0)->Arg(1)->ArgName("velocity");

void KeplerPQ5Comet(benchmark::State& state) {
    tagComet_SPH_5 record{};
    record.P[0] = 1, record.Q[1] = 1;
    record.q = 17.9, record.e = 0.967, record.epoch = kDay, record.number = 1;
    record.n = std::sqrt(kGaussSquared / record.q) / record.q;
    double fraction = 0;
    double out[6];
    for (auto _ : state) {
        fraction = fraction < 10000 ? fraction + 0.25 : 0;
        KeplerPQ5(1, kDay, fraction, &record, out);
        benchmark::DoNotOptimize(out);
    }
}
BENCHMARK(KeplerPQ5Comet);

void SatelliteByKepElla(benchmark::State& state) {
    double elements[6] = {0.008, 0.0288, 0.4, 1, 2, 3};
    double out[6];
    for (auto _ : state) {
        elements[3] += 0.1;
        if (elements[3] > kTwoPi) elements[3] -= kTwoPi;
        KepElla(elements, 8.4596e-8, out);
        benchmark::DoNotOptimize(out);
    }
}
BENCHMARK(SatelliteByKepElla);

void ElementsOfAState(benchmark::State& state) {
    double r[3], v[3];
    Kepler(1, kGaussSquared, kDay + 100, 0, main_belt()[7], r, v);
    Elements out{};
    for (auto _ : state) {
        benchmark::DoNotOptimize(r);
        VectorToElements(kGaussSquared, r, v, &out);
        benchmark::DoNotOptimize(out);
    }
}
BENCHMARK(ElementsOfAState);

// What the others are to be compared with: two library sines.
void TwoSines(benchmark::State& state) {
    double x = 0.1;
    for (auto _ : state) {
        benchmark::DoNotOptimize(x);
        benchmark::DoNotOptimize(std::sin(x) + std::sin(x + 1));
    }
}
BENCHMARK(TwoSines);

}  // namespace
