// The position pipeline: apparent places from scratch at ever new instants, on an ephemeris
// file and on the built-in theories; constellations, magnitudes, phases.
#include <benchmark/benchmark.h>

#include <iterator>
#include <memory>
#include <string>

#include "solsys/de_ephemeris.h"
#include "solsys/solar_system.h"

namespace {

constexpr int kBodies[] = {10, 301, 1, 2, 4, 5, 6, 7, 8, 9};

SSO_ID id_of(int body) { return {body > 100 ? SSO_MOON : SSO_PLNT, body}; }

std::unique_ptr<CSWSolSys> make_model(bool file) {
    DE_Ephemeris::clear();
    auto model = std::make_unique<CSWSolSys>();
    model->InitSys(file ? SOLSYS_DE405 : "");
    OBSERVER site;
    site.kind = LOCATION_SURFACE;
    site.body_type = SSO_PLNT, site.body_number = 3;
    site.location[1] = 0.1, site.location[2] = 0.9;
    model->SetObserver(&site);
    model->UpdateSys(2455000, 0.0);
    return model;
}

// Ten minutes on at every call, around the century of the file.
class Clock {
  public:
    void tick(CSWSolSys& model) {
        step_ = step_ < 3000000 ? step_ + 1 : 0;
        model.UpdateSys(2440000 + step_ / 144, (step_ % 144) / 144.0);
    }

  private:
    int step_ = 0;
};

// The instant alone, to be taken off the others.
void UpdateSys(benchmark::State& state) {
    const auto model = make_model(state.range(0) != 0);
    Clock clock;
    for (auto _ : state) clock.tick(*model);
}
BENCHMARK(UpdateSys)->Arg(1)->Arg(0)->ArgName("file");

// One body at an instant that is not the last one's.
void ApparentPlace(benchmark::State& state) {
    const auto model = make_model(state.range(0) != 0);
    const SSO_ID id = id_of(static_cast<int>(state.range(1)));
    Clock clock;
    double place[3];
    for (auto _ : state) {
        clock.tick(*model);
        benchmark::DoNotOptimize(model->GetRADecVis(id, place, 0.0));
    }
}
BENCHMARK(ApparentPlace)
    ->ArgsProduct({{1, 0}, {10, 301, 1, 5, 9, 503, 606}})
    ->ArgNames({"file", "body"});

// UpdateSys and ten bodies: what a frame of a planetarium costs.
void TenBodies(benchmark::State& state) {
    const auto model = make_model(state.range(0) != 0);
    Clock clock;
    double place[3];
    for (auto _ : state) {
        clock.tick(*model);
        for (const int body : kBodies) {
            benchmark::DoNotOptimize(model->GetRADecVis(id_of(body), place, 0.0));
        }
    }
}
BENCHMARK(TenBodies)->Arg(1)->Arg(0)->ArgName("file");

void AsteroidPlace(benchmark::State& state) {
    const auto model = make_model(true);
    const Elements elements{.q = 2.77,
                            .e = 0.08,
                            .i = 0.18,
                            .node = 1.4,
                            .peri = 1.3,
                            .n = 0.00374,
                            .M = 0.5,
                            .epochFraction = 0.5,
                            .epochDay = 2455000};
    model->AddAsteroid(1, {.elements = elements});
    Clock clock;
    double place[3];
    for (auto _ : state) {
        clock.tick(*model);
        benchmark::DoNotOptimize(model->GetRADecVis({SSO_ASTR, 1}, place, 0.0));
    }
}
BENCHMARK(AsteroidPlace);

void Constellation(benchmark::State& state) {
    const auto model = make_model(false);
    double ra = 0.1, dec = -1.5;
    for (auto _ : state) {
        benchmark::DoNotOptimize(model->RADecInConstell(ra, dec));
        ra = ra < 6.2 ? ra + 0.0731 : 0.01;
        dec = dec < 1.5 ? dec + 0.0137 : -1.5;
    }
}
BENCHMARK(Constellation);

// Of a body whose state the model has at hand.
void Magnitude(benchmark::State& state) {
    const auto model = make_model(true);
    const SSO_ID id = id_of(static_cast<int>(state.range(0)));
    float magnitude = 0;
    for (auto _ : state) benchmark::DoNotOptimize(model->GetMagnitude(id, &magnitude));
}
BENCHMARK(Magnitude)->Arg(4)->Arg(6)->Arg(301)->Arg(502)->ArgName("body");

// Phase with the Moon's age, within a lunation already searched and in ever new ones.
void MoonPhase(benchmark::State& state) {
    const auto model = make_model(true);
    double age = 0;
    const double step = static_cast<double>(state.range(0));
    double days = 0;
    for (auto _ : state) {
        days = days < 30000 ? days + step : 0;
        model->UpdateSys(2440000, step > 0 ? days : 0.25);
        benchmark::DoNotOptimize(
            model->PhaseElongation({SSO_MOON, 301}, nullptr, nullptr, nullptr, nullptr, &age));
    }
}
BENCHMARK(MoonPhase)->Arg(0)->Arg(61)->ArgName("days");

}  // namespace
