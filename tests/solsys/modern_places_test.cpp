// The modern reduction of a whole model against recorded chains of two other libraries on the
// same ephemeris (tools/reference/modern_reduction.py): planets, the Moon, Galilean satellites
// and stars; the axes of the ephemeris, the true equator of date, the horizon of a site.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "tests/support/named_csv.h"
#include "tests/support/sky_models.h"

namespace solsys::test {
namespace {

constexpr double kMas = 1e-3 * kArcsec;

void go_to(CSWSolSys& model, const NamedRow& row) {
    EXPECT_TRUE(model.SetUT1(row["dut1_s"]));
    EXPECT_TRUE(model.SetPolarMotion(row["xp_arcsec"], row["yp_arcsec"]));
    const OBSERVER from =
        row.text("height_km").empty()
            ? centre_of(3)
            : site(row["longitude_deg"], row["latitude_deg"], row["height_km"]);
    model.SetObserver(&from);
    model.UpdateSys(static_cast<int>(row["day"]), row["fraction"]);
}

struct Largest {
    double gcrs = 0, of_date = 0, horizon = 0, skyfield = 0;
    int cases = 0;

    void add(const CSWSolSys& model, const NamedRow& row, Vec3 gcrs_seen, Vec3 date_seen) {
        const auto widen = [&](double& most, const char* stem, Vec3 seen) {
            most = std::max(most, angle_between(row.vector(stem), seen) / kMas);
        };
        widen(gcrs, "gcrs_", gcrs_seen);
        widen(of_date, "date_", date_seen);
        ++cases;
        if (row.text("height_km").empty()) return widen(skyfield, "skyfield_", gcrs_seen);
        double v[3];
        store(date_seen, v);
        model.VecFromRAToAzm(v, v);
        widen(horizon, "horizon_", load(v));
    }
    void expect() const {
        EXPECT_LT(gcrs, 0.01);
        EXPECT_LT(of_date, 0.05);
        EXPECT_LT(horizon, 0.1);
        EXPECT_LT(skyfield, 0.01);
    }
};

TEST(ModernPlaces, OfBodiesAgreeWithTheRecordedChains) {
    const auto model = make_model(Source::kDe405);
    model->SetReduction(REDUCTION_MODERN);
    Largest largest;
    for (const auto& row : read_named_csv(SOLSYS_TEST_DATA "/reference/modern_reduction.csv")) {
        const int body = static_cast<int>(row["body"]);
        const SSO_ID id(body > 100 ? SSO_MOON : SSO_PLNT, body);
        go_to(*model, row);
        double seen[4], place[3];
        ASSERT_TRUE(model->GetSSOVisVec2K(id, seen, 0.0));
        ASSERT_TRUE(model->GetRADecVis(id, place, 0.0));
        largest.add(*model, row, load(seen), direction(place[1], place[2]));
    }
    largest.expect();
    EXPECT_EQ(largest.cases, 24 * 14);
}

TEST(ModernPlaces, OfStarsAgreeWithTheRecordedChains) {
    const auto model = make_model(Source::kDe405);
    model->SetReduction(REDUCTION_MODERN);
    Largest largest;
    for (const auto& row :
         read_named_csv(SOLSYS_TEST_DATA "/reference/modern_star_places.csv")) {
        StarObject star;
        star.ra = row["ra"], star.dec = row["dec"];
        star.pm_ra = static_cast<float>(row["pm_ra"]);
        star.pm_dec = static_cast<float>(row["pm_dec"]);
        star.parallax = static_cast<float>(row["parallax"]);
        star.radial_velocity = static_cast<float>(row["velocity"]);
        go_to(*model, row);
        double gcrs[3], of_date[3];
        ASSERT_TRUE(model->GetRADecVisStar(&star, nullptr, gcrs, false));
        ASSERT_TRUE(model->GetRADecVisStar(&star, nullptr, of_date, true));
        largest.add(*model, row, load(gcrs), load(of_date));
    }
    largest.expect();
    EXPECT_EQ(largest.cases, 80);
}

}  // namespace
}  // namespace solsys::test
