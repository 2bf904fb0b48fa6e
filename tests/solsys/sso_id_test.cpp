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

TEST(SsoId, CopiesCutNamesWithoutAnEndAndSaySo) {
    for (const auto& [letters, said] :
         {std::pair{79U, ""}, std::pair{80U, "SSOName too short\n"}}) {
        const SSO_ID original = named(letters);
        testing::internal::CaptureStdout();
        const SSO_ID copy(std::as_const(original));
        EXPECT_EQ(testing::internal::GetCapturedStdout(), said);
        EXPECT_EQ(std::strlen(copy.name), 79U);
        EXPECT_EQ(copy, SSO_ID(SSO_MOON, 501));
    }
}

TEST(SsoId, OrdersByTypeThenNumberBothSigned) {
    constexpr auto kLeast = std::numeric_limits<std::int32_t>::min();
    const SSO_ID ascending[] = {{kLeast, 5},
                                {-1, -1},
                                {0, kLeast},
                                {0x544c455f /*TLE_*/, 0},
                                {SSO_MOON, 902},
                                {SSO_PLNT, -7},
                                {0x706c6e74 /*plnt*/, 3},
                                {SSO_USCO, 0}};
    for (std::size_t i = 0; i < std::size(ascending); ++i)
        for (std::size_t j = 0; j < std::size(ascending); ++j)
            EXPECT_EQ(ascending[i] < ascending[j], i < j) << i << " " << j;
    EXPECT_EQ(ascending[3].type, SSO_TLE);
    EXPECT_EQ(ascending[6].type, SSO_PLNT);
}

}  // namespace
