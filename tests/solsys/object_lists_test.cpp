// Which bodies a model lists, and what they go round.
#include <gmock/gmock.h>

#include "tests/support/models.h"

namespace {

class ObjectLists : public testing::Test {
  protected:
    std::unique_ptr<CSWSolSys> model = support::built_in_model();
    std::vector<SSO_ID> list;
};

TEST_F(ObjectLists, HoldTheCatalogueInKeyOrderOnceOnly) {
    EXPECT_EQ(CSWSolSys().GetFullList(&list), 0);
    EXPECT_EQ(CSWSolSys().GetObserverSSO(), nullptr);
    EXPECT_TRUE(model->InitSys(""));  // a second time
    EXPECT_EQ(model->GetFullList(&list), 229);
    EXPECT_TRUE(std::is_sorted(list.begin(), list.end()));
}

TEST_F(ObjectLists, AppendAndAnswerTheTotal) {
    list.emplace_back(SSO_STAR, 1);
    EXPECT_EQ(model->GetPlanetsList(&list), 1 + 14);
    EXPECT_EQ(model->GetMoonsList(&list), 1 + 14 + 215);
    EXPECT_EQ(model->GetMoonsListFor(SSO_ID(SSO_MOON, 301), &list), 0);  // no planet
    EXPECT_EQ(list.size(), 230U);
    EXPECT_EQ(list[0].type, SSO_STAR);
    EXPECT_EQ(list[1], SSO_ID(SSO_PLNT, 1));
    EXPECT_EQ(list[15], SSO_ID(SSO_MOON, 301));
}

TEST_F(ObjectLists, HoldWhatTheHostAddsToo) {
    AsteroidRecord ceres;
    ceres.elements = {2.77, 0.08, 0.18, 1.4, 1.3, 0.0037, 1.0, 0.0, 2451545};
    ASSERT_TRUE(model->AddAsteroid(-4, ceres));
    UserObjectRecord craft;
    craft.state[0] = 4e-5, craft.state[4] = 4e-3;
    ASSERT_TRUE(model->AddUserObject(9, craft));
    EXPECT_EQ(model->GetFullList(&list), 231);
    EXPECT_TRUE(std::is_sorted(list.begin(), list.end()));
    EXPECT_TRUE(model->CheckSSO(&list.front()));
    std::vector<SSO_ID> asteroids;
    EXPECT_EQ(model->GetAstersList(&asteroids), 1);
    EXPECT_EQ(asteroids[0], SSO_ID(SSO_ASTR, -4));
    EXPECT_EQ(model->GetCometsList(&asteroids), 1);  // none added, the list as it was
    EXPECT_EQ(model->GetCentralBodyID(SSO_ID(SSO_USCO, 9)), SSO_ID(SSO_PLNT, 3));
}

TEST_F(ObjectLists, CentralBodies) {
    for (const std::int32_t type : {SSO_PLNT, SSO_ASTR, SSO_COMT, SSO_FAST, SSO_FCOM})
        EXPECT_EQ(model->GetCentralBodyID(SSO_ID(type, 10)), SSO_ID(SSO_PLNT, 10));
    for (const std::int32_t type : {SSO_SCFT, SSO_USCO, SSO_FSCO, SSO_STAR, SSO_TLE})
        EXPECT_EQ(model->GetCentralBodyID(SSO_ID(type, 1)), SSO_ID(-1, -1));

    // A spacecraft goes round the body of its record in force.
    SpacecraftRecord records[2];
    for (SpacecraftRecord& r : records) r.q = 1, r.e = 0.1, r.n = 0.017;
    records[0].central_number = 3, records[0].epoch_day = 2451545;
    records[1].central_number = 10, records[1].epoch_day = 2451600;
    ASSERT_TRUE(model->AddSpacecraft(7, records, 2));
    for (const auto& [day, centre] : {std::pair{2451500, 3}, {2451590, 3}, {2451601, 10}}) {
        model->SetTime(day, 0.0, false);
        EXPECT_EQ(model->GetCentralBodyID({SSO_SCFT, 7}), SSO_ID(SSO_PLNT, centre)) << day;
    }
}

}  // namespace
