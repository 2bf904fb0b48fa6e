// Satellites of the Earth in a model.
#include <gmock/gmock.h>

#include <cmath>

#include "core/constants.h"
#include "core/linalg.h"
#include "solsys/sky/instant.h"
#include "tests/support/published_sets.h"
#include "tests/support/sky_models.h"

namespace {

using namespace solsys::test;
using solsys::kDegree;
using solsys::load;
using solsys::Vec3;

class EarthSatellites : public testing::TestWithParam<SolsysReduction> {
  protected:
    EarthSatellites() : model_(make_model(Source::kBuiltIn)) {
        model_->SetReduction(GetParam());
        for (const auto& [name, record] : published_sets()) {
            if (record.meanMotion < 0.001) continue;
            EXPECT_TRUE(model_->AddSatellite(number_of(name), record)) << name;
        }
    }
    static int number_of(const std::string& name) { return std::stoi(name); }

    std::unique_ptr<CSWSolSys> model_;
};

// Rise and set of an independent chain, without light time. 10 m of the satellite's way are
// what the rounding of the instants to 1 ms and the site's figure allow, 1e-6 rad (0.2 arcsec)
// what the classic sidereal rate and the fast trigonometry of horizons leave.
TEST_P(EarthSatellites, StandWhereAnIndependentChainSeesThem) {
    int places = 0;
    for (const NamedRow& row : read_named_csv(kElementSets + "pass_cases.csv")) {
        const OBSERVER place = site(row["longitude"], row["latitude"], row["height_m"] / 1000);
        const SSO_ID id(SSO_TLE, number_of(row.text("case")));
        model_->SetObserver(&place);
        const auto look = [&](const std::string& event, double altitude) {
            const auto t = solsys::sky::Instant::from_iso(row.text(event + "_utc"));
            ASSERT_TRUE(t);
            model_->UpdateSys(t->tt().day, t->tt().fraction);
            double ra_dec[3], azimuth, height;
            ASSERT_TRUE(model_->GetRADec(id, ra_dec, true));
            ASSERT_TRUE(model_->FromRAToAzm(false, &ra_dec[1], &ra_dec[2], &azimuth, &height));
            const double range = ra_dec[0] * 149597870.7, allowed = 0.01 / range + 1e-6;
            EXPECT_NEAR(height, altitude * kDegree, allowed) << row.text("case") << event;
            const double turn = azimuth - row[event + "_azimuth"] * kDegree;
            EXPECT_LT(std::fabs(std::remainder(turn, 2 * M_PI)) * std::cos(height),
                      allowed + 3e-6)
                << row.text("case") << event;
            ++places;
        };
        look("rise", row["threshold"]);
        look("set", row["threshold"]);
    }
    EXPECT_EQ(places, 40);
}

TEST_P(EarthSatellites, AreObjectsLikeOthers) {
    const SSO_ID id(SSO_TLE, 6251);
    std::vector<SSO_ID> all;
    model_->GetFullList(&all);
    EXPECT_TRUE(std::is_sorted(all.begin(), all.end()));
    EXPECT_EQ(std::count(all.begin(), all.end(), id), 1);
    EXPECT_TRUE(model_->CheckSSO(&id));
    EXPECT_NEAR(model_->GetOrbitalPeriod(id) * 1440, 91, 2);
    EXPECT_EQ(model_->GetCentralBodyID(id), SSO_ID(-1, -1));
    EXPECT_EQ(model_->GetSatellite(6251)->number, 6251);

    model_->UpdateSys(2453912, 0.3);
    double about_earth[6], about_sun[6], earth[6], ecliptic[6], seen[4];
    ASSERT_TRUE(model_->GetVecCentre2K(id, 1, about_earth));
    ASSERT_TRUE(model_->GetHelVec2K(id, 1, about_sun));
    ASSERT_TRUE(model_->GetHelVec2K({SSO_PLNT, 3}, 1, earth));
    EXPECT_LT(norm(load(about_sun) - load(earth) - load(about_earth)), 1e-15);
    ASSERT_TRUE(model_->GetHelEcl2K(id, 0, ecliptic));
    EXPECT_NEAR(norm(load(ecliptic)), norm(load(about_sun)), 1e-15);
    ASSERT_TRUE(model_->GetSSOVisVec2K(id, seen, 0));

    // Re-entered: no state, but still there.
    const SSO_ID lost(SSO_TLE, 28350);
    model_->UpdateSys(2453991, 0.3);
    EXPECT_FALSE(model_->GetHelVec2K(lost, 0, about_sun));
    EXPECT_THAT(std::vector(about_sun, about_sun + 3), testing::Each(0.0));
    EXPECT_TRUE(model_->RemoveSatellite(28350));
    EXPECT_FALSE(model_->CheckSSO(&lost));
    EXPECT_FALSE(model_->AddSatellite(1, "1 no", "2 set"));
    model_->ClearSatellites();
    EXPECT_FALSE(model_->GetHelVec2K(id, 0, about_sun));
}

INSTANTIATE_TEST_SUITE_P(Reductions, EarthSatellites,
                         testing::Values(REDUCTION_CLASSIC, REDUCTION_MODERN));

}  // namespace
