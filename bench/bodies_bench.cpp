// The body catalogue's functions: orientation, magnitude, constellation.
#include <benchmark/benchmark.h>

#include <cmath>
#include <random>
#include <vector>

#include "core/constants.h"
#include "frames/body_rotation.h"
#include "frames/rotation_elements.h"
#include "solsys/catalogue_table.h"
#include "solsys/constellation_table.h"
#include "solsys/magnitudes.h"

namespace {

using namespace solsys;

std::vector<Vec3> random_directions(std::size_t count) {
    std::mt19937 random(1);
    std::normal_distribution<double> normal;
    std::vector<Vec3> out(count);
    for (Vec3& v : out) v = unit({normal(random), normal(random), normal(random)});
    return out;
}

// Angles to the table alone.
void Constellation(benchmark::State& state) {
    const auto directions = random_directions(4096);
    std::vector<std::pair<double, double>> angles;
    for (const Vec3& v : directions) {
        angles.emplace_back(std::atan2(v.y, v.x) + kPi, std::asin(v.z));
    }
    std::size_t i = 0;
    for (auto _ : state) {
        const auto [ra, dec] = angles[i++ & 4095];
        benchmark::DoNotOptimize(constellation_of(ra, dec));
    }
}
BENCHMARK(Constellation);

// With the way a position takes: to a vector, through two rotations, back to angles.
void ConstellationOfAPosition(benchmark::State& state) {
    const auto directions = random_directions(4096);
    std::vector<std::pair<double, double>> angles;
    for (const Vec3& v : directions) {
        angles.emplace_back(std::atan2(v.y, v.x) + kPi, std::asin(v.z));
    }
    const Mat3 cur_from_j2000 = rotate_x(0.001) * rotate_z(0.003);
    const Mat3 b1850_from_j2000 = rotate_z(-0.016) * rotate_y(-0.014) * rotate_z(-0.016);
    std::size_t i = 0;
    for (auto _ : state) {
        const auto [ra, dec] = angles[i++ & 4095];
        const double c = std::cos(dec);
        const Vec3 v{c * std::cos(ra), c * std::sin(ra), std::sin(dec)};
        const Vec3 w = b1850_from_j2000 * transpose_times(cur_from_j2000, v);
        double a = std::atan2(w.y, w.x);
        if (a < 0) a += kTwoPi;
        benchmark::DoNotOptimize(constellation_of(a, std::atan(w.z / std::hypot(w.x, w.y))));
    }
}
BENCHMARK(ConstellationOfAPosition);

void Magnitude(benchmark::State& state) {
    const int body = static_cast<int>(state.range(0));
    const MagnitudeFn law = catalogue_row(body)->magnitude;
    const double position[3] = {3.1, 3.9, 0.2};
    double observer[3] = {0.7, -0.7, 0.01};
    float v = 0;
    for (auto _ : state) {
        observer[0] += 1e-9;
        law(observer, body, position, &v);
        benchmark::DoNotOptimize(v);
    }
}
BENCHMARK(Magnitude)->Arg(2)->Arg(5)->Arg(6)->Arg(11)->Arg(501)->Arg(683)->Arg(814);

void RotationElements(benchmark::State& state) {
    const int body = static_cast<int>(state.range(0));
    const RotationElementsFn function = catalogue_row(body)->rotation;
    double fraction = 0, ra = 0, dec = 0, w = 0;
    for (auto _ : state) {
        fraction += 1e-6;
        function(2460000, fraction, body, &ra, &dec, &w);
        benchmark::DoNotOptimize(w);
    }
}
BENCHMARK(RotationElements)->Arg(3)->Arg(4)->Arg(5)->Arg(6)->Arg(301)->Arg(501)->Arg(801);

void BodyMatrix(benchmark::State& state) {
    double w = 0;
    for (auto _ : state) {
        w += 0.01;
        benchmark::DoNotOptimize(body_matrix_from_pole(1.0, 0.5, w));
    }
}
BENCHMARK(BodyMatrix);

void CatalogueWalk(benchmark::State& state) {
    for (auto _ : state) {
        for (int n = kFirstBody; n > 0; n = next_catalogue_number(n)) {
            benchmark::DoNotOptimize(catalogue_row(n));
        }
    }
}
BENCHMARK(CatalogueWalk);

}  // namespace
