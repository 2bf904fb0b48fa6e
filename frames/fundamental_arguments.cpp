#include "frames/fundamental_arguments.h"

#include <cmath>
#include <cstddef>

#include "core/constants.h"

namespace solsys {
namespace {

using Polynomial = std::array<double, 5>;

struct Row {
    std::string_view set, argument, unit;
    Polynomial c;
};
constexpr Row kRows[] = {
#include "fundamental_arguments.inc"
};

constexpr double kTurnArcsec = 1296000;

struct Argument {
    Polynomial c{};
    bool arcsec = false;
};
using Arguments = std::array<Argument, kArgumentCount>;

constexpr std::string_view kNames[kArgumentCount] = {"l", "lp", "f", "d",  "om", "me", "ve",
                                                     "e", "ma", "j", "sa", "u",  "ne", "pa"};

constexpr Arguments arguments_of(std::string_view set) {
    Arguments all{};
    for (std::size_t i = 0; i < all.size(); ++i) {
        for (const Row& row : kRows) {
            if (row.set == set && row.argument == kNames[i])
                all[i] = {row.c, row.unit == "arcsec"};
        }
    }
    return all;
}
constexpr Arguments kIers2003Arguments = arguments_of("iers2003");
constexpr Arguments kLunisolarArguments = arguments_of("lunisolar");
constexpr Arguments kPlanetaryArguments = arguments_of("planetary");
static_assert(kIers2003Arguments[kArgPa].c[1] > 0 && kLunisolarArguments[kArgOm].c[1] < 0 &&
              kPlanetaryArguments[kArgPa].c[1] > 0);

constexpr const Arguments& arguments_of(ArgumentSet set) {
    switch (set) {
        case ArgumentSet::kLunisolar:
            return kLunisolarArguments;
        case ArgumentSet::kPlanetary:
            return kPlanetaryArguments;
        case ArgumentSet::kIers2003:
            break;
    }
    return kIers2003Arguments;
}

}  // namespace

std::array<double, kArgumentCount> fundamental_arguments(ArgumentSet set, double T) {
    const Arguments& all = arguments_of(set);
    std::array<double, kArgumentCount> angles{};
    for (std::size_t i = 0; i < all.size(); ++i) {
        const Polynomial& c = all[i].c;
        const double sum = c[0] + T * (c[1] + T * (c[2] + T * (c[3] + T * c[4])));
        // Whole turns go before the multipliers come: 1e10 arcsec pile up in four centuries.
        angles[i] =
            all[i].arcsec ? std::fmod(sum, kTurnArcsec) * kArcsec : std::fmod(sum, kTwoPi);
    }
    return angles;
}

}  // namespace solsys
