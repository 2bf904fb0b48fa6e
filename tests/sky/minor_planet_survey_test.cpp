// Surveys against a look at every orbit by itself.
#include "solsys/sky/minor_planet_survey.h"

#include <gmock/gmock.h>

#include <cmath>
#include <fstream>
#include <map>
#include <random>
#include <set>

#include "solsys/sky/orbits.h"
#include "solsys/sky/places.h"
#include "tests/io/orbit_lines.h"

namespace {

using namespace solsys::sky;

constexpr double kDegree = 3.14159265358979323846 / 180;

// Orbits of all kinds, near the Earth too; of a few the brightness is not known.
std::vector<Body> bodies(int count, bool near_earth) {
    std::mt19937 random(7);
    std::uniform_real_distribution<double> unit(0, 1);
    std::vector<Body> out;
    for (int k = 1; k <= count; ++k) {
        AsteroidRecord record;
        Elements& el = record.elements;
        el.e = std::pow(unit(random), 2) * 0.98;
        el.q = near_earth ? (0.95 + 0.1 * unit(random)) / (1 - el.e) : 0.7 + 4 * unit(random);
        el.i = (near_earth ? 3 : 40) * unit(random) * kDegree;
        el.node = 360 * unit(random) * kDegree, el.peri = 360 * unit(random) * kDegree;
        el.M = 360 * unit(random) * kDegree;
        el.n = std::sqrt(0.00029591220828411956 / el.q) / el.q;
        el.epochDay = 2460200 + k % 3, el.epochFraction = 0.5;
        record.H = k % 50 == 0 ? 99.0F : static_cast<float>(10 + 8 * unit(random));
        record.G = 0.15F;
        out.emplace_back(SSO_ID(SSO_ASTR, k), "body " + std::to_string(k), record);
        out.back().elements_epoch = el.epochDay + el.epochFraction;
    }
    return out;
}

class Survey : public testing::Test {
  protected:
    void fill(int count, bool near_earth) {
        all_ = bodies(count, near_earth);
        for (const Body& body : all_) ASSERT_TRUE(survey_.add(body));
        ASSERT_EQ(survey_.size(), all_.size());
    }
    Model model_ = std::move(*Model::open());
    MinorPlanetSurvey survey_;
    std::vector<Body> all_;
};

TEST_F(Survey, FindsAllThatAreInAField) {
    fill(3001, false);
    ASSERT_TRUE(model_.move_to(*Instant::from_iso("2023-10-20T03:00:00Z")));
    for (const SurveyField& field :
         {SurveyField{130, 10, 8, 99}, SurveyField{0, 88, 25, 99},
          SurveyField{20, 5, 180, 15.5}, SurveyField{20, 5, 0, 99}}) {
        std::set<int> expected;
        for (const Body& body : all_) {
            const auto place = astrometric_place(model_, body);
            ASSERT_TRUE(place);
            const double cosine =
                std::sin(place->dec_deg * kDegree) * std::sin(field.dec_deg * kDegree) +
                std::cos(place->dec_deg * kDegree) * std::cos(field.dec_deg * kDegree) *
                    std::cos((place->ra_deg - field.ra_deg) * kDegree);
            float magnitude = 99;
            if (std::get<AsteroidRecord>(body.record).H < 99)
                model_.classic().GetMagnitude(body.id, &magnitude);
            if (cosine >= std::cos(field.radius_deg * kDegree) && magnitude <= field.faintest)
                expected.insert(body.id.number);
        }
        std::set<int> found;
        double before = -99;
        for (const SurveyFind& find : survey_.in_field(model_, field, {0.002, true})) {
            found.insert(find.body.id.number);
            EXPECT_GE(find.magnitude, before);
            before = find.magnitude;
        }
        EXPECT_EQ(found, expected) << field.radius_deg;
        EXPECT_EQ(expected.empty(), field.radius_deg == 0);
    }
}

TEST_F(Survey, FindsAllThatComeNearTheEarth) {
    fill(400, true);
    const Span month{*Instant::from_iso("2023-10-01"), *Instant::from_iso("2023-10-31")};
    std::map<int, double> expected;
    for (const Body& body : all_) {
        const auto approaches = find_approaches(model_, body, month, {0.15, true, {}});
        ASSERT_TRUE(approaches) << approaches.message();
        for (const Approach& a : *approaches)
            if (a.planet.id.number == 3) expected[body.id.number] = a.distance_au;
    }
    EXPECT_GT(expected.size(), 3u);
    for (const double drift : {0.002, 0.2}) {
        std::map<int, double> found;
        for (const SurveyApproach& a : survey_.near_earth(model_, month, 0.15, {drift, true}))
            found[a.body.id.number] = a.approach.distance_au;
        EXPECT_EQ(found, expected) << drift;
    }
}

// A bright planet where its integrated orbit has it, not its osculating one of years ago.
TEST_F(Survey, IntegratesWhatItFinds) {
    const Body vesta = *find_small_body("vesta");
    ASSERT_TRUE(survey_.add(vesta));
    ASSERT_TRUE(model_.move_to(*Instant::from_iso("2018-06-20T00:00:00Z")));
    const SurveyOptions far{0.05, false};
    const auto found = survey_.in_field(model_, {}, far);
    const auto two_body = survey_.in_field(model_, {}, {0.05, true});
    ASSERT_EQ(found.size(), 1u);
    ASSERT_EQ(two_body.size(), 1u);
    EXPECT_NEAR(found[0].magnitude, 5.4, 0.3);  // its opposition of that year
    EXPECT_GT(std::hypot(found[0].ra_deg - two_body[0].ra_deg,
                         found[0].dec_deg - two_body[0].dec_deg),
              0.001);
}

TEST_F(Survey, RefusesWhatIsNoEllipse) {
    Body body = bodies(1, false)[0];
    std::get<AsteroidRecord>(body.record).elements.e = 1;
    EXPECT_FALSE(survey_.add(body));
    std::get<AsteroidRecord>(body.record).elements.e = NAN;
    EXPECT_FALSE(survey_.add(body));
    EXPECT_FALSE(survey_.add(sun()));
    EXPECT_TRUE(survey_.in_field(model_, {}).empty());
    EXPECT_FALSE(MinorPlanetSurvey::read("no/such/file"));
}

// The packed columns of a catalogue against the reader of single orbits.
TEST_F(Survey, ReadsAFile) {
    const std::string path = SOLSYS_BUILD_DIR "/survey_test_orbits.txt";
    {
        std::ofstream file(path);
        file << "Des'n     H     G   Epoch\n" << std::string(160, '-') << "\n";
        solsys_io::PrintedPlanet planet;
        for (const auto& [packed, words] :
             {std::pair{"00001", "     (1) Ceres"}, std::pair{"A0002", "(100002) Second"},
              std::pair{"~0003", "(620003) Third"}, std::pair{"K07Tf8A", ""}}) {
            planet.packed = packed, planet.words = words;
            planet.M += 20, planet.node += 40;
            file << solsys_io::print(planet) << "\n";
        }
        planet.e = 1.5;
        file << solsys_io::print(planet) << "\nnothing\n";
    }
    std::string told;
    const auto survey =
        MinorPlanetSurvey::read(path, [&](const std::string& line) { told += line; });
    ASSERT_TRUE(survey) << survey.message();
    EXPECT_EQ(survey->size(), 4U);
    EXPECT_NE(told, "");
    const Instant date = *Instant::from_iso("2023-10-20T03:00:00Z");
    ASSERT_TRUE(model_.move_to(date));
    const auto finds = survey->in_field(model_, {}, {0.002, true, nullptr});
    ASSERT_EQ(finds.size(), 4U);
    for (const SurveyFind& find : finds) {
        const auto body = find_in_file(path, find.body.name, date);
        ASSERT_TRUE(body) << body.message();
        const auto place = astrometric_place(model_, *body);
        ASSERT_TRUE(place);
        EXPECT_NEAR(find.ra_deg, place->ra_deg, 1e-6) << find.body.name;
        EXPECT_NEAR(find.dec_deg, place->dec_deg, 1e-6) << find.body.name;
    }
}

}  // namespace
