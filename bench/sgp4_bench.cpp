// States of element sets: one by one and in batches, near-earth and deep space, and what a
// state of the DE file costs on the same processor.
#include <benchmark/benchmark.h>

#include <random>

#include "solsys/de_ephemeris.h"
#include "solsys/element_sets.h"
#include "solsys/sky/passes.h"

namespace {

constexpr int kDay = 2460600;
constexpr std::size_t kSatellites = 512;

// A catalogue as it is: low orbits; or geostationary, transfer and half-day ones, and a tenth
// without resonance.
std::vector<TLERecord> catalogue(bool deep) {
    std::mt19937 random(1);
    std::uniform_real_distribution<double> unit(0, 1);
    std::vector<TLERecord> sets(kSatellites);
    for (std::size_t k = 0; k < kSatellites; ++k) {
        TLERecord& set = sets[k];
        set.epochDay = kDay - static_cast<int>(5 * unit(random));
        set.epochFraction = unit(random);
        set.inclination = 110 * unit(random);
        set.node = 360 * unit(random), set.perigee = 360 * unit(random);
        set.meanAnomaly = 360 * unit(random);
        set.meanMotion = 12.5 + 3 * unit(random), set.eccentricity = 0.01 * unit(random);
        set.bstar = 1e-4 * unit(random);
        if (!deep) continue;
        const double kind = unit(random);
        if (kind < 0.5) {
            set.meanMotion = 1.0027, set.eccentricity = 3e-4, set.inclination *= 0.1;
        } else if (kind < 0.7) {
            set.meanMotion = 2.006, set.eccentricity = 0.7, set.inclination = 63.4;
        } else if (kind < 0.9) {
            set.meanMotion = 2.006, set.eccentricity = 0.01, set.inclination = 55;
        } else {
            set.meanMotion = 2.3, set.eccentricity = 0.72, set.inclination = 7;
        }
    }
    return sets;
}

// Every satellite through two days, a minute a step, one state a call.
void OneByOne(benchmark::State& state) {
    std::vector<TLEConvert> sets(kSatellites);
    const auto records = catalogue(state.range(0) != 0);
    for (std::size_t k = 0; k < kSatellites; ++k) sets[k].Set(records[k]);
    double out[6];
    std::size_t k = 0;
    int minute = 0;
    for (auto _ : state) {
        sets[k].GetStateAt(kDay, minute / 1440.0, out);
        benchmark::DoNotOptimize(out);
        if (++minute == 2880) minute = 0, k = (k + 1) % kSatellites;
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(OneByOne)->Arg(0)->Arg(1)->ArgName("deep");

// The whole catalogue at some instants.
void Batch(benchmark::State& state) {
    TLECatalogue sets;
    for (const TLERecord& record : catalogue(state.range(0) != 0)) sets.Add(record);
    const auto count = static_cast<std::size_t>(state.range(1));
    std::vector<int> day(count, kDay);
    std::vector<double> fraction(count);
    for (std::size_t i = 0; i < count; ++i) fraction[i] = static_cast<double>(i) / 1440;
    std::vector<double> states(count * kSatellites * 6);
    std::vector<unsigned char> status(count * kSatellites);
    for (auto _ : state) {
        benchmark::DoNotOptimize(
            sets.GetStates(day.data(), fraction.data(), count, states.data(), status.data()));
    }
    state.SetItemsProcessed(state.iterations() * static_cast<long>(count * kSatellites));
}
BENCHMARK(Batch)->ArgsProduct({{0, 1}, {1, 60}})->ArgNames({"deep", "instants"});

// One satellite at many instants.
void Ephemeris(benchmark::State& state) {
    TLEConvert set;
    set.Set(catalogue(state.range(0) != 0)[3]);
    std::vector<double> minutes(1440), states(minutes.size() * 6);
    for (std::size_t i = 0; i < minutes.size(); ++i) minutes[i] = static_cast<double>(i);
    for (auto _ : state)
        benchmark::DoNotOptimize(
            set.GetStates(minutes.data(), minutes.size(), states.data(), nullptr));
    state.SetItemsProcessed(state.iterations() * static_cast<long>(minutes.size()));
}
BENCHMARK(Ephemeris)->Arg(0)->Arg(1)->ArgName("deep");

void Preparation(benchmark::State& state) {
    const auto records = catalogue(state.range(0) != 0);
    TLEConvert set;
    std::size_t k = 0;
    for (auto _ : state) benchmark::DoNotOptimize(set.Set(records[k++ % kSatellites]));
}
BENCHMARK(Preparation)->Arg(0)->Arg(1)->ArgName("deep");

// Geocentric, J2000.
void ToVector(benchmark::State& state) {
    TLEConvert set;
    set.Set(catalogue(false)[0]);
    double out[6], fraction = 0;
    for (auto _ : state) {
        fraction = fraction < 2 ? fraction + 1e-4 : 0;
        benchmark::DoNotOptimize(set.TLE2Vec(kDay, fraction, out));
    }
}
BENCHMARK(ToVector);

// Ten days of passes over a site.
void TenDaysOfPasses(benchmark::State& state) {
    namespace sky = solsys::sky;
    sky::Model model = std::move(*sky::Model::open());
    sky::Satellite satellite{"", catalogue(false)[0], -1.8};
    satellite.elements.inclination = 51.6;
    sky::Site site;
    site.latitude_deg = 48, site.longitude_deg = 16;
    const auto start = sky::Instant::from_utc({kDay, 0.5});
    std::size_t found = 0;
    for (auto _ : state) {
        found = sky::passes(model, site, satellite, {start, start.plus_days(10)},
                            {static_cast<double>(state.range(0)), 0})
                    .size();
    }
    state.counters["passes"] = static_cast<double>(found);
}
BENCHMARK(TenDaysOfPasses)->Arg(0)->Arg(10)->ArgName("horizon")->Unit(benchmark::kMillisecond);

// On the same processor, for comparison: a state of the DE file.
void StateOfDe405(benchmark::State& state) {
    DE_Ephemeris::open(SOLSYS_DE405);
    DE_EvalState evaluation;
    double out[6];
    int day = 2451545;
    for (auto _ : state) {
        day = day < 2453000 ? day + 7 : 2451545;
        DE_Ephemeris::getState(evaluation, day, 0.25, 5, 1, out);
        benchmark::DoNotOptimize(out);
    }
}
BENCHMARK(StateOfDe405);

}  // namespace
