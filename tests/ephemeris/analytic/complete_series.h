// The complete published series, read from data/planets and summed term by term in extended
// precision: slow, plain, and sharing no code with the library.
#pragma once

#include <array>
#include <functional>
#include <string>
#include <vector>

namespace complete_series {

using Vector = std::array<long double, 3>;
struct State {
    Vector r, v;  // au, au/day
};

State operator-(const State& a, const State& b);
long double length(const Vector& a);

// The data rows of a CSV of the data folder; a text cell counts as the code of its first
// letter.
std::vector<std::vector<long double>> read_csv(const std::string& name);

// States of data/reference/analytic_states.csv.
struct CheckValue {
    std::string body;
    double jd;
    State state;
};
std::vector<CheckValue> read_check_values();

// t^power (cosine cos arg + sine sin arg), arg = arg[0] + arg[1] t + ... [rad].
struct Term {
    int coordinate, power;
    long double cosine, sine;
    std::array<long double, 5> arg;
    long double weight;  // of the lunar tables, arcsec
};
using Selection = std::function<bool(const Term&)>;
inline bool all(const Term&) { return true; }

std::vector<Term> read_rectangular(const std::string& name);
std::vector<Term> read_moon();

// Equatorial J2000 states at jd, from the selected terms.
State rectangular(const std::vector<Term>& terms, double jd, const Selection& keep = all);
State moon(const std::vector<Term>& terms, double jd, const Selection& keep = all);
State chebyshev(const std::string& body, double jd);  // from the barycentre

}  // namespace complete_series
