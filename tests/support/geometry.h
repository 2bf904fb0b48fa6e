// Angles, directions, differences and rows of vectors, as many tests need them.
#pragma once

#include <cmath>
#include <cstddef>
#include <string>
#include <vector>

#include "core/instant.h"
#include "core/linalg.h"

namespace solsys::test {

inline double angle_between(Vec3 a, Vec3 b) { return std::atan2(norm(cross(a, b)), dot(a, b)); }

inline Vec3 direction(double ra, double dec) {
    return {std::cos(dec) * std::cos(ra), std::cos(dec) * std::sin(ra), std::sin(dec)};
}

// The sum over the rows: zero for equal matrices, never below the largest difference.
inline double distance(const Mat3& a, const Mat3& b) {
    return norm(a.r0 - b.r0) + norm(a.r1 - b.r1) + norm(a.r2 - b.r2);
}

inline Instant instant(double jd) {
    return {static_cast<int>(std::floor(jd)), jd - std::floor(jd)};
}

// Three, or six, cells of a reference row.
inline Vec3 vector_of(const std::vector<std::string>& row, std::size_t first) {
    return {std::stod(row[first]), std::stod(row[first + 1]), std::stod(row[first + 2])};
}
inline State state_of(const std::vector<std::string>& row, std::size_t first) {
    return {vector_of(row, first), vector_of(row, first + 3)};
}

}  // namespace solsys::test
