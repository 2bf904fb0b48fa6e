// Nights: what darkness and best views have to be, against the altitudes themselves.
#include "solsys/sky/tonight.h"

#include <gmock/gmock.h>

#include "solsys/sky/places.h"
#include "solsys/sky/risings.h"

namespace {

using namespace solsys::sky;

double altitude_of(Model& model, const Body& body, const Instant& t) {
    EXPECT_TRUE(model.move_to(t));
    return horizontal_of(model, *apparent_place(model, body)).altitude_deg;
}

TEST(Tonight, BestViewIsTheHighestOfAllMinutesInTheDark) {
    auto model = Model::open();
    for (const char* place : {"51.5,-0.1", "-33.9,151.2", "69.6,19", "0,-78"}) {
        const Site site = *parse_site(place);
        model->observe_from(site);
        const Zone zone = *Zone::find(site.longitude_deg > 100 ? "+10:00" : "UTC");
        const auto night =
            night_around(*model, site, zone, *Instant::from_iso("2026-10-20T13:00Z"));
        ASSERT_EQ(night.dark.size(), 1U) << place;
        for (const Instant& end : {night.dark[0].from, night.dark[0].to})
            EXPECT_NEAR(altitude_of(*model, sun(), end), -6, 1e-4) << place;
        for (const char* name : {"moon", "venus", "jupiter", "saturn", "sirius", "vega"}) {
            const Body body = *find_body(name);
            double highest = -90;
            for (Instant t = night.dark[0].from; t < night.dark[0].to; t = t.plus_seconds(60))
                highest = std::max(highest, altitude_of(*model, body, t));
            const auto best = best_view(*model, site, body, night);
            const double horizon = horizon_of(site, body).degrees;
            ASSERT_EQ(best.has_value(), highest > horizon) << name << " at " << place;
            if (!best) continue;
            // A minute of a body that rises steeply is a quarter of a degree.
            EXPECT_GE(best->altitude_deg, highest - 0.02) << name << " at " << place;
            EXPECT_LE(best->altitude_deg, highest + 0.26) << name << " at " << place;
        }
    }
}

TEST(Tonight, IsTheNightOfTheInstantOrTheNextOne) {
    auto model = Model::open();
    const Site site = *find_city("Oslo");
    const Zone zone = *Zone::find(site.zone);
    const auto evening = [&](const char* time) {
        return to_string(night_around(*model, site, zone, *parse_time(time, zone)).date);
    };
    EXPECT_EQ(evening("2026-12-13T02:00"), "2026-12-12");
    EXPECT_EQ(evening("2026-12-13T10:30"), "2026-12-13");
    EXPECT_EQ(evening("2026-12-13T23:59"), "2026-12-13");
    const auto summer =
        night_around(*model, *find_city("Tromso"), zone, *parse_time("2026-06-20T12:00", zone));
    EXPECT_THAT(summer.dark, testing::IsEmpty());
    EXPECT_FALSE(summer.sunset.has_value());
}

}  // namespace
