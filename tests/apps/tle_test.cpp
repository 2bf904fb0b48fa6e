// solsys tle.
#include <gmock/gmock.h>

#include <cmath>

#include "tests/support/named_csv.h"
#include "tests/support/run_command.h"

namespace {

using support::run_command;

const std::string kFile = "data/catalogue/element_sets_sample.txt";

// Passes recorded from an independent chain, to a millisecond of its own.
TEST(TleCommand, ListsTheRecordedPasses) {
    int found = 0;
    for (const auto& pass :
         solsys::test::read_named_csv("data/reference/element_sets/pass_cases.csv")) {
        const std::string day = pass.text("rise_utc").substr(0, 10);
        if (pass.text("site") != "tromso" || pass["threshold"] != 0 || day != "2006-06-25")
            continue;
        const auto rows =
            run_command("tle " + kFile + " --site 69.65,18.96,10 --least 0 --name " +
                        pass.text("case") + " --from 2006-06-25 --to 2006-06-27 --json")
                .json();
        for (const auto& row : rows) {
            if (row["rise_utc"].is_null() || row["rise_utc"].get<std::string>().substr(0, 22) !=
                                                 pass.text("rise_utc").substr(0, 22))
                continue;
            ++found;
            EXPECT_NEAR(row["rise_azimuth_deg"], pass["rise_azimuth"], 2e-4);
            EXPECT_NEAR(row["set_azimuth_deg"], pass["set_azimuth"], 2e-4);
            EXPECT_NEAR(row["culmination_altitude_deg"], pass["culmination_altitude"], 2e-4);
            EXPECT_NEAR(row["sun_altitude_deg"], pass["sun_altitude"], 0.02);
            EXPECT_EQ(row["sunlit"], "yes");
        }
    }
    EXPECT_EQ(found, 2);
}

TEST(TleCommand, DrawsThePassAndRefusesWhatItCannotRead) {
    const auto picture = run_command("tle " + kFile +
                                     " --name delta --city Hobart --from 2006-06-25 --to "
                                     "2006-06-27 --visible --svg -");
    EXPECT_EQ(picture.status, 0);
    EXPECT_THAT(picture.out, testing::AllOf(testing::HasSubstr("DELTA 1 DEB over Hobart"),
                                            testing::HasSubstr(">06:24<")));
    for (const char* arguments :
         {"no-such-file --city Oslo", "README.md --city Oslo",
          "data/catalogue/element_sets_sample.txt --city Oslo --name x"})
        EXPECT_EQ(run_command(std::string("tle ") + arguments).status, 2) << arguments;
}

}  // namespace
