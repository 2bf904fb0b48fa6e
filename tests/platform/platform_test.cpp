// Debug text and the folders of the host.
#include "solsys/platform.h"

#include <gtest/gtest.h>

#include <string>

namespace {

std::string printed;

class DebugText : public testing::Test {
  protected:
    void SetUp() override {
        printed.clear();
        SetDebugPrintHandler([](const char* text) { printed += text; });
    }
    void TearDown() override { SetDebugPrintHandler(nullptr); }
};

TEST_F(DebugText, IsFormattedAndHandedOver) {
    PrintDebugString("error: 0x%x (%d)\n", 255u, 255);
    PrintDebugString("%s", "second %d");
    EXPECT_EQ(printed, "error: 0xff (255)\nsecond %d");
}

TEST_F(DebugText, LongTextIsCut) {
    const std::string longer(100000, 'a');
    PrintDebugString("%s", longer.c_str());
    EXPECT_EQ(printed, std::string(4095, 'a'));
}

TEST_F(DebugText, NeverReachesStandardOutput) {
    SetDebugPrintHandler(nullptr);
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    PrintDebugString("lost %d\n", 1);
    PrintDebugString(nullptr);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(printed, "");
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
