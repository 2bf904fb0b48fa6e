#include "solsys/catalogue.h"

#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <set>

#include "core/constants.h"
#include "solsys/catalogue_table.h"
#include "solsys/sso_id.h"

namespace solsys {
namespace {

// All bodies in the order of the walk.
const std::vector<int>& bodies() {
    static const std::vector<int> numbers = [] {
        std::vector<int> out{10};
        for (const auto& [first, last] : {std::pair{1, 9},
                                          {11, 14},
                                          {301, 301},
                                          {401, 402},
                                          {501, 580},
                                          {601, 683},
                                          {701, 727},
                                          {801, 814},
                                          {901, 905},
                                          {1201, 1201},
                                          {1401, 1402}})
            for (int n = first; n <= last; ++n) out.push_back(n);
        return out;
    }();
    return numbers;
}

TEST(Catalogue, WalkVisitsEveryBodyOnceInOrder) {
    std::vector<int> walk;
    for (int n = kFirstBody; n > 0; n = next_catalogue_number(n)) walk.push_back(n);
    EXPECT_EQ(walk, bodies());
    EXPECT_EQ(next_catalogue_number(1402), -1);
    const std::set<int> known(walk.begin(), walk.end());
    for (int n = -3; n < 2000; ++n) {
        EXPECT_EQ(catalogue_row(n) != nullptr, known.count(n) == 1) << n;
        EXPECT_EQ(next_catalogue_number(n) == 0, known.count(n) == 0) << n;
    }
    EXPECT_EQ(catalogue_row(2147483647), nullptr);
    EXPECT_EQ(catalogue_row(-2147483647 - 1), nullptr);
}

TEST(Catalogue, EntryDeliversTheRowAndLeavesOutputsOfUnknownNumbers) {
    std::int32_t type = 0, parent_type = 0, parent = 0;
    double radius = -1, orbit = -1, period = -1, flattening = -1, gm = -1, zero = 5;
    MagnitudeFn magnitude = nullptr;
    RotationElementsFn rotation = nullptr;
    const auto entry = [&](int number) {
        return GetBodyCatalogueEntry(number, &type, &parent_type, &parent, &radius, &orbit,
                                     &period, &flattening, &gm, &zero, &magnitude, &rotation);
    };
    for (const int number : {-1, 0, 15, 300, 581, 1403, 100000}) {
        EXPECT_EQ(entry(number), 0);
        EXPECT_TRUE(type == 0 && radius == -1 && zero == 5 && magnitude == nullptr) << number;
    }
    for (const int number : bodies()) {
        zero = 5;
        EXPECT_EQ(entry(number), next_catalogue_number(number));
        EXPECT_EQ(type, number > 100 ? SSO_MOON : SSO_PLNT) << number;
        EXPECT_EQ(parent_type, SSO_PLNT);
        EXPECT_EQ(parent, number > 100 ? number / 100 : 10) << number;
        const BodyRow& row = *catalogue_row(number);
        EXPECT_TRUE(radius == row.radius_km && radius > 0 && orbit > 0) << number;
        EXPECT_TRUE(period == row.rotation_period && flattening == row.flattening) << number;
        EXPECT_TRUE(gm == row.gm && zero == 0) << number;
        EXPECT_TRUE(magnitude == row.magnitude && rotation == row.rotation) << number;
    }
    EXPECT_EQ(GetBodyCatalogueEntry(5, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                                    nullptr, nullptr, nullptr, nullptr, nullptr),
              6);
}

// Masses: IAU 2009 system of astronomical constants; flattenings: IAU working group report.
TEST(Catalogue, PlanetsHaveThePublishedMassesAndShapes) {
    constexpr double kPlanets[][3] = {
        {1, 6023600, 0},         {2, 408523.719, 0},      {3, 332946.05, 1 / 298.257},
        {4, 3098703.6, 0.00648}, {5, 1047.3486, 0.06487}, {6, 3497.9018, 0.09796},
        {7, 22902.98, 0.02293},  {8, 19412.26, 0.01708},  {9, 136045556, 0},
        {11, 2.11e9, 0.067}};
    for (const auto& [number, sun_mass_ratio, flattening] : kPlanets) {
        const BodyRow* row = catalogue_row(static_cast<int>(number));
        EXPECT_NEAR(catalogue_row(10)->gm / row->gm / sun_mass_ratio, 1.0, 2e-3) << number;
        EXPECT_NEAR(row->flattening, flattening, 2e-4) << number;
    }
    EXPECT_NEAR(catalogue_row(301)->gm / catalogue_row(3)->gm, 0.0123000371, 1e-7);
}

// A wrong unit or digit shows in the mean density.
TEST(Catalogue, DensitiesArePhysical) {
    constexpr double kG = 6.6743e-11;  // m^3/kg/s^2
    for (const int number : bodies()) {
        const BodyRow* row = catalogue_row(number);
        // Adopted masses known to be off: 605 too small, 903 carries that of 901. The mass of
        // 904 is an upper bound.
        if (row->gm == 0 || number == 605 || number == 903 || number == 904) continue;
        const double gm = row->gm * std::pow(149597870700.0, 3) / std::pow(kSecondsPerDay, 2);
        const double radius = 1000.0 * row->radius_km;
        const double density =
            gm / kG / (4.0 / 3.0 * kPi * std::pow(radius, 3) * (1.0 - row->flattening));
        EXPECT_TRUE(density > 150 && density < 6000) << number << ": " << density;
    }
}

// Two sources for the same turn: the rotation period and the rate of the prime meridian.
TEST(Catalogue, RotationPeriodsAgreeWithTheRotationElements) {
    // Neptune's System differs from the older period by 0.9 %; the adopted periods of 606 and
    // 609 are others; 901 and 903 leave theirs unknown.
    const std::map<int, double> tolerance{{8, 0.01}, {3, 1e-4}, {11, 1e-4}};
    int compared = 0;
    for (const int number : bodies()) {
        const BodyRow* row = catalogue_row(number);
        double ra, dec, w0, w1;
        if (row->rotation_period == 0 || number == 606 || number == 609 ||
            !row->rotation(kJ2000Day, 0.0, number, &ra, &dec, &w0)) {
            continue;
        }
        // After twenty periods the meridian is back; librations leave a degree or two.
        constexpr int kTurns = 20;
        row->rotation(kJ2000Day, kTurns * row->rotation_period, number, &ra, &dec, &w1);
        const double excess = std::fabs(std::remainder(w1 - w0, kTwoPi)) / (kTwoPi * kTurns);
        const auto wider = tolerance.find(number);
        EXPECT_LT(excess, wider == tolerance.end() ? 1e-3 : wider->second) << number;
        ++compared;
    }
    EXPECT_GT(compared, 50);
}

}  // namespace
}  // namespace solsys
