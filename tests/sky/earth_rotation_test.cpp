// What the typed layer tells of tables of the Earth's rotation, and what it makes of them.
#include "solsys/sky/earth_rotation.h"

#include <gtest/gtest.h>

#include <cmath>

#include "solsys/sky/places.h"
#include "tests/support/temp_folder.h"

namespace solsys::sky {
namespace {

const std::string kFinals = SOLSYS_TEST_DATA "/reference/finals2000A_excerpt.txt";

Result<EarthOrientationTable> table_of(const std::string& text) {
    const TempFolder folder;
    return read_earth_orientation(folder.write("table", text));
}

TEST(EarthRotationInputs, TurnTheHorizonBySoMuch) {
    auto model = Model::open();
    EXPECT_EQ(model->reduction(), REDUCTION_MODERN);
    model->observe_from(*parse_site("0,0"));
    const auto azimuth_of_sun = [&](const char* when) {
        model->move_to(*Instant::from_iso(when));
        return horizontal_of(*model, {40, 60}).azimuth_deg;
    };
    const char *inside = "2016-02-10T00:00Z", *outside = "2020-02-10T00:00Z";
    const double at_first[] = {azimuth_of_sun(inside), azimuth_of_sun(outside)};
    ASSERT_TRUE(set_earth_rotation(*model, 0.5));
    const double by_half_a_second[] = {azimuth_of_sun(inside) - at_first[0],
                                       azimuth_of_sun(outside) - at_first[1]};
    ASSERT_TRUE(set_earth_orientation(*model, *read_earth_orientation(kFinals)));
    // Inside the table it answers (the pole's part is 0.3 arcsec), outside the value serves on.
    EXPECT_NEAR(azimuth_of_sun(inside) - at_first[0], by_half_a_second[0] * 0.01331 / 0.5,
                1e-4);
    EXPECT_EQ(azimuth_of_sun(outside) - at_first[1], by_half_a_second[1]);

    EXPECT_FALSE(set_earth_rotation(*model, 1.5));
    EXPECT_FALSE(set_earth_rotation(*model, std::nan("")));
    EXPECT_FALSE(set_earth_rotation(*model, 0, 3, 0));
    EXPECT_FALSE(set_earth_rotation(*model, 0, std::nan(""), std::nan("")));
    EXPECT_EQ(azimuth_of_sun(outside) - at_first[1], by_half_a_second[1]);
}

TEST(EarthRotationInputs, TellWhatIsWrongWithATable) {
    auto model = Model::open();
    const auto row = [](int mjd, const char* ut1) {
        return "2015 12 " + std::to_string(mjd - 57356) + " " + std::to_string(mjd) +
               " 0.1 0.2 " + ut1 + " 0.0013\n";
    };
    const auto table =
        table_of(row(57359, "0.02") + row(57357, "0.02") + row(57359, "0.03") +
                 row(57358, "7.5") + "2015 12 4 57361 0 0 0 0\n" + row(57370, "0.02"));
    ASSERT_TRUE(table) << table.message();
    ASSERT_EQ(table->problems.size(), 1U);
    EXPECT_EQ(table->problems[0].substr(0, 7), "line 5:");
    const auto report = set_earth_orientation(*model, *table);
    ASSERT_TRUE(report);
    EXPECT_EQ(summary_of(*report),
              "1 rows left out as impossible; 1 rows out of order put where they belong; "
              "1 dates repeated, the last of each counts; "
              "1 holes of more than 5.5 days, not bridged");
    EXPECT_EQ(summary_of(*set_earth_orientation(*model, *read_earth_orientation(kFinals))),
              "1 holes of more than 5.5 days, not bridged");

    EXPECT_FALSE(read_earth_orientation("no/such/file"));
    EXPECT_FALSE(read_earth_orientation(SOLSYS_TEST_DATA));
    EXPECT_FALSE(table_of("no table\n"));
    EXPECT_FALSE(set_earth_orientation(*model, *table_of(row(57359, "9"))));
    EXPECT_TRUE(set_leap_seconds(*model, SOLSYS_TEST_DATA "/reference/leap_seconds_list.txt"));
    EXPECT_FALSE(set_leap_seconds(*model, kFinals));
    EXPECT_FALSE(set_leap_seconds(*model, "no/such/file"));
}

}  // namespace
}  // namespace solsys::sky
