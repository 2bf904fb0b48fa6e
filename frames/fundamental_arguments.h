// Fundamental arguments of the nutation series: Delaunay's arguments of the Moon and the Sun,
// mean longitudes of the planets, general precession.
#pragma once

#include <array>
#include <string_view>

namespace solsys {

// In this order: l, l', F, D, Omega, then the longitudes of Mercury to Neptune, then p_A.
enum FundamentalArgument {
    kArgL,
    kArgLp,
    kArgF,
    kArgD,
    kArgOm,
    kArgMe,
    kArgVe,
    kArgE,
    kArgMa,
    kArgJ,
    kArgSa,
    kArgU,
    kArgNe,
    kArgPa,
    kArgumentCount
};

// The same quantities in the polynomials that different series were fitted with.
enum class ArgumentSet {
    kIers2003,   // CIO locator, equation of the equinoxes
    kLunisolar,  // luni-solar nutation: the first five only
    kPlanetary   // planetary nutation: linear; no l'
};

// [rad]; those that the set does not have are 0. T: Julian centuries of TT (or TDB) since
// J2000.
std::array<double, kArgumentCount> fundamental_arguments(ArgumentSet set, double T);

}  // namespace solsys
