// Bodies that a host adds: asteroids, comets, spacecraft, objects of its own.
#include <gmock/gmock.h>

#include <array>
#include <cmath>
#include <vector>

#include "solsys/spacecraft_track.h"
#include "tests/support/csv.h"
#include "tests/support/sky_models.h"

namespace {

using namespace solsys;
using namespace solsys::test;

constexpr double kGauss = 0.01720209895;

Vec3 heliocentric(CSWSolSys& model, const SSO_ID& id) {
    double r[3];
    EXPECT_TRUE(model.GetHelVec2K(id, 0, r));
    return load(r);
}

// One row of the reference orbits.
struct Orbit {
    SSO_ID id;
    Elements elements;
    double jd;
    Vec3 ecliptic;
};

std::vector<Orbit> reference_orbits() {
    std::vector<Orbit> out;
    for (const CsvRow& row : read_csv(SOLSYS_TEST_DATA "/reference/element_orbits.csv")) {
        const auto number = [&row](std::size_t k) { return std::stod(row[k]); };
        const bool comet = row[1] == "comt";
        const double e = number(4);
        const Instant epoch = instant(number(2));
        // Comets give q; ellipses are handed over with their semi-major axis.
        const double a = comet ? number(3) / std::fabs(1.0 - e) : number(3);
        const double n = comet ? kGauss / std::pow(a, 1.5) : number(9) * kDegree;
        out.push_back(
            {SSO_ID(comet ? SSO_COMT : SSO_ASTR, 1),
             {comet && e > 1.0 ? number(3) : a, e, number(5) * kDegree, number(6) * kDegree,
              number(7) * kDegree, n, comet ? n * (number(2) - number(8)) : number(8) * kDegree,
              epoch.fraction, epoch.day},
             number(10),
             vector_of(row, 11)});
    }
    return out;
}

// The five-element record of an asteroid or a comet; axes: those of the orbit, P and Q first.
tagAster_SPH_5 asteroid_record(const Elements& el, const Mat3& axes) {
    tagAster_SPH_5 record{};
    double m[9];
    store(axes, m);
    for (int k = 0; k < 3; ++k) record.P[k] = static_cast<float>(m[k]);
    for (int k = 0; k < 3; ++k) record.Q[k] = static_cast<float>(m[3 + k]);
    record.a = static_cast<float>(el.q), record.e = static_cast<float>(el.e);
    record.M = static_cast<float>(el.M), record.n = static_cast<float>(el.n);
    record.epoch = el.epochDay + el.epochFraction;
    record.number = 7;
    return record;
}
tagComet_SPH_5 comet_record(const Elements& el, const Mat3& axes) {
    tagComet_SPH_5 record{};
    store(axes.r0, record.P);
    store(axes.r1, record.Q);
    record.q = el.q, record.e = el.e, record.M = el.M, record.n = el.n;
    record.epoch = el.epochDay + el.epochFraction;
    record.number = 7;
    return record;
}
Mat3 axes_of(const Elements& el) {
    return rotate_z(el.peri) * (rotate_x(el.i) * rotate_z(el.node));
}

// A Julian date in one double holds 4e-10 day, which is 1.4e-11 au of Halley near perihelion;
// the worst measured is 3.5e-11 au.
constexpr double kTolerance = 1e-10;  // au

// From their tables, and from the record held outside them: to the single precision of an
// asteroid's.
TEST(ElementBodies, ComeToTheReferencePositions) {
    const auto model = make_model(Source::kBuiltIn);
    double r[3];
    double worst = 0.0;
    for (const Orbit& orbit : reference_orbits()) {
        const Elements& el = orbit.elements;
        const bool comet = orbit.id.type == SSO_COMT;
        const tagAster_SPH_5 asteroid = asteroid_record(el, axes_of(el));
        const tagComet_SPH_5 held = comet_record(el, axes_of(el));
        ASSERT_TRUE(comet ? model->AddComet(1, {.elements = el})
                          : model->AddAsteroid(1, {.elements = el}));
        comet ? model->HoldComet(&held) : model->HoldAsteroid(&asteroid);
        update(*model, orbit.jd);
        ASSERT_TRUE(model->GetHelEcl2K(orbit.id, 0, r));
        worst = std::max(worst, norm(load(r) - orbit.ecliptic));
        ASSERT_TRUE(model->GetHelEcl2K({orbit.id.type, 7}, 0, r));
        EXPECT_LT(norm(load(r) - orbit.ecliptic),
                  (comet ? 0.0 : 4e-6 * norm(orbit.ecliptic)) + kTolerance);
        EXPECT_FALSE(model->GetHelEcl2K({orbit.id.type, 8}, 0, r));
    }
    std::printf("element orbits: worst %.1e au\n", worst);
    EXPECT_LT(worst, kTolerance);
    model->HoldAsteroid(nullptr);
    model->HoldComet(nullptr);
    EXPECT_FALSE(model->GetHelEcl2K({SSO_ASTR, 7}, 0, r));
    EXPECT_FALSE(model->GetHelEcl2K({SSO_COMT, 7}, 0, r));
}

// GetAsterVecCentre2K takes the same record on the equator and sees it from the observer.
TEST(ElementBodies, FiveElementRecordsOnTheEquator) {
    const auto model = make_model(Source::kBuiltIn);
    const Elements ceres = reference_orbits().front().elements;
    ASSERT_TRUE(model->AddAsteroid(1, {.elements = ceres}));
    update(*model, 2459850.5);
    tagAster_SPH_5 record =
        asteroid_record(ceres, axes_of(ceres) * load_matrix(model->GetMtrxEq2K_Ecl2K()));
    double direct[6], by_table[6];
    ASSERT_TRUE(model->GetAsterVecCentre2K(1, direct, &record));
    ASSERT_TRUE(model->GetRefVecCur({SSO_ASTR, 1}, 1, by_table));
    EXPECT_LT(norm(load(direct) - load(by_table)), 5e-6);
    EXPECT_LT(norm(load(direct + 3) - load(by_table + 3)), 1e-7);
    EXPECT_FALSE(model->GetAsterVecCentre2K(1, direct, nullptr));
}

// Tables: what is no orbit is refused and leaves the table alone.
TEST(ElementTables, RefuseWhatIsNoOrbit) {
    const auto model = make_model(Source::kBuiltIn);
    const Elements good{2, 0.1, 0, 0, 0, 0.006, 0, 0, 2451545};
    std::vector<Elements> bad(6, good);
    bad[0].e = -0.1, bad[1].q = 0, bad[2].q = -1, bad[3].M = NAN, bad[4].e = NAN;
    bad[5].n = HUGE_VAL;
    ASSERT_TRUE(model->AddAsteroid(5, {.elements = good, .H = 3}));
    for (const Elements& elements : bad) {
        EXPECT_FALSE(model->AddAsteroid(5, {.elements = elements}));
        EXPECT_FALSE(model->AddComet(5, {.elements = elements}));
        SpacecraftRecord records[2];
        for (SpacecraftRecord& record : records) record.q = 1, record.n = 0.01;
        records[1].q = elements.q, records[1].e = elements.e;
        records[1].n = elements.n, records[1].M = elements.M;
        EXPECT_FALSE(model->AddSpacecraft(5, records, 2));
    }
    EXPECT_EQ(model->GetAsteroid(5)->H, 3.0F);
    EXPECT_EQ(model->GetComet(5), nullptr);
    EXPECT_FALSE(model->AddSpacecraft(5, nullptr, 1));
    EXPECT_FALSE(model->RemoveSpacecraft(5));
    EXPECT_FALSE(model->AddUserObject(5, {}));

    ASSERT_TRUE(model->AddAsteroid(5, {.elements = good, .H = 4}));
    EXPECT_EQ(model->GetAsteroid(5)->H, 4.0F);
    EXPECT_TRUE(model->RemoveAsteroid(5));
    EXPECT_FALSE(model->RemoveAsteroid(5));
    EXPECT_EQ(model->GetAsteroid(5), nullptr);
}

// A spacecraft on one orbit the whole time, recorded ten times a turn: between the records the
// elements run through the turn of the mean anomaly, so that the orbit comes out again.
TEST(Spacecraft, FollowsItsOrbitBetweenRecords) {
    const auto model = make_model(Source::kBuiltIn);
    const double a = 1.3;
    const Elements orbit{a, 0.3, 0.2, 6.28, 4.0, kGauss / std::pow(a, 1.5), 0.4, 0, 2455000};
    ASSERT_TRUE(model->AddAsteroid(1, {.elements = orbit}));
    std::vector<SpacecraftRecord> records;
    const double period = kTwoPi / orbit.n;
    for (int k = 30; k-- > 0;) {  // handed over backwards: the model sorts them
        SpacecraftRecord record;
        const double after = k * period / 10;
        record.epoch_day = 2455000 + static_cast<int>(after);
        record.epoch_fraction = after - static_cast<int>(after);
        record.q = a * (1 - orbit.e), record.e = orbit.e, record.i = orbit.i;
        record.node = orbit.node, record.peri = orbit.peri, record.n = orbit.n;
        record.M = std::fmod(orbit.M + orbit.n * after, kTwoPi);
        records.push_back(record);
    }
    ASSERT_TRUE(model->AddSpacecraft(1, records.data(), static_cast<int>(records.size())));
    for (double after = 0.0; after < 3.5 * period; after += 7.3) {
        update(*model, 2455000.0 + after);
        double state[6], same[6];
        ASSERT_TRUE(model->GetHelVec2K({SSO_SCFT, 1}, 1, state));
        ASSERT_TRUE(model->GetHelVec2K({SSO_ASTR, 1}, 1, same));
        EXPECT_LT(norm(load(state) - load(same)), 2e-10) << after;
        EXPECT_LT(norm(load(state + 3) - load(same + 3)), 1e-11) << after;
        double centre[3];
        ASSERT_TRUE(model->GetVecCentre2K({SSO_SCFT, 1}, 0, centre));
        EXPECT_EQ(norm(load(centre) - load(state)), 0.0);
    }
    update(*model, 2454999.9);
    double none[3];
    EXPECT_FALSE(model->GetHelVec2K({SSO_SCFT, 1}, 0, none));
    EXPECT_THAT(none, testing::Each(0.0));
}

class Transfer : public testing::Test {
  protected:
    // From an orbit about the Earth (records 0, 10 days apart in the element epochs) to one
    // about Mars, and on to one about (433) Eros.
    void SetUp() override {
        model_ = make_model(Source::kDe405);
        SpacecraftRecord earth;
        earth.central_number = 3;
        earth.epoch_day = 2455000;
        earth.q = 0.001, earth.e = 0.1, earth.n = 0.9;
        SpacecraftRecord mars = earth;
        mars.central_number = 4;
        mars.epoch_day = 2455010;
        mars.q = 0.0005, mars.e = 1.4, mars.M = -3.0;
        SpacecraftRecord eros = earth;
        eros.central_type = SSO_ASTR, eros.central_number = 433;
        eros.epoch_day = 2455020;
        eros.q = 2e-7, eros.e = 0.0, eros.n = std::sqrt(2.0067522484920783e-18 / 8e-21);
        const SpacecraftRecord all[] = {eros, earth, mars};
        ASSERT_TRUE(model_->AddSpacecraft(1, all, 3));
        ASSERT_TRUE(model_->AddSpacecraft(2, &earth, 1));
        mars.epoch_day = 2454000;  // in force long before, the same orbit run back
        mars.M -= std::sqrt(9.549548829725812e-11 / std::pow(0.0005 / 0.4, 3)) * 1010;
        ASSERT_TRUE(model_->AddSpacecraft(4, &mars, 1));
    }
    std::unique_ptr<CSWSolSys> model_;
};

// Between records about different bodies the two orbits are mixed in proportion to time.
TEST_F(Transfer, BlendsFromOneBodyToTheNext) {
    for (const double w : {0.0, 0.25, 0.5, 0.9}) {
        update(*model_, 2455000.0 + 10 * w);
        const Vec3 first = heliocentric(*model_, {SSO_SCFT, 2});
        const Vec3 second = heliocentric(*model_, {SSO_SCFT, 4});
        EXPECT_LT(norm(heliocentric(*model_, {SSO_SCFT, 1}) - ((1 - w) * first + w * second)),
                  1e-9)
            << w;
        // The ecliptic form knows no blending.
        double ecliptic[3];
        ASSERT_TRUE(model_->GetHelEcl2K({SSO_SCFT, 1}, 0, ecliptic));
        const Mat3 ecl = load_matrix(model_->GetMtrxEq2K_Ecl2K());
        EXPECT_LT(norm(load(ecliptic) - ecl * first), 1e-14);
    }
    // No jump at either end of the stretch: in 2 ms a spacecraft moves less than 1e-9 au.
    for (const double epoch : {2455010.0, 2455020.0}) {
        update(*model_, epoch - 1e-8);
        const Vec3 before = heliocentric(*model_, {SSO_SCFT, 1});
        update(*model_, epoch + 1e-8);
        EXPECT_LT(norm(heliocentric(*model_, {SSO_SCFT, 1}) - before), 2e-9) << epoch;
    }
}

// About an asteroid a spacecraft goes with (433) Eros and its mass.
TEST_F(Transfer, EndsAtEros) {
    update(*model_, 2455030.0);
    const Vec3 craft = heliocentric(*model_, {SSO_SCFT, 1});
    double about[3];
    ASSERT_TRUE(model_->GetVecCentre2K({SSO_SCFT, 1}, 0, about));
    EXPECT_NEAR(norm(load(about)), 2e-7, 1e-16);
    const Vec3 eros = heliocentric(*model_, {SSO_ASTR, 433});
    EXPECT_LT(norm(craft - eros - load(about)), 1e-15);
    EXPECT_EQ(model_->GetGravity({SSO_ASTR, 433}), 2.0067522484920783e-18);
    EXPECT_EQ(model_->GetGravity({SSO_ASTR, 434}), -1.0);
    // Nine years after the epoch of the built-in elements: perturbations by less than 0.1 au.
    ASSERT_TRUE(model_->AddAsteroid(7, {.elements = reference_orbits()[2].elements}));
    EXPECT_LT(norm(heliocentric(*model_, {SSO_ASTR, 7}) - eros), 0.1);
}

// An object of the host's own is where its record says at the epoch, keeps its energy and
// is there again after a turn.
TEST(UserObject, ReturnsToItsState) {
    const auto model = make_model(Source::kDe405);
    const SSO_ID id(SSO_USCO, 1);
    const auto at = [&](double fraction) {
        double s[6];
        model->UpdateSys(2455123, fraction);
        EXPECT_TRUE(model->GetVecCentre2K(id, 1, s));
        return load_state(s);
    };
    for (const auto& [planet, mu, r, v] : {std::tuple{3, 8.887692446707102e-10, 4.6e-5, 4.3e-3},
                                           {4, 9.549548829725812e-11, 6e-5, 1.2e-3},
                                           {10, 0.00029591220828411956, 1.1, 0.015}}) {
        const State given{{0.6 * r, 0.0, 0.8 * r}, {0.1 * v, 0.9 * v, -0.2 * v}};
        UserObjectRecord record;
        record.central_number = planet;
        record.epoch_day = 2455123, record.epoch_fraction = 0.125;
        store(given, record.state);
        ASSERT_TRUE(model->AddUserObject(1, record));
        const State start = at(0.125);
        // Turned into J2000 by the body's axes; about the Earth not at all. To the 1e-10 rad of
        // the solution of Kepler's equation.
        double m[9], back[9];
        ASSERT_TRUE(model->GetMtrxEq2K_PlEq({SSO_PLNT, planet}, 2455123, 0.125, m, back));
        const Mat3 axes = planet == 3 ? kIdentity : load_matrix(m);
        EXPECT_LT(norm(axes * start.r - given.r), 1e-10 * r);
        EXPECT_NEAR(dot(start.r, start.v), dot(given.r, given.v), 1e-10 * r * v);

        const double v2 = dot(given.v, given.v);
        const double period = kTwoPi * std::sqrt(std::pow(1 / (2 / r - v2 / mu), 3) / mu);
        EXPECT_NEAR(model->GetOrbitalPeriod(id), period, 1e-12 * period);
        const State later = at(0.125 + 0.37 * period);
        EXPECT_NEAR(dot(later.v, later.v) / 2 - mu / norm(later.r), v2 / 2 - mu / r,
                    1e-9 * mu / r);
        EXPECT_GT(norm(later.r - start.r), 0.1 * r);
        // The Julian date as one double holds 4e-10 day.
        const State again = at(0.125 + period);
        EXPECT_LT(norm(again.r - start.r), 1e-9 * v + 1e-9 * r);
        EXPECT_LT(
            norm(heliocentric(*model, id) - heliocentric(*model, {SSO_PLNT, planet}) - again.r),
            1e-15);
    }
}

// About e = 1, where an orbit changes from one kind of elements to another, it still starts
// where its record says and goes on as its neighbours do.
TEST(UserObject, PassesThroughTheParabola) {
    const auto model = make_model(Source::kBuiltIn);
    const Vec3 r{0.8, 0.9, 0.0};
    const double escape = kGauss * std::sqrt(2 / norm(r));
    const auto place_after = [&](double speed, double days) {
        UserObjectRecord record;
        record.central_number = 10;
        record.epoch_day = 2455000;
        store(r, record.state);
        store(speed * escape * unit(Vec3{0.3, 1.0, 0.2}), record.state + 3);
        EXPECT_TRUE(model->AddUserObject(1, record));
        update(*model, 2455000.0 + days);
        return heliocentric(*model, {SSO_USCO, 1});
    };
    // A speed off by 1e-6 leads 2e-6 astray in a year, and as much is lost where e is taken
    // as 1.
    for (const double off : {-1e-5, -1e-6, -2e-7, -1e-9, 1e-9, 2e-7, 1e-6, 1e-5}) {
        EXPECT_NEAR(norm(place_after(1 + off, 0)), norm(r), 1e-5) << off;
        const Vec3 apart = place_after(1 + off, 400) - place_after(1, 400);
        EXPECT_LT(norm(apart), 20 * std::fabs(off) + 2e-8) << off;
    }
    // What falls along the radius has no orbit.
    UserObjectRecord fall;
    fall.state[0] = 1e-4, fall.state[3] = -1e-3;
    EXPECT_FALSE(model->AddUserObject(2, fall));
}

// At its epoch an object is in its state, whatever the eccentricity and inclination (elements
// know neither the perihelion of a circle nor the node of an equatorial orbit), and half a turn
// later on the other side of a circle.
TEST(UserObject, StartsInItsStateOnEveryOrbit) {
    const auto model = make_model(Source::kBuiltIn);
    model->UpdateSys(2455000, 0.25);
    const double mu = model->GetGravity({SSO_PLNT, 3});
    const double r = 4.5e-5, circular = std::sqrt(mu / r);
    for (const double inclination : {0.0, 1e-9, 51.6, 90.0, 180.0 - 1e-9, 180.0}) {
        for (const double speed : {1.0, 1.0 + 1e-11, 1.05, 1.4, std::sqrt(2.0), 1.7, 0.3}) {
            const double i = inclination * kDegree, v = speed * circular;
            UserObjectRecord record;
            record.epoch_day = 2455000, record.epoch_fraction = 0.25;
            store(r * Vec3{0.6, 0.8 * std::cos(i), 0.8 * std::sin(i)}, record.state);
            store(v * Vec3{-0.8, 0.6 * std::cos(i), 0.6 * std::sin(i)}, record.state + 3);
            ASSERT_TRUE(model->AddUserObject(1, record));
            double s[6];
            ASSERT_TRUE(model->GetVecCentre2K({SSO_USCO, 1}, 1, s));
            EXPECT_LT(norm(load(s) - load(record.state)), 1e-12 * r) << inclination << speed;
            EXPECT_LT(norm(load(s + 3) - load(record.state + 3)), 1e-12 * v);
            if (speed != 1.0) continue;
            const double period = model->GetOrbitalPeriod({SSO_USCO, 1});
            record.epoch_fraction -= period / 2;
            ASSERT_TRUE(model->AddUserObject(1, record));
            ASSERT_TRUE(model->GetVecCentre2K({SSO_USCO, 1}, 1, s));
            EXPECT_LT(norm(load(s) + load(record.state)), 1e-11 * r) << inclination;
        }
    }
}

TEST(UserObject, RingsOfCentresEnd) {
    const auto model = make_model(Source::kBuiltIn);
    UserObjectRecord record;
    record.central_type = SSO_USCO;
    record.state[0] = 1, record.state[4] = 0.01;
    for (const int number : {1, 2}) {
        record.central_number = 3 - number;
        ASSERT_TRUE(model->AddUserObject(number, record));
    }
    SpacecraftRecord track;
    track.central_type = SSO_SCFT, track.central_number = 1;
    track.q = 1, track.n = 0.017;
    ASSERT_TRUE(model->AddSpacecraft(1, &track, 1));
    model->UpdateSys(2455000, 0.0);
    double r[3];
    EXPECT_FALSE(model->GetHelVec2K({SSO_USCO, 1}, 0, r));
    EXPECT_FALSE(model->GetHelVec2K({SSO_SCFT, 1}, 0, r));
    EXPECT_THAT(r, testing::Each(0.0));
}

// Comets do not wait at perihelion: steps of an hour across it are as long as the speed says.
TEST(ElementBodies, MoveSteadilyThroughPerihelion) {
    const auto model = make_model(Source::kBuiltIn);
    for (const double e : {0.3, 0.9, 0.9999, 0.99994, 0.99996, 0.99999}) {
        CometRecord record;
        ASSERT_TRUE(
            ElementsFromPerihelion(1.0, e, 0.3, 1.0, 2.0, 2455000, 0.25, &record.elements));
        ASSERT_TRUE(model->AddComet(1, record));
        double s[6];
        update(*model, 2455000.25 - 3);
        Vec3 before = heliocentric(*model, {SSO_COMT, 1});
        for (int hour = -71; hour <= 72; ++hour) {
            update(*model, 2455000.25 + hour / 24.0);
            ASSERT_TRUE(model->GetHelVec2K({SSO_COMT, 1}, 1, s));
            const double step = norm(load(s) - before) * 24.0;
            EXPECT_NEAR(step, std::sqrt(kSunGm * (2 / norm(load(s)) - (1 - e))), 2e-6) << e;
            EXPECT_NEAR(step, norm(load(s + 3)), 2e-6) << e << ' ' << hour;
            before = load(s);
        }
    }
}

// The ways of giving one orbit, a mean motion left to be derived among them.
TEST(ElementBodies, RecordsOfOneOrbitMoveAlike) {
    const auto model = make_model(Source::kBuiltIn);
    const double q = 0.9, e = 0.4, a = q / (1 - e);
    const double n = std::sqrt(kSunGm / a) / a;
    CometRecord by_perihelion, by_anomaly, without_motion;
    ASSERT_TRUE(
        ElementsFromPerihelion(q, e, 0.1, 0.2, 0.3, 2455000, 0.5, &by_perihelion.elements));
    ASSERT_TRUE(ElementsFromMeanAnomaly(a, e, 0.1, 0.2, 0.3, 100 * n, 2455100, 0.5,
                                        &by_anomaly.elements));
    without_motion.elements = by_anomaly.elements;
    without_motion.elements.n = 0;
    model->AddComet(1, by_perihelion), model->AddComet(2, by_anomaly);
    model->AddComet(3, without_motion),
        model->AddAsteroid(4, {.elements = without_motion.elements});
    SpacecraftRecord track{.central_number = 10,
                           .epoch_day = 2455000,
                           .epoch_fraction = 0.5,
                           .q = q,
                           .e = e,
                           .i = 0.1,
                           .node = 0.2,
                           .peri = 0.3};
    model->AddSpacecraft(5, &track, 1);
    update(*model, 2455400.0);
    const Vec3 place = heliocentric(*model, {SSO_COMT, 1});
    for (const SSO_ID& id :
         {SSO_ID(SSO_COMT, 2), SSO_ID(SSO_COMT, 3), SSO_ID(SSO_ASTR, 4), SSO_ID(SSO_SCFT, 5)})
        EXPECT_LT(norm(heliocentric(*model, id) - place), 1e-8) << id.number;

    // Open orbits, by the speed at perihelion.
    for (const double open : {1.0, 1.5}) {
        CometRecord record;
        ASSERT_TRUE(ElementsFromPerihelion(q, open, 0, 0, 0, 2455000, 0.5, &record.elements));
        model->AddComet(6, record);
        update(*model, 2455000.5);
        const Vec3 perihelion = heliocentric(*model, {SSO_COMT, 6});
        EXPECT_NEAR(norm(perihelion), q, 1e-12);
        update(*model, 2455000.75);
        EXPECT_NEAR(norm(heliocentric(*model, {SSO_COMT, 6}) - perihelion) * 4,
                    std::sqrt(kSunGm * (1 + open) / q), 1e-6);
    }
    Elements none;
    EXPECT_FALSE(ElementsFromPerihelion(-1, 0.5, 0, 0, 0, 2455000, 0, &none));
    EXPECT_FALSE(ElementsFromPerihelion(1, 0.5, 0, 0, 0, 2455000, 0, nullptr));
    EXPECT_FALSE(ElementsFromMeanAnomaly(1, 1.0, 0, 0, 0, 0, 2455000, 0, &none));
}

// The record held for the object aimed at serves its number, whatever the tables have.
TEST(ElementBodies, HeldRecordsComeBeforeTheTables) {
    const auto model = make_model(Source::kBuiltIn);
    const Elements ceres = reference_orbits().front().elements;
    Elements other = ceres;
    other.M += 1;
    ASSERT_TRUE(model->AddAsteroid(1, {.elements = ceres}));
    ASSERT_TRUE(model->AddAsteroid(2, {.elements = other}));
    update(*model, 2459850.5);
    const Vec3 by_table = heliocentric(*model, {SSO_ASTR, 1});
    tagAster_SPH_5 record = asteroid_record(other, axes_of(other));
    record.number = 1;
    model->HoldAsteroid(&record);
    EXPECT_LT(norm(heliocentric(*model, {SSO_ASTR, 1}) - heliocentric(*model, {SSO_ASTR, 2})),
              5e-6);
    model->HoldAsteroid(nullptr);
    EXPECT_EQ(norm(heliocentric(*model, {SSO_ASTR, 1}) - by_table), 0.0);
}

}  // namespace
