// Cities, sites and bodies by the names that people give them.
#include <gtest/gtest.h>

#include "solsys/sky/body.h"
#include "solsys/sky/site.h"

namespace solsys::sky {
namespace {

struct Asked {
    const char* text;
    const char* answer;  // name, or what the failure suggests
};

class Cities : public testing::TestWithParam<Asked> {};
TEST_P(Cities, AreFound) {
    const auto site = find_city(GetParam().text);
    EXPECT_EQ(site ? site->name : "", GetParam().answer) << site.message();
}
INSTANTIATE_TEST_SUITE_P(
    Names, Cities,
    testing::Values(Asked{"London", "London (GB)"}, Asked{"MÜNCHEN", "Munich (DE)"},
                    Asked{"Munchen", "Munich (DE)"}, Asked{"New York", "New York City (US)"},
                    Asked{"LA", "Los Angeles (US)"}, Asked{"são paulo", "São Paulo (BR)"},
                    Asked{"delhi", "Delhi (IN)"}, Asked{"Edinburgh", "Edinburgh (GB)"},
                    Asked{"London, CA", "London (CA)"},
                    Asked{"Springfield, IL, US", "Springfield (US)"},
                    Asked{"\u5317\u4eac", "Beijing (CN)"}, Asked{"Nowhere", ""},
                    Asked{"", ""}));

TEST(Cities, OfOneNameStandByPopulation) {
    const auto all = cities_called("Springfield");
    ASSERT_GT(all.size(), 3U);
    EXPECT_NEAR(all[0].latitude_deg, 37.2, 0.1);  // the one in Missouri
    EXPECT_NE(find_city("Lodnon").message().find("London"), std::string::npos);
}

struct Angles {
    const char* text;
    double latitude, longitude, height;
};
class Sites : public testing::TestWithParam<Angles> {};
TEST_P(Sites, AreRead) {
    const auto [text, latitude, longitude, height] = GetParam();
    const auto site = parse_site(text);
    ASSERT_TRUE(site) << site.message();
    EXPECT_NEAR(site->latitude_deg, latitude, 1e-9);
    EXPECT_NEAR(site->longitude_deg, longitude, 1e-9);
    EXPECT_EQ(site->height_m, height);
}
INSTANTIATE_TEST_SUITE_P(
    Forms, Sites,
    testing::Values(Angles{"51.5,-0.1", 51.5, -0.1, 0}, Angles{"51.5N,0.1W", 51.5, -0.1, 0},
                    Angles{"S33:51:30, E151:12:30, 25", -33 - 51 / 60. - 30 / 3600.,
                           151 + 12 / 60. + 30 / 3600., 25},
                    Angles{"51d30m N, 0d7m W, 120m", 51.5, -7 / 60., 120},
                    Angles{"51\u00b030'00\"N,-0:07:00", 51.5, -7 / 60., 0}));

TEST(Sites, ThatAreNoneAreRefused) {
    for (const char* text : {"", "51.5", "91,0", "51.5,-0.1,x", "51.5,-0.1,1e300", "N,E",
                             "51:60,0", "-51.5N,0", "51.5,0,10,20", "nan,0"})
        EXPECT_FALSE(parse_site(text)) << text;
}

struct Called {
    const char* text;
    const char* code;
};
class Bodies : public testing::TestWithParam<Called> {};
TEST_P(Bodies, AreFound) {
    const auto body = find_body(GetParam().text);
    EXPECT_EQ(body ? code_of(body->id) : "", GetParam().code) << body.message();
}
INSTANTIATE_TEST_SUITE_P(
    Names, Bodies,
    testing::Values(Called{"jupiter", "plnt:5"}, Called{"the Moon", "moon:301"},
                    Called{"IO", "moon:501"}, Called{"plnt:10", "plnt:10"},
                    Called{"Sirius", "star:32349"}, Called{"\u03b1 Cen", "star:71683"},
                    Called{"alpha CMa", "star:32349"}, Called{"HR 2491", "star:32349"},
                    Called{"hd:48915", "star:32349"}, Called{"9 CMa", "star:32349"},
                    Called{"Rana", "star:17378"}, Called{"Toliman", "star:71681"},
                    Called{"vesta", "astr:4"}, Called{"433", "astr:433"},
                    Called{"M31", "gala:31"}, Called{"Messier 31", "gala:31"},
                    Called{"NGC 224", "gala:31"}, Called{"ngc869", "clst:124"},
                    Called{"jupitr", ""}, Called{"", ""}, Called{"plnt:99", ""},
                    Called{"hip:1", ""}));

TEST(Bodies, MisspeltAreGuessed) {
    for (const auto& [typed, meant] :
         {std::pair{"jupitr", "Jupiter"}, std::pair{"sirus", "Sirius"},
          std::pair{"betelgeuze", "Betelgeuse"}, std::pair{"ganimede", "Ganymede"}})
        EXPECT_NE(find_body(typed).message().find(meant), std::string::npos) << typed;
    EXPECT_EQ(find_bodies("planets")->size(), 7U);
    EXPECT_EQ(find_bodies("all")->size(), 10U);
}

}  // namespace
}  // namespace solsys::sky
