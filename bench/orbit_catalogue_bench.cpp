// A whole catalogue of minor planets: loading its text, moving every body and turning it into
// the observer's direction of date.
#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

#include "core/constants.h"
#include "core/linalg.h"
#include "io/minor_planets.h"
#include "io/orbit_records.h"
#include "solsys/star_place.h"

namespace {

using namespace solsys;

constexpr std::size_t kPlanets = 1'500'000;
constexpr int kDay = 2460200;

// A file of that many orbits, removed at the end.
class SyntheticCatalogue {
  public:
    SyntheticCatalogue()
        : path_(std::filesystem::temp_directory_path() / "solsys_orbit_catalogue_bench.dat") {
        std::ofstream out(path_, std::ios::binary);
        out << "SYNTHETIC ORBITS\n\n" << std::string(160, '-') << '\n';
        std::mt19937 random(1);
        std::uniform_real_distribution<double> turn(0, 359.99), size(1.8, 3.6), shape(0, 0.35);
        char line[256];
        for (std::size_t k = 1; k <= kPlanets; ++k) {
            const double a = size(random);
            const double n = 0.01720209895 / kDegree / (a * std::sqrt(a));
            const int length = std::snprintf(
                line, sizeof line,
                "K%02dT%c%dA %5.2f  0.15 K239D %9.5f  %9.5f  %9.5f  %9.5f  %9.7f %11.8f %11.7f"
                "  0 MPO719049  7258 122 1801-2023 0.65 M-v 30k MPCLINUX   4000 "
                "%-28s20230321\n",
                static_cast<int>(k % 24), static_cast<char>('a' + k % 26),
                static_cast<int>(k % 10), 17.5, turn(random), turn(random), turn(random),
                turn(random) / 12, shape(random), n, a, "        2007 TA418");
            out.write(line, length);
        }
        if (!out) throw std::runtime_error("cannot write " + path_.string());
    }
    ~SyntheticCatalogue() {
        std::error_code ignored;
        std::filesystem::remove(path_, ignored);
    }
    SyntheticCatalogue(const SyntheticCatalogue&) = delete;
    SyntheticCatalogue& operator=(const SyntheticCatalogue&) = delete;

    [[nodiscard]] const std::filesystem::path& path() const { return path_; }

  private:
    std::filesystem::path path_;
};

std::vector<solsys_io::MinorPlanet> load_all() {
    static const SyntheticCatalogue catalogue;
    auto planets = solsys_io::load_minor_planets(catalogue.path());
    if (!planets || planets->size() != kPlanets) throw std::runtime_error("orbits were lost");
    return *std::move(planets);
}

void LoadCatalogue(benchmark::State& state) {
    load_all();  // writes the file
    for (auto _ : state) benchmark::DoNotOptimize(load_all().data());
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kPlanets));
    state.counters["MB"] = kPlanets * sizeof(solsys_io::MinorPlanet) / 1e6;
}
BENCHMARK(LoadCatalogue)->Unit(benchmark::kMillisecond)->Iterations(3);

// Position, light time to first order, aberration, equator of date.
void ObserveCatalogue(benchmark::State& state) {
    std::vector<tagAster_SPH_5> records;
    records.reserve(kPlanets);
    for (const auto& planet : load_all())
        records.push_back(solsys_io::to_compact(planet, solsys_io::Plane::equator_j2000,
                                                static_cast<std::uint32_t>(records.size())));
    const State observer{{0.9, 0.3, 0.1}, {-0.006, 0.014, 0.006}};
    const Vec3 beta = kLightDayPerAu * observer.v;
    const double reciprocal_lorentz = std::sqrt(1 - dot(beta, beta));
    const Mat3 cur_from_2k = rotate_x(1e-4) * rotate_z(5e-3);
    int day = kDay;
    for (auto _ : state) {
        ++day;
        Vec3 sum{0, 0, 0};
        for (const tagAster_SPH_5& record : records) {
            double out[6];
            KeplerPQ5(1, day, 0.25, &record, out);
            const Vec3 geometric = load(out) - observer.r;
            const double light_days = kLightDayPerAu * norm(geometric);
            const Vec3 emitted = geometric - light_days * load(out + 3);
            sum += cur_from_2k * aberrated(unit(emitted), beta, reciprocal_lorentz);
        }
        benchmark::DoNotOptimize(sum);
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kPlanets));
}
BENCHMARK(ObserveCatalogue)->Unit(benchmark::kMillisecond)->MinTime(3);

}  // namespace
