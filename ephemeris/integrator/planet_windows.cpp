#include "ephemeris/integrator/planet_windows.h"

#include <cmath>
#include <span>

#include "core/chebyshev.h"
#include "ephemeris/planet_states.h"

namespace solsys {
namespace {

struct WindowShape {
    double days;  // length
    int terms;
};
// By trial, for the accuracy that the header states.
constexpr std::array<WindowShape, kPluto + 1> kShapes{
    {{16, 11},  // Mercury
     {40, 12},
     {32, 14},  // the barycentre of Earth and Moon
     {4, 10},   // the Moon from the Earth
     {80, 12},
     {320, 12},  // Jupiter
     {320, 10},
     {320, 8},
     {320, 8},
     {320, 8}}};
constexpr std::size_t kMostTerms = 18;
constexpr std::size_t kMostWindows = 50'000;  // per body: 20 MB

// cos(pi m / 2n) for the numbers of terms in use.
class CosineTable {
  public:
    CosineTable() {
        for (std::size_t n = 1; n <= kMostTerms; ++n)
            for (std::size_t m = 0; m < 4 * n; ++m)
                values_[n][m] =
                    std::cos(kHalfPi * static_cast<double>(m) / static_cast<double>(n));
    }
    double operator()(std::size_t n, std::size_t m) const { return values_[n][m % (4 * n)]; }

  private:
    double values_[kMostTerms + 1][4 * kMostTerms] = {};
};

// The catalogue's number of a planet.
int number_of(MassiveBody body) {
    const auto row = static_cast<int>(body);
    return body < kTheMoon ? row + 1 : row;
}

bool sample(MassiveBody body, double day, Vec3& out) {
    const double whole = std::floor(day);
    const Instant t{kJ2000Day + static_cast<int>(whole), day - whole};
    State state{}, moon{};
    if ((body == kTheMoon || body == kEarth) && !moon_by_theory(t, false, moon)) return false;
    if (body == kTheMoon) {
        out = moon.r;
        return true;
    }
    if (!planet_state(nullptr, number_of(body), t, false, state)) return false;
    out = state.r + kMoonShare * moon.r;
    return true;
}

}  // namespace

// The window kept under an index, made at its first use.
const PlanetWindows::Window& PlanetWindows::window(MassiveBody body, long index) {
    Body& kept = bodies_[body];
    if (kept.recent != nullptr && kept.recent_index == index) return *kept.recent;
    kept.recent = nullptr;
    if (kept.windows.size() >= kMostWindows) kept.windows.clear();
    Window& made = kept.windows[index];
    if (made.terms.empty()) fit(body, index, made);
    kept.recent = &made;
    kept.recent_index = index;
    return made;
}

// A fit at the zeros of the first polynomial left out.
void PlanetWindows::fit(MassiveBody body, long index, Window& made) {
    const WindowShape shape = kShapes[body];
    const auto n = static_cast<std::size_t>(shape.terms);
    static const CosineTable cosine;  // of multiples of half the angle between nodes
    made.middle = (static_cast<double>(index) + 0.5) * shape.days;
    made.terms.assign(n, Vec3{});
    made.known = true;
    for (std::size_t j = 0; j < n && made.known; ++j) {
        Vec3 r{};
        const double node = cosine(n, 2 * j + 1);
        made.known = sample(body, made.middle + 0.5 * shape.days * node, r);
        for (std::size_t k = 0; k < n; ++k)
            made.terms[k] +=
                ((k == 0 ? 1.0 : 2.0) / shape.terms * cosine(n, k * (2 * j + 1))) * r;
    }
}

// The window of an instant and the place in it, -1 to 1; null outside the theories.
const PlanetWindows::Window* PlanetWindows::window_at(MassiveBody body, double day,
                                                      double offset, double& x) {
    const double days = kShapes[body].days;
    const double at = std::floor((day + offset) / days);
    if (!(std::fabs(at) < 1e7)) return nullptr;
    const Window& w = window(body, static_cast<long>(at));
    x = ((day - w.middle) + offset) * (2.0 / days);
    return w.known ? &w : nullptr;
}

bool PlanetWindows::position(MassiveBody body, double day, double offset, Vec3& out) {
    double x = 0;
    const Window* w = window_at(body, day, offset, x);
    if (w == nullptr) return false;
    out = chebyshev_sum<false>(std::span<const Vec3>(w->terms), x).value;
    return true;
}

bool PlanetWindows::state(MassiveBody body, double day, double offset, State& out) {
    double x = 0;
    const Window* w = window_at(body, day, offset, x);
    if (w == nullptr) return false;
    const auto sum = chebyshev_sum<true>(std::span<const Vec3>(w->terms), x);
    const double rate = 2.0 / kShapes[body].days;
    out = {sum.value, rate * sum.rate};
    return true;
}

}  // namespace solsys
