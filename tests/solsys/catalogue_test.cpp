#include "solsys/catalogue.h"

#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <set>
#include <vector>

#include "core/constants.h"
#include "solsys/catalogue_table.h"
#include "solsys/sso_id.h"

namespace solsys {
namespace {

std::vector<int> walk() {
    std::vector<int> numbers;
    for (int n = kFirstBody; n > 0; n = next_catalogue_number(n)) numbers.push_back(n);
    return numbers;
}

TEST(Catalogue, WalkVisitsEveryBodyOnceInOrder) {
    std::vector<int> expected{10};
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
                                      {1401, 1402}}) {
        for (int n = first; n <= last; ++n) expected.push_back(n);
    }
    ASSERT_EQ(expected.size(), 229u);
    EXPECT_EQ(walk(), expected);

    EXPECT_EQ(next_catalogue_number(1402), -1);
    std::set<int> known(expected.begin(), expected.end());
    for (int n = -3; n < 2000; ++n) {
        EXPECT_EQ(catalogue_row(n) != nullptr, known.count(n) == 1) << n;
        if (known.count(n)) continue;
        EXPECT_EQ(next_catalogue_number(n), 0) << n;
    }
    EXPECT_EQ(catalogue_row(2147483647), nullptr);
    EXPECT_EQ(catalogue_row(-2147483647 - 1), nullptr);
}

TEST(Catalogue, EntryDeliversTheRowAndLeavesOutputsOfUnknownNumbers) {
    for (const int number : walk()) {
        std::int32_t type = 0, parent_type = 0, parent = 0;
        double radius = -1, orbit = -1, rotation_period = -1, flattening = -1, gm = -1,
               zero = 5;
        MagnitudeFn magnitude = nullptr;
        RotationElementsFn rotation = nullptr;
        EXPECT_EQ(GetBodyCatalogueEntry(number, &type, &parent_type, &parent, &radius, &orbit,
                                        &rotation_period, &flattening, &gm, &zero, &magnitude,
                                        &rotation),
                  next_catalogue_number(number));
        EXPECT_EQ(type, number > 100 ? SSO_MOON : SSO_PLNT) << number;
        EXPECT_EQ(parent_type, SSO_PLNT);
        EXPECT_EQ(parent, number > 100 ? number / 100 : 10) << number;
        EXPECT_NE(catalogue_row(parent), nullptr) << number;
        EXPECT_GT(radius, 0) << number;
        EXPECT_GT(orbit, 0) << number;
        EXPECT_GE(rotation_period, 0) << number;
        EXPECT_GE(gm, 0) << number;
        EXPECT_EQ(zero, 0);

        // The law belongs to the body.
        const double observer[3] = {1, 0, 0}, position[3] = {0, 3, 1};
        float v = 99;
        EXPECT_EQ(magnitude(observer, number, position, &v), 0) << number;
        EXPECT_LT(v, 30.0F) << number;
        double ra, dec, w;
        EXPECT_EQ(rotation(kJ2000Day, 0.0, number, &ra, &dec, &w),
                  rotation(kJ2000Day + 1, 0.0, number, &ra, &dec, &w));
    }

    double radius = -1;
    for (const int number : {-1, 0, 15, 300, 581, 1403, 100000}) {
        EXPECT_EQ(GetBodyCatalogueEntry(number, nullptr, nullptr, nullptr, &radius, nullptr,
                                        nullptr, nullptr, nullptr, nullptr, nullptr, nullptr),
                  0);
        EXPECT_EQ(radius, -1);
    }
}

// Masses: IAU 2009 system of astronomical constants; flattenings: IAU working group report.
TEST(Catalogue, PlanetsHaveThePublishedMassesAndShapes) {
    struct Planet {
        int number;
        double sun_mass_ratio, flattening;
    };
    for (const Planet& p :
         {Planet{1, 6023600, 0}, Planet{2, 408523.719, 0}, Planet{3, 332946.05, 1 / 298.257},
          Planet{4, 3098703.6, 0.00648}, Planet{5, 1047.3486, 0.06487},
          Planet{6, 3497.9018, 0.09796}, Planet{7, 22902.98, 0.02293},
          Planet{8, 19412.26, 0.01708}, Planet{9, 136045556, 0}, Planet{11, 2.11e9, 0.067}}) {
        const BodyRow* row = catalogue_row(p.number);
        EXPECT_NEAR(catalogue_row(10)->gm / row->gm / p.sun_mass_ratio, 1.0, 2e-3) << p.number;
        EXPECT_NEAR(row->flattening, p.flattening, 2e-4) << p.number;
    }
    EXPECT_NEAR(catalogue_row(301)->gm / catalogue_row(3)->gm, 0.0123000371, 1e-7);
}

// A wrong unit or digit shows in the mean density.
TEST(Catalogue, DensitiesArePhysical) {
    constexpr double kG = 6.6743e-11;  // m^3/kg/s^2
    constexpr double kAuMetres = 149597870700.0;
    for (const int number : walk()) {
        const BodyRow* row = catalogue_row(number);
        // Adopted masses known to be off: 605 too small, 903 carries that of 901. The mass of
        // 904 is an upper bound.
        if (row->gm == 0 || number == 605 || number == 903 || number == 904) continue;
        const double gm = row->gm * std::pow(kAuMetres, 3) / std::pow(kSecondsPerDay, 2);
        const double volume =
            4.0 / 3.0 * kPi * std::pow(1000.0 * row->radius_km, 3) * (1.0 - row->flattening);
        const double density = gm / kG / volume;
        EXPECT_GT(density, 150) << number;
        EXPECT_LT(density, 6000) << number;
    }
}

// Two sources for the same turn: the rotation period and the rate of the prime meridian.
TEST(Catalogue, RotationPeriodsAgreeWithTheRotationElements) {
    // Neptune's System differs from the older period by 0.9 %; the adopted periods of 606 and
    // 609 are others; 901 and 903 leave theirs unknown.
    const std::map<int, double> tolerance{{8, 0.01}, {3, 1e-4}, {11, 1e-4}};
    int compared = 0;
    for (const int number : walk()) {
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
