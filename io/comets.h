// Orbits of comets in the one-line format of the Minor Planet Center (CometEls).
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <istream>
#include <optional>
#include <string_view>
#include <vector>

#include "io/problem.h"

namespace solsys_io {

// Heliocentric osculating elements, mean ecliptic and equinox J2000.
struct Comet {
    double epoch = 0;            // Julian date, TT; that of perihelion if none is given
    double perihelion_time = 0;  // Julian date, TT
    double q = 0;                // perihelion distance [au]
    double e = 0;
    double i = 0;        // [rad]
    double node = 0;     // [rad]
    double peri = 0;     // [rad]
    float H = kUnknown;  // total magnitude H + 5 log10(distance) + K log10(r)
    float K = kUnknown;
    std::uint32_t number = 0;  // of a periodic comet; 0: none
    char kind = ' ';           // P, C, D, X, A or I
    char name[59] = {};        // designation and name: "C/1995 O1 (Hale-Bopp)"

    static constexpr float kUnknown = 99.0F;
};
static_assert(sizeof(Comet) == 128);

// One line of the format; the message says what is wrong with it.
struct CometLine {
    std::optional<Comet> comet;
    std::string_view message;
};
CometLine parse_comet(std::string_view line);

// Reads orbits one by one, in constant memory. Blank lines are skipped in silence, every other
// line that holds no orbit is reported and skipped.
ReadSummary read_comets(std::istream& in, const std::function<void(const Comet&)>& on_comet,
                        const ProblemHandler& on_problem = {});

// The whole file; empty if it cannot be opened and read to its end.
std::optional<std::vector<Comet>> load_comets(const std::filesystem::path& path,
                                              const ProblemHandler& on_problem = {});

}  // namespace solsys_io
