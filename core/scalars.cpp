// Exported scalar helpers.
#include <algorithm>
#include <cmath>
#include <cstdint>

#include "solsys/toolkit.h"

namespace {

constexpr double kIntegralExponent = 1e-16;

}  // namespace

double Round_LDouble(double x) { return std::trunc(x > 0 ? x + 0.5 : x - 0.5); }

double sign(double a, double b) { return b >= 0 ? a : -a; }

double SafePow(double base, double e) {
    // Only exponents that round down in magnitude count as roots: 1/3 does, 0.7 does not.
    if (base < 0 && std::fabs(e) - std::fabs(Round_LDouble(e)) > kIntegralExponent)
        return -std::pow(std::fabs(base), e);
    return std::pow(base, e);
}

char* fast_itoa10(std::int32_t value, char* buffer) {
    // Unsigned, so that the most negative number has a magnitude too.
    std::uint32_t magnitude =
        value < 0 ? 0U - static_cast<std::uint32_t>(value) : static_cast<std::uint32_t>(value);
    char* end = buffer;
    do {
        *end++ = static_cast<char>('0' + magnitude % 10);
        magnitude /= 10;
    } while (magnitude != 0);
    if (value < 0) *end++ = '-';
    *end = '\0';
    std::reverse(buffer, end);
    return end;
}

int solveCubic(void) { return 0; }
int solveQuatric(void) { return solveCubic(); }
