// The picture of the sky.
#include <gmock/gmock.h>

#include "tests/support/run_command.h"

namespace {

using support::run_command;
using testing::HasSubstr;
using testing::Not;

std::string chart_of(const std::string& arguments) {
    const auto path = std::filesystem::temp_directory_path() / "solsys_sky_test.svg";
    const auto outcome = run_command("sky " + arguments + " --svg " + path.string());
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    const std::string svg = support::contents(path);
    std::filesystem::remove(path);
    EXPECT_THAT(svg, testing::StartsWith("<svg "));
    EXPECT_THAT(svg, testing::EndsWith("</svg>\n"));
    EXPECT_THAT(svg, Not(HasSubstr("\"nan")));
    return svg;
}

TEST(SkyChart, ShowsWhatIsUpAndNothingElse) {
    // A November night in Paris: Orion's stars, Sirius, Mars and Jupiter up; the Sun, Venus and
    // the southern stars down.
    const std::string night = chart_of("--city Paris --time 2026-11-21T03:00");
    for (const char* name : {">Sirius<", ">Betelgeuse<", ">Jupiter<", ">Mars<"})
        EXPECT_THAT(night, HasSubstr(name));
    for (const char* name : {">Sun<", ">Venus<", ">Canopus<", ">Acrux<"})
        EXPECT_THAT(night, Not(HasSubstr(name)));

    // By day the Sun and no star.
    const std::string day = chart_of("--city Paris --time 2026-06-21T12:00");
    EXPECT_THAT(day, HasSubstr(">Sun<"));
    EXPECT_THAT(day, Not(HasSubstr(">Sirius<")));

    // From the south pole in its winter: the southern stars.
    EXPECT_THAT(chart_of("--site=-90,0 --time 2026-06-21T12:00"), HasSubstr(">Acrux<"));
}

TEST(SkyChart, CannotBeWrittenNowhere) {
    EXPECT_EQ(run_command("sky --svg /no/such/folder/sky.svg").status, 2);
}

}  // namespace
