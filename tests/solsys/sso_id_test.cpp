#include "solsys/sso_id.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <limits>
#include <utility>

namespace {

SSO_ID named(std::size_t letters) {
    SSO_ID id(SSO_MOON, 501);
    std::memset(id.name, 'x', letters);
    return id;
}

TEST(SsoId, CopiesNamesThatFitInSilence) {
    testing::internal::CaptureStdout();
    const SSO_ID longest = named(79);
    const SSO_ID copy = longest;
    SSO_ID assigned(SSO_PLNT, 1);
    assigned = longest;
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(std::strlen(copy.name), 79U);
    EXPECT_STREQ(assigned.name, longest.name);
    EXPECT_EQ(assigned.type, SSO_MOON);
    EXPECT_EQ(assigned.number, 501);
}

TEST(SsoId, CutsNamesWithoutAnEndAndSaysSo) {
    const SSO_ID endless = named(80);
    testing::internal::CaptureStdout();
    const SSO_ID copy(std::as_const(endless));
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "SSOName too short\n");
    EXPECT_EQ(std::strlen(copy.name), 79U);
}

TEST(SsoId, AssignmentLeavesNothingOfALongerName) {
    SSO_ID id = named(79);
    id = named(3);
    EXPECT_TRUE(std::all_of(id.name + 3, std::end(id.name), [](char c) { return c == 0; }));
    const SSO_ID& same = id;
    id = same;
    EXPECT_STREQ(id.name, "xxx");
}

TEST(SsoId, OrdersByTypeThenNumberBothSigned) {
    constexpr auto kLeast = std::numeric_limits<std::int32_t>::min();
    const SSO_ID ascending[] = {{kLeast, 5},     {-1, -1},       {0, kLeast},   {SSO_TLE, 0},
                                {SSO_MOON, 902}, {SSO_PLNT, -7}, {SSO_PLNT, 3}, {SSO_USCO, 0}};
    for (std::size_t i = 0; i < std::size(ascending); ++i)
        for (std::size_t j = 0; j < std::size(ascending); ++j)
            EXPECT_EQ(ascending[i] < ascending[j], i < j) << i << " " << j;
}

TEST(SsoId, TypeCodesHoldTheirFirstLetterOnTop) {
    EXPECT_EQ(SSO_PLNT, 0x706c6e74);
    EXPECT_EQ(SSO_TLE, 0x544c455f);
}

}  // namespace
