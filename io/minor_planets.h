// Orbits of minor planets in the one-line format of the Minor Planet Center (MPCORB).
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

// Heliocentric osculating elements, mean ecliptic and equinox J2000; 120 bytes, so that the
// whole catalogue stays in memory.
struct MinorPlanet {
    double epoch = 0;          // Julian date, TT
    double a = 0;              // semi-major axis [au]
    double e = 0;              // below 1
    double i = 0;              // [rad]
    double node = 0;           // [rad]
    double peri = 0;           // [rad]
    double M = 0;              // mean anomaly at the epoch [rad]
    double n = 0;              // mean motion [rad/day]
    float H = kUnknown;        // absolute magnitude
    float G = kUnknown;        // slope parameter
    std::uint32_t number = 0;  // 0: not numbered
    char packed[8] = {};       // packed designation
    char name[36] = {};        // in words: "Ceres", "2007 TA418"

    static constexpr float kUnknown = 99.0F;
};
static_assert(sizeof(MinorPlanet) == 120);

// One line of the format; the message says what is wrong with it.
struct MinorPlanetLine {
    std::optional<MinorPlanet> planet;
    std::string_view message;
};
MinorPlanetLine parse_minor_planet(std::string_view line);

// Reads orbits one by one, in constant memory. A header down to its line of dashes, and blank
// lines, are skipped in silence; every other line that holds no orbit is reported and skipped.
// A file without a header is read from its first line.
ReadSummary read_minor_planets(std::istream& in,
                               const std::function<void(const MinorPlanet&)>& on_planet,
                               const ProblemHandler& on_problem = {});

// The whole file; empty if it cannot be opened and read to its end.
std::optional<std::vector<MinorPlanet>> load_minor_planets(
    const std::filesystem::path& path, const ProblemHandler& on_problem = {});

}  // namespace solsys_io
