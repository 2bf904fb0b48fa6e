#include "complete_series.h"

#include <cmath>
#include <cstdlib>
#include <fstream>
#include <map>
#include <stdexcept>
#include <utility>

namespace complete_series {
namespace {

constexpr long double kArcsec = 3.14159265358979323846264338327950288L / 648000;
using Matrix = long double[3][3];

std::vector<std::vector<std::string>> read_cells(const std::string& name) {
    std::ifstream in(std::string(SOLSYS_TEST_DATA) + "/" + name);
    if (!in) throw std::runtime_error("no " + name);
    std::vector<std::vector<std::string>> rows;
    bool header = true;
    for (std::string line; std::getline(in, line);) {
        if (line.empty() || line[0] == '#' || std::exchange(header, false)) continue;
        auto& row = rows.emplace_back(1);
        for (const char c : line) {
            if (c == ',') {
                row.emplace_back();
            } else if (c != '\'' && c != '"' && c != '\r') {
                row.back() += c;
            }
        }
    }
    return rows;
}

Vector multiply(const Matrix& m, const Vector& a) {
    Vector b{};
    for (std::size_t i = 0; i < 3; ++i)
        for (std::size_t j = 0; j < 3; ++j) b[i] += m[i][j] * a[j];
    return b;
}

// Sums and their derivatives by t.
State sum(const std::vector<Term>& terms, long double t, const Selection& keep) {
    State s{};
    for (const Term& term : terms) {
        if (!keep(term)) continue;
        long double arg = 0, speed = 0;
        for (std::size_t k = 5; k-- > 0;) {
            speed = speed * t + arg;
            arg = arg * t + term.arg[k];
        }
        const long double c = std::cos(arg), d = std::sin(arg);
        const long double value = term.cosine * c + term.sine * d;
        long double power = 1, power_rate = 0;  // of t^power
        for (int n = 1; n <= term.power; ++n) power_rate = n * power, power *= t;
        const auto i = static_cast<std::size_t>(term.coordinate);
        s.r[i] += power * value;
        s.v[i] += power * speed * (term.sine * c - term.cosine * d) + power_rate * value;
    }
    return s;
}

}  // namespace

State operator-(const State& a, const State& b) {
    State c{};
    for (std::size_t i = 0; i < 3; ++i) c.r[i] = a.r[i] - b.r[i], c.v[i] = a.v[i] - b.v[i];
    return c;
}
long double length(const Vector& a) { return std::hypot(a[0], a[1], a[2]); }

std::vector<std::vector<long double>> read_csv(const std::string& name) {
    std::vector<std::vector<long double>> rows;
    for (const auto& cells : read_cells(name)) {
        auto& row = rows.emplace_back();
        for (const std::string& cell : cells) {
            char* end = nullptr;
            const long double x = std::strtold(cell.c_str(), &end);
            row.push_back(*end == '\0' ? x : static_cast<long double>(cell[0]));
        }
    }
    return rows;
}

std::vector<CheckValue> read_check_values() {
    std::vector<CheckValue> values;
    for (const auto& cells : read_cells("reference/analytic_states.csv")) {
        const auto number = [&](std::size_t i) {
            return std::strtold(cells[i].c_str(), nullptr);
        };
        const State state{{number(2), number(3), number(4)}, {number(5), number(6), number(7)}};
        values.push_back({cells[0], static_cast<double>(number(1)), state});
    }
    return values;
}

std::vector<Term> read_rectangular(const std::string& name) {
    std::vector<Term> terms;
    for (const auto& row : read_csv(name)) {
        terms.push_back({static_cast<int>(row[0]) - 'x',
                         static_cast<int>(row[1]),
                         row[2],
                         0,
                         {row[3], row[4], 0, 0, 0},
                         0});
    }
    return terms;
}

State rectangular(const std::vector<Term>& terms, double jd, const Selection& keep) {
    // As printed with the theory.
    static constexpr Matrix kRotation = {{1.000000000000L, 0.000000440360L, -0.000000190919L},
                                         {-0.000000479966L, 0.917482137087L, -0.397776982902L},
                                         {0.000000000000L, 0.397776982902L, 0.917482137087L}};
    State s = sum(terms, (static_cast<long double>(jd) - 2451545) / 365250, keep);
    for (auto& rate : s.v) rate /= 365250;
    return {multiply(kRotation, s.r), multiply(kRotation, s.v)};
}

std::vector<Term> read_moon() {
    const auto arguments = read_csv("planets/elpmpp02_arguments.csv");
    // The combination with the multiples row[first], row[first + 1], ..., its constant reduced.
    const auto combine = [&](const std::vector<long double>& row, std::size_t first,
                             std::size_t count) {
        std::array<long double, 5> arg{};
        for (std::size_t i = 0; i < count; ++i)
            for (std::size_t k = 0; k < 5; ++k)
                arg[k] += row[first + i] * arguments[1 + i][1 + k];
        arg[0] = std::fmod(arg[0], 1296000.0L);
        for (auto& c : arg) c *= kArcsec;
        return arg;
    };
    // f_A and f_B1 to f_B5 worked out from the constants by others, for the fit to DE405.
    static constexpr long double kA = 0.99999999992112631L;
    static constexpr long double kB[5] = {-4.1702915801577374e-11L, -3.8692979889352065e-07L,
                                          8.6442279341830264e-08L, -6.1353171344411778e-07L,
                                          -9.5590936888903516e-13L};
    std::vector<Term> terms;
    const char* names[] = {"longitude.csv", "latitude.csv", "distance.csv"};
    for (int i = 0; i < 3; ++i) {
        const bool distance = i == 2;
        for (const auto& row : read_csv(std::string("planets/elpmpp02_main_") + names[i])) {
            long double a = row[4] * (distance ? kA : 1);
            for (std::size_t k = 0; k < 5; ++k) a += kB[k] * row[5 + k];
            terms.push_back(
                {i, 0, distance ? a : 0, distance ? 0 : a, combine(row, 0, 4), row[11]});
        }
        for (const auto& row : read_csv(std::string("planets/elpmpp02_pert_") + names[i])) {
            const int power = static_cast<int>(row[0]);
            terms.push_back({i, power, row[15], row[14], combine(row, 1, 13), row[16]});
        }
    }
    return terms;
}

State moon(const std::vector<Term>& terms, double jd, const Selection& keep) {
    static const auto w1 = read_csv("planets/elpmpp02_arguments.csv").front();
    const long double t = (static_cast<long double>(jd) - 2451545) / 36525;
    const State series = sum(terms, t, keep);

    long double mean = 0, mean_rate = 0;
    for (std::size_t k = 5; k-- > 0;) {
        mean_rate = mean_rate * t + mean;
        mean = mean * t + w1[1 + k];
    }
    constexpr long double kScale = 384747.9613701725L / 384747.980674318L / 149597870.7L;
    const long double v = kArcsec * (std::fmod(mean, 1296000.0L) + series.r[0]);
    const long double u = kArcsec * series.r[1];
    const long double r = kScale * series.r[2];
    const long double dv = kArcsec * (mean_rate + series.v[0]);
    const long double du = kArcsec * series.v[1];
    const long double dr = kScale * series.v[2] / r;
    const long double cv = std::cos(v), sv = std::sin(v), cu = std::cos(u), su = std::sin(u);
    const Vector a{r * cv * cu, r * sv * cu, r * su};
    const Vector da{dr * a[0] - a[1] * dv - r * cv * su * du,
                    dr * a[1] + a[0] * dv - r * sv * su * du, dr * a[2] + r * cu * du};

    // The pole of the moving ecliptic and its motion (Laskar 1986).
    constexpr long double kP[] = {0.10180391e-4L, 0.47020439e-6L, -0.5417367e-9L,
                                  -0.2507948e-11L, 0.463486e-14L};
    constexpr long double kQ[] = {-0.113469002e-3L, 0.12372674e-6L, 0.1265417e-8L,
                                  -0.1371808e-11L, -0.320334e-14L};
    long double p = 0, q = 0, dp = 0, dq = 0;
    for (int k = 0; k < 5; ++k) {
        p += kP[k] * std::pow(t, k + 1), dp += (k + 1) * kP[k] * std::pow(t, k);
        q += kQ[k] * std::pow(t, k + 1), dq += (k + 1) * kQ[k] * std::pow(t, k);
    }
    const long double s = std::sqrt(1 - p * p - q * q), ds = -(p * dp + q * dq) / s;
    const Matrix m = {{1 - 2 * p * p, 2 * p * q, 2 * p * s},
                      {2 * p * q, 1 - 2 * q * q, -2 * q * s},
                      {-2 * p * s, 2 * q * s, 1 - 2 * p * p - 2 * q * q}};
    const long double pq = dp * q + p * dq, ps = dp * s + p * ds, qs = dq * s + q * ds;
    const Matrix dm = {{-4 * p * dp, 2 * pq, 2 * ps},
                       {2 * pq, -4 * q * dq, -2 * qs},
                       {-2 * ps, 2 * qs, -4 * (p * dp + q * dq)}};
    const Vector moving = multiply(m, da), turning = multiply(dm, a);

    // Ecliptic to equator: eps = 23 deg 26' 21.40960", phi = -0.05028".
    const long double eps = (23 * 3600 + 26 * 60 + 21.40960L) * kArcsec;
    const long double phi = -0.05028L * kArcsec;
    const long double ce = std::cos(eps), se = std::sin(eps);
    const long double cp = std::cos(phi), sp = std::sin(phi);
    const Matrix rotation = {{cp, -sp * ce, sp * se}, {sp, cp * ce, -cp * se}, {0, se, ce}};
    Vector rate{};
    for (std::size_t i = 0; i < 3; ++i) rate[i] = (moving[i] + turning[i]) / 36525;
    return {multiply(rotation, multiply(m, a)), multiply(rotation, rate)};
}

State chebyshev(const std::string& body, double jd) {
    static std::map<std::string, std::vector<std::vector<long double>>> tables;
    auto& rows = tables[body];
    if (rows.empty()) rows = read_csv("planets/" + body + "_barycentric_chebyshev.csv");
    const long double segments = rows.back()[0] + 1;
    const long double days = (2816795.0L - 625295.0L) / segments;
    const long double segment =
        std::fmin(std::floor((static_cast<long double>(jd) - 625295) / days), segments - 1);
    const long double u = 2 * (jd - 625295 - segment * days) / days - 1;
    // T_k(cos a) = cos k a; its slope at the ends of the segment by the limit.
    const long double a = std::acos(u);
    State s{};
    for (const auto& row : rows) {
        if (row[0] != segment) continue;
        const long double k = row[1];
        const long double slope =
            std::fabs(u) < 1 ? k * std::sin(k * a) / std::sin(a) : k * k * std::pow(u, k + 1);
        for (std::size_t i = 0; i < 3; ++i) {
            s.r[i] += row[2 + i] * std::cos(k * a);
            s.v[i] += row[2 + i] * slope * 2 / days;
        }
    }
    return s;
}

}  // namespace complete_series
