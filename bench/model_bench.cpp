// The model: starting, moving to an instant, placing the observer, and the sky of one instant.
#include <benchmark/benchmark.h>

#include "solsys/de_ephemeris.h"
#include "solsys/solar_system.h"

namespace {

constexpr int kDay = 2455000;
constexpr double kStep = 0.37;  // day: far enough that nothing kept serves twice

const SSO_ID kBodies[] = {{SSO_PLNT, 10}, {SSO_MOON, 301}, {SSO_PLNT, 1}, {SSO_PLNT, 2},
                          {SSO_PLNT, 4},  {SSO_PLNT, 5},   {SSO_PLNT, 6}, {SSO_PLNT, 7},
                          {SSO_PLNT, 8},  {SSO_PLNT, 9}};

OBSERVER place(std::int8_t kind, std::int32_t body) {
    OBSERVER o;
    o.kind = kind;
    o.body_type = SSO_PLNT, o.body_number = body;
    o.location[1] = 0.3, o.location[2] = 0.8;
    return o;
}

// Range 0: 0 the built-in theories, 1 the DE file.
void open(CSWSolSys& model, benchmark::State& state) {
    DE_Ephemeris::clear();
    model.InitSys(state.range(0) == 1 ? SOLSYS_DE405 : "");
    if (model.HasEphemeris() != (state.range(0) == 1)) state.SkipWithError("no DE405 file");
}

class Clock {
  public:
    void advance(CSWSolSys& model) {
        days_ += kStep;
        if (days_ > 5000) days_ = 0;
        model.UpdateSys(kDay, days_);
    }

  private:
    double days_ = 0;
};

void InitSys(benchmark::State& state) {
    DE_Ephemeris::clear();
    for ([[maybe_unused]] auto _ : state) {
        CSWSolSys model;
        model.InitSys(state.range(0) == 1 ? SOLSYS_DE405 : "");
        benchmark::DoNotOptimize(model.GetObserverSSO());
    }
}
BENCHMARK(InitSys)->Arg(0)->Arg(1)->Unit(benchmark::kMicrosecond);

void UpdateSys(benchmark::State& state) {
    CSWSolSys model;
    open(model, state);
    const OBSERVER site = place(static_cast<std::int8_t>(state.range(1)),
                                static_cast<std::int32_t>(state.range(2)));
    model.SetObserver(&site);
    Clock clock;
    for ([[maybe_unused]] auto _ : state) clock.advance(model);
}
BENCHMARK(UpdateSys)
    ->ArgNames({"file", "kind", "body"})
    ->Args({1, LOCATION_BODY_FIXED, 3})
    ->Args({1, LOCATION_SURFACE, 3})
    ->Args({1, LOCATION_SURFACE, 4})
    ->Args({0, LOCATION_SURFACE, 3});

void SetObserver(benchmark::State& state) {
    CSWSolSys model;
    open(model, state);
    OBSERVER site = place(static_cast<std::int8_t>(state.range(1)), 3);
    model.SetObserver(&site);
    model.UpdateSys(kDay, 0.0);
    for ([[maybe_unused]] auto _ : state) {
        site.location[1] += 1e-6;
        model.SetObserver(&site);
    }
}
BENCHMARK(SetObserver)
    ->ArgNames({"file", "kind"})
    ->Args({1, LOCATION_BODY_FIXED})
    ->Args({1, LOCATION_SURFACE});

// Apparent places of the Sun, the Moon, seven planets and Pluto from a site at a new instant.
void Sky(benchmark::State& state) {
    CSWSolSys model;
    open(model, state);
    const OBSERVER site = place(LOCATION_SURFACE, 3);
    model.SetObserver(&site);
    Clock clock;
    double out[3];
    for ([[maybe_unused]] auto _ : state) {
        clock.advance(model);
        for (const SSO_ID& body : kBodies) {
            if (!model.GetRADecVis(body, out, 0.0)) state.SkipWithError("no place");
            benchmark::DoNotOptimize(out);
        }
    }
}
BENCHMARK(Sky)->ArgName("file")->Arg(1)->Arg(0)->Unit(benchmark::kMicrosecond);

// The apparent place of one body, for seeing where the time of Sky goes.
void OneBody(benchmark::State& state) {
    CSWSolSys model;
    open(model, state);
    const SSO_ID& body = kBodies[state.range(1)];
    Clock clock;
    double out[3];
    for ([[maybe_unused]] auto _ : state) {
        clock.advance(model);
        model.GetRADecVis(body, out, 0.0);
        benchmark::DoNotOptimize(out);
    }
}
BENCHMARK(OneBody)->ArgNames({"file", "body"})->ArgsProduct({{1, 0}, {0, 1, 2, 5, 7, 9}});

void HorizontalPlace(benchmark::State& state) {
    CSWSolSys model;
    open(model, state);
    const OBSERVER site = place(LOCATION_SURFACE, 3);
    model.SetObserver(&site);
    model.UpdateSys(kDay, 0.0);
    double ra = 1, dec = 0.5, azm = 0, alt = 0;
    for ([[maybe_unused]] auto _ : state) {
        ra += 1e-3;
        model.FromRAToAzm(false, &ra, &dec, &azm, &alt);
        benchmark::DoNotOptimize(azm);
    }
}
BENCHMARK(HorizontalPlace)->ArgName("file")->Arg(0);

}  // namespace
