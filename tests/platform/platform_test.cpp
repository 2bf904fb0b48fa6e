// Debug text and the folders of the host.
#include "solsys/platform.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/support/debug_text.h"

namespace {

using support::DebugText;

TEST(PrintDebugString, IsFormattedCutAndHandedOver) {
    const DebugText collected;
    PrintDebugString("error: 0x%x (%d)\n", 255u, 255);
    PrintDebugString("%s", "second %d");
    EXPECT_EQ(DebugText::text(), "error: 0xff (255)\nsecond %d");
    DebugText::text().clear();
    PrintDebugString("%s", std::string(100000, 'a').c_str());
    EXPECT_EQ(DebugText::text(), std::string(4095, 'a'));
}

TEST(PrintDebugString, NeverReachesStandardOutput) {
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    PrintDebugString("lost %d\n", 1);
    PrintDebugString(nullptr);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST(StarwickPath, FoldersAreSeparateCopiesWithDefaults) {
    const std::string data = StarwickPath::GetPath(), work = StarwickPath::GetWorkPath(),
                      ephemeris = StarwickPath::GetEphemerisPath();
    // Below the data folder, so that one default serves all.
    EXPECT_EQ(work.substr(0, data.size()), data);
    EXPECT_EQ(ephemeris.substr(0, data.size()), data);
    EXPECT_NE(work, ephemeris);

    std::string mine = "/somewhere";
    StarwickPath::SetWorkPath(mine.c_str());
    mine = "overwritten";
    EXPECT_STREQ(StarwickPath::GetWorkPath(), "/somewhere");
    StarwickPath::SetWorkPath(StarwickPath::GetWorkPath());  // its own text
    EXPECT_STREQ(StarwickPath::GetWorkPath(), "/somewhere");
    EXPECT_EQ(StarwickPath::GetPath(), data);
    EXPECT_EQ(StarwickPath::GetEphemerisPath(), ephemeris);

    StarwickPath::SetWorkPath(nullptr);
    EXPECT_EQ(StarwickPath::GetWorkPath(), work);
}

}  // namespace
