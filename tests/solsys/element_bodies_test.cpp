// Bodies that a host adds: asteroids, comets, spacecraft, objects of its own.
#include <gmock/gmock.h>

#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include "solsys/spacecraft_track.h"
#include "tests/support/csv.h"
#include "tests/support/sky_models.h"

namespace {

using namespace solsys;
using namespace solsys::test;

constexpr double kGauss = 0.01720209895;
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

void set_time(CSWSolSys& model, double jd) {
    const int day = static_cast<int>(jd);
    model.UpdateSys(day, jd - day);
}

Vec3 heliocentric(CSWSolSys& model, const SSO_ID& id) {
    double r[3];
    EXPECT_TRUE(model.GetHelVec2K(id, 0, r));
    return load(r);
}

// One row of the reference orbits.
struct Orbit {
    std::string name;
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
        const double epoch = number(2);
        Elements el{};
        el.e = e;
        // Comets give q; ellipses are handed over with their semi-major axis.
        const double a = comet ? number(3) / std::fabs(1.0 - e) : number(3);
        el.q = comet && e > 1.0 ? number(3) : a;
        el.n = comet ? kGauss / std::pow(a, 1.5) : number(9) * kDegree;
        el.M = comet ? el.n * (epoch - number(8)) : number(8) * kDegree;
        el.i = number(5) * kDegree;
        el.node = number(6) * kDegree;
        el.peri = number(7) * kDegree;
        el.epochDay = static_cast<std::int32_t>(epoch);
        el.epochFraction = epoch - el.epochDay;
        out.push_back({row[0],
                       SSO_ID(comet ? SSO_COMT : SSO_ASTR, 1),
                       el,
                       number(10),
                       {number(11), number(12), number(13)}});
    }
    return out;
}

// A Julian date in one double holds 4e-10 day, which is 1.4e-11 au of Halley near perihelion;
// the worst measured is 3.5e-11 au.
constexpr double kTolerance = 1e-10;  // au

TEST(ElementBodies, ComeToTheReferencePositions) {
    const auto model = make_model(Source::kBuiltIn);
    double worst = 0.0;
    for (const Orbit& orbit : reference_orbits()) {
        if (orbit.id.type == SSO_ASTR) {
            ASSERT_TRUE(model->AddAsteroid(1, {.elements = orbit.elements}));
        } else {
            ASSERT_TRUE(model->AddComet(1, {.elements = orbit.elements}));
        }
        set_time(*model, orbit.jd);
        double r[3];
        ASSERT_TRUE(model->GetHelEcl2K(orbit.id, 0, r));
        const double off = norm(load(r) - orbit.ecliptic);
        EXPECT_LT(off, kTolerance) << orbit.name;
        worst = std::max(worst, off);
    }
    std::printf("element orbits: worst %.1e au\n", worst);
}

// The five-element record of a body leads to the same place as its elements, to the single
// precision of an asteroid's record.
TEST(ElementBodies, HeldRecordsServeWhatIsInNoTable) {
    const auto model = make_model(Source::kBuiltIn);
    for (const Orbit& orbit : reference_orbits()) {
        const Elements& el = orbit.elements;
        const Mat3 axes = rotate_z(el.peri) * (rotate_x(el.i) * rotate_z(el.node));
        const bool comet = orbit.id.type == SSO_COMT;
        if (comet) {
            tagComet_SPH_5 record{};
            store(axes.r0, record.P);
            store(axes.r1, record.Q);
            record.q = el.q, record.e = el.e, record.M = el.M, record.n = el.n;
            record.epoch = el.epochDay + el.epochFraction;
            record.number = 7;
            model->HoldComet(&record);
        } else {
            tagAster_SPH_5 record{};
            const double P[3] = {axes.r0.x, axes.r0.y, axes.r0.z};
            const double Q[3] = {axes.r1.x, axes.r1.y, axes.r1.z};
            for (int k = 0; k < 3; ++k) {
                record.P[k] = static_cast<float>(P[k]);
                record.Q[k] = static_cast<float>(Q[k]);
            }
            record.a = static_cast<float>(el.q), record.e = static_cast<float>(el.e);
            record.M = static_cast<float>(el.M), record.n = static_cast<float>(el.n);
            record.epoch = el.epochDay + el.epochFraction;
            record.number = 7;
            model->HoldAsteroid(&record);
        }
        set_time(*model, orbit.jd);
        double r[3];
        ASSERT_TRUE(model->GetHelEcl2K({orbit.id.type, 7}, 0, r)) << orbit.name;
        const double single = comet ? 0.0 : 4e-6 * norm(orbit.ecliptic);
        EXPECT_LT(norm(load(r) - orbit.ecliptic), single + kTolerance) << orbit.name;
        EXPECT_FALSE(model->GetHelEcl2K({orbit.id.type, 8}, 0, r));
    }
    model->HoldAsteroid(nullptr);
    model->HoldComet(nullptr);
    double r[3];
    EXPECT_FALSE(model->GetHelEcl2K({SSO_ASTR, 7}, 0, r));
    EXPECT_FALSE(model->GetHelEcl2K({SSO_COMT, 7}, 0, r));
}

// GetAsterVecCentre2K takes the same record on the equator and sees it from the observer.
TEST(ElementBodies, FiveElementRecordsOnTheEquator) {
    const auto model = make_model(Source::kBuiltIn);
    const Orbit ceres = reference_orbits().front();
    ASSERT_TRUE(model->AddAsteroid(1, {.elements = ceres.elements}));
    set_time(*model, 2459850.5);
    const Mat3 ecl = load_matrix(model->GetMtrxEq2K_Ecl2K());
    const Elements& el = ceres.elements;
    const Mat3 axes = rotate_z(el.peri) * (rotate_x(el.i) * rotate_z(el.node)) * ecl;
    tagAster_SPH_5 record{};
    for (int k = 0; k < 3; ++k) {
        double row[3];
        store(axes.r0, row);
        record.P[k] = static_cast<float>(row[k]);
        store(axes.r1, row);
        record.Q[k] = static_cast<float>(row[k]);
    }
    record.a = static_cast<float>(el.q), record.e = static_cast<float>(el.e);
    record.M = static_cast<float>(el.M), record.n = static_cast<float>(el.n);
    record.epoch = el.epochDay + el.epochFraction;
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
    const Elements good{.q = 2,
                        .e = 0.1,
                        .i = 0,
                        .node = 0,
                        .peri = 0,
                        .n = 0.006,
                        .M = 0,
                        .epochFraction = 0,
                        .epochDay = 2451545};
    std::vector<Elements> bad(6, good);
    bad[0].e = -0.1, bad[1].q = 0, bad[2].q = -1, bad[3].M = kNaN, bad[4].e = kNaN;
    bad[5].n = std::numeric_limits<double>::infinity();
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

TEST(InterpolateAngle, GoesTheShortWay) {
    const struct {
        double a, b, w, expected;
    } cases[] = {{0.1, 0.3, 0.5, 0.2},
                 {6.2, 0.1, 0.0, 6.2},
                 {6.2, 0.1, 1.0, 0.1 + kTwoPi},
                 {0.1, 6.2, 0.5, (0.1 + 6.2 - kTwoPi) / 2},
                 {3.0, -3.0, 0.25, 3.0 + 0.25 * (kTwoPi - 6.0)},
                 {1.0, 1.0 + kTwoPi, 0.7, 1.0}};
    for (const auto& c : cases) {
        EXPECT_NEAR(interpolate_angle(c.a, c.b, c.w), c.expected, 2e-15) << c.a << ' ' << c.b;
    }
}

// A spacecraft on one orbit the whole time, recorded ten times a turn: between the records the
// elements run through the turn of the mean anomaly, so that the orbit comes out again.
TEST(Spacecraft, FollowsItsOrbitBetweenRecords) {
    const auto model = make_model(Source::kBuiltIn);
    const double a = 1.3;
    const Elements orbit{.q = a,
                         .e = 0.3,
                         .i = 0.2,
                         .node = 6.28,
                         .peri = 4.0,
                         .n = kGauss / std::pow(a, 1.5),
                         .M = 0.4,
                         .epochFraction = 0,
                         .epochDay = 2455000};
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
        set_time(*model, 2455000.0 + after);
        double state[6], same[6];
        ASSERT_TRUE(model->GetHelVec2K({SSO_SCFT, 1}, 1, state));
        ASSERT_TRUE(model->GetHelVec2K({SSO_ASTR, 1}, 1, same));
        EXPECT_LT(norm(load(state) - load(same)), 2e-10) << after;
        EXPECT_LT(norm(load(state + 3) - load(same + 3)), 1e-11) << after;
        double centre[3];
        ASSERT_TRUE(model->GetVecCentre2K({SSO_SCFT, 1}, 0, centre));
        EXPECT_EQ(norm(load(centre) - load(state)), 0.0);
    }
    set_time(*model, 2454999.9);
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
        ASSERT_TRUE(model_->AddSpacecraft(3, &mars, 1));
        mars.epoch_day = 2454000;  // in force long before, the same orbit run back
        mars.M -= std::sqrt(9.549548829725812e-11 / std::pow(0.0005 / 0.4, 3)) * 1010;
        ASSERT_TRUE(model_->AddSpacecraft(4, &mars, 1));
    }
    std::unique_ptr<CSWSolSys> model_;
};

// Between records about different bodies the two orbits are mixed in proportion to time.
TEST_F(Transfer, BlendsFromOneBodyToTheNext) {
    for (const double w : {0.0, 0.25, 0.5, 0.9}) {
        set_time(*model_, 2455000.0 + 10 * w);
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
}

// No jump at either end of the stretch: in 2 ms a spacecraft moves less than 1e-9 au.
TEST_F(Transfer, IsContinuousAcrossRecords) {
    for (const double epoch : {2455010.0, 2455020.0}) {
        set_time(*model_, epoch - 1e-8);
        const Vec3 before = heliocentric(*model_, {SSO_SCFT, 1});
        set_time(*model_, epoch + 1e-8);
        EXPECT_LT(norm(heliocentric(*model_, {SSO_SCFT, 1}) - before), 2e-9) << epoch;
    }
}

// About an asteroid a spacecraft goes with (433) Eros and its mass.
TEST_F(Transfer, EndsAtEros) {
    set_time(*model_, 2455030.0);
    const Vec3 craft = heliocentric(*model_, {SSO_SCFT, 1});
    double about[3];
    ASSERT_TRUE(model_->GetVecCentre2K({SSO_SCFT, 1}, 0, about));
    EXPECT_NEAR(norm(load(about)), 2e-7, 1e-16);
    const Vec3 eros = heliocentric(*model_, {SSO_ASTR, 433});
    EXPECT_LT(norm(craft - eros - load(about)), 1e-15);
    EXPECT_EQ(model_->GetGravity({SSO_ASTR, 433}), 2.0067522484920783e-18);
    EXPECT_EQ(model_->GetGravity({SSO_ASTR, 434}), -1.0);
    // Nine years after the epoch of the built-in elements: perturbations by less than 0.1 au.
    const Orbit reference = reference_orbits()[2];
    ASSERT_EQ(reference.name, "Eros");
    ASSERT_TRUE(model_->AddAsteroid(7, {.elements = reference.elements}));
    EXPECT_LT(norm(heliocentric(*model_, {SSO_ASTR, 7}) - eros), 0.1);
}

// An object of the host's own is where its record says at the epoch, and again after a turn.
TEST(UserObject, ReturnsToItsState) {
    const auto model = make_model(Source::kDe405);
    const struct {
        int planet;
        double mu, r, v;
    } cases[] = {{3, 8.887692446707102e-10, 4.6e-5, 4.3e-3},
                 {4, 9.549548829725812e-11, 6e-5, 1.2e-3},
                 {10, 0.00029591220828411956, 1.1, 0.015}};
    for (const auto& c : cases) {
        UserObjectRecord record;
        record.central_number = c.planet;
        record.epoch_day = 2455123;
        record.epoch_fraction = 0.125;
        const double state[6] = {0.6 * c.r, 0.0, 0.8 * c.r, 0.1 * c.v, 0.9 * c.v, -0.2 * c.v};
        std::copy(state, state + 6, record.state);
        ASSERT_TRUE(model->AddUserObject(1, record));
        const SSO_ID id(SSO_USCO, 1);
        model->UpdateSys(2455123, 0.125);
        double start[6];
        ASSERT_TRUE(model->GetVecCentre2K(id, 1, start));
        // Turned into J2000 without a change of shape; about the Earth not at all. To the 1e-10
        // rad of the solution of Kepler's equation.
        EXPECT_NEAR(norm(load(start)), c.r, 1e-10 * c.r);
        EXPECT_NEAR(dot(load(start), load(start + 3)), dot(load(state), load(state + 3)),
                    1e-10 * c.r * c.v);
        if (c.planet == 3) {
            EXPECT_LT(norm(load(start) - load(state)), 1e-10 * c.r);
        } else {
            double m[9], back[9];
            ASSERT_TRUE(model->GetMtrxEq2K_PlEq({SSO_PLNT, c.planet}, 2455123, 0.125, m, back));
            EXPECT_LT(norm(load_matrix(m) * load(start) - load(state)), 1e-10 * c.r);
        }

        const double v2 = dot(load(state + 3), load(state + 3));
        const double a = 1 / (2 / c.r - v2 / c.mu);
        const double period = kTwoPi * std::sqrt(a * a * a / c.mu);
        EXPECT_NEAR(model->GetOrbitalPeriod(id), period, 1e-12 * period);
        double later[6];
        model->UpdateSys(2455123, 0.125 + 0.37 * period);
        ASSERT_TRUE(model->GetVecCentre2K(id, 1, later));
        const double energy =
            dot(load(later + 3), load(later + 3)) / 2 - c.mu / norm(load(later));
        EXPECT_NEAR(energy, v2 / 2 - c.mu / c.r, 1e-9 * c.mu / c.r);
        EXPECT_LT(
            norm(cross(load(later), load(later + 3)) - cross(load(start), load(start + 3))),
            1e-9 * c.r * c.v);
        EXPECT_GT(norm(load(later) - load(start)), 0.1 * c.r);
        model->UpdateSys(2455123, 0.125 + period);
        ASSERT_TRUE(model->GetVecCentre2K(id, 1, later));
        // The Julian date as one double holds 4e-10 day.
        EXPECT_LT(norm(load(later) - load(start)), 1e-9 * c.v + 1e-9 * c.r);

        double centre[6], whole[6];
        ASSERT_TRUE(model->GetHelVec2K({SSO_PLNT, c.planet}, 1, centre));
        ASSERT_TRUE(model->GetHelVec2K(id, 1, whole));
        EXPECT_LT(norm(load(whole) - load(centre) - load(later)), 1e-15);
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

}  // namespace
