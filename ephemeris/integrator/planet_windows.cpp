#include "ephemeris/integrator/planet_windows.h"

#include <cmath>

#include "ephemeris/de/open_file.h"
#include "ephemeris/planet_states.h"

namespace solsys {
namespace {

struct WindowShape {
    double days;  // length
    int terms;
};
// By trial, for the accuracy that the header states.
constexpr std::array<WindowShape, kPluto + 1> kShapes{{{16, 11},  // Mercury
                                                       {40, 12},
                                                       {16, 14},  // the Earth, led by the Moon
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

bool in_file(double day) {
    const double* range = DE_Ephemeris::getTimeRange();
    const double jd = kJ2000Day + day;
    return de_file_is_open() && jd >= range[0] && jd <= range[1];
}

// The catalogue's number of a planet.
int number_of(MassiveBody body) {
    const auto row = static_cast<int>(body);
    return body < kTheMoon ? row + 1 : row;
}

}  // namespace

bool PlanetWindows::renew() {
    if (file_changes_ == de_file_changes()) return false;
    file_changes_ = de_file_changes();
    file_ = DE_EvalState{};
    bodies_ = {};
    return true;
}

bool PlanetWindows::sample(MassiveBody body, bool from_file, double day, Vec3& out) {
    const double whole = std::floor(day);
    const Instant t{kJ2000Day + static_cast<int>(whole), day - whole};
    DE_EvalState* file = from_file ? &file_ : nullptr;
    State state{};
    const bool known = body == kTheMoon ? moon_from_earth(file, t, false, state)
                                        : planet_state(file, number_of(body), t, false, state);
    out = state.r;
    return known;
}

// A fit at the zeros of the first polynomial left out.
const PlanetWindows::Window& PlanetWindows::window(MassiveBody body, long index) {
    Body& kept = bodies_[body];
    if (kept.recent != nullptr && kept.recent_index == index) return *kept.recent;
    if (kept.windows.size() >= kMostWindows) kept.windows.clear();
    Window& made = kept.windows[index];
    kept.recent = &made;
    kept.recent_index = index;
    if (!made.terms.empty()) return made;

    const WindowShape shape = kShapes[body];
    const auto n = static_cast<std::size_t>(shape.terms);
    static const CosineTable cosine;  // of multiples of half the angle between nodes
    made.middle = (static_cast<double>(index) + 0.5) * shape.days;
    made.terms.assign(n, Vec3{});
    made.known = true;
    // A window that the file does not cover whole is the theory's, or it would be no smooth
    // curve.
    const bool from_file = use_file_ && in_file(made.middle - 0.5 * shape.days) &&
                           in_file(made.middle + 0.5 * shape.days);
    for (std::size_t j = 0; j < n && made.known; ++j) {
        Vec3 r{};
        const double node = cosine(n, 2 * j + 1);
        made.known = sample(body, from_file, made.middle + 0.5 * shape.days * node, r);
        for (std::size_t k = 0; k < n; ++k)
            made.terms[k] +=
                ((k == 0 ? 1.0 : 2.0) / shape.terms * cosine(n, k * (2 * j + 1))) * r;
    }
    return made;
}

bool PlanetWindows::position(MassiveBody body, double day, double offset, Vec3& out) {
    const double days = kShapes[body].days;
    const double at = std::floor((day + offset) / days);
    if (!(std::fabs(at) < 1e7)) return false;
    const Window& w = window(body, static_cast<long>(at));
    if (!w.known) return false;

    // Clenshaw's sum.
    const double x = ((day - w.middle) + offset) * (2.0 / days);
    Vec3 b1{}, b2{};
    for (std::size_t k = w.terms.size() - 1; k >= 1; --k) {
        const Vec3 b0 = w.terms[k] + 2 * x * b1 - b2;
        b2 = b1;
        b1 = b0;
    }
    out = w.terms[0] + x * b1 - b2;
    return true;
}

}  // namespace solsys
