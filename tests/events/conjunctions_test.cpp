// Conjunctions: recorded places of another ephemeris, and the rules of the walk.
#include "solsys/conjunctions.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

#include "core/constants.h"
#include "events/search/span.h"
#include "tests/support/csv.h"
#include "tests/support/debug_text.h"
#include "tests/support/sky_models.h"

namespace {

using solsys::test::Source;
using Ids = std::vector<SSO_ID>;

SSO_ID body(int number) { return {number == 301 ? SSO_MOON : SSO_PLNT, number}; }

// Every recorded conjunction in right ascension and longitude is found, to the arcseconds at
// which false position stops.
TEST(Conjunctions, AreThoseOfAnotherEphemeris) {
    const auto model = solsys::test::make_model(Source::kDe405);
    CSWConjunc search(model.get());
    int checked = 0;
    for (const auto& row :
         solsys::test::read_csv(SOLSYS_TEST_DATA "/reference/conjunctions.csv")) {
        if (row[2] == "closest") continue;
        Ids pair{body(std::stoi(row[0])), body(std::stoi(row[1]))};
        const double time = solsys::search::ut_from_tt(std::stod(row[3]));
        search.InitSearch(time - 3, time + 3, &pair, 0, row[2] == "longitude");
        CONJUN event;
        ASSERT_TRUE(search.SearchNext(&event)) << row[3];
        const bool moon = pair[0] == body(301);
        const double days = (moon ? 11 : 1.5) * solsys::kArcsec / std::stod(row[6]);
        EXPECT_NEAR(event.time, time, days) << row[0] << ' ' << row[1] << ' ' << row[3];
        EXPECT_NEAR(event.separation, std::stod(row[4]), (moon ? 30 : 3) * solsys::kArcsec);
        EXPECT_EQ(event.number1, pair[0].number);
        EXPECT_EQ(event.number2, pair[1].number);
        EXPECT_FALSE(search.SearchNext(&event));
        ++checked;
    }
    EXPECT_GT(checked, 60);
}

TEST(Conjunctions, OrderOfRequestChangesNoEventAndIsKept) {
    const auto model = solsys::test::make_model(Source::kDe405);
    CSWConjunc search(model.get());
    Ids pair{body(1), body(2)};
    search.InitSearch(2451545, 2455198, &pair, 0, false);
    const int count = search.SearchAll();
    const std::vector<CONJUN> first = search.GetResults();
    std::swap(pair[0], pair[1]);
    search.InitSearch(2451545, 2455198, &pair, 0, false);
    ASSERT_EQ(search.SearchAll(), count);
    ASSERT_GT(count, 10);
    for (int i = 0; i < count; ++i) {
        EXPECT_EQ(search.GetResults()[i].time, first[i].time);
        EXPECT_EQ(search.GetResults()[i].number1, 2);
        EXPECT_EQ(first[i].number1, 1);
    }
}

// Sun and Mars: conjunctions two years apart, and no oppositions between them.
TEST(Conjunctions, OppositionsAreNone) {
    const auto model = solsys::test::make_model(Source::kDe405);
    CSWConjunc search(model.get());
    Ids pair{body(4), body(10)};
    search.InitSearch(2451545, 2455198, &pair, 0, true);
    ASSERT_EQ(search.SearchAll(), 5);
    for (const CONJUN& event : search.GetResults()) EXPECT_LT(event.separation, 0.03);
}

// Mercury, Venus and Jupiter in May 2013: the first sample that has come closer and is within
// the limit, at a multiple of ten days from the start, its time carrying Delta T twice.
TEST(Conjunctions, GatheringsAreReportedAtTheSample) {
    const auto model = solsys::test::make_model(Source::kDe405);
    CSWConjunc search(model.get());
    Ids three{body(1), body(2), body(5)};
    const double start = 2456390.5;
    search.InitSearch(start, start + 100, &three, 5 * solsys::kDegree, false);
    support::DebugText debug;
    CONJUN event;
    ASSERT_TRUE(search.SearchNext(&event));
    const double delta_t = solsys::search::delta_t(start);
    const double days = event.time - 2 * delta_t - start;
    EXPECT_NEAR(days, 10 * std::round(days / 10), 1e-8);
    EXPECT_NEAR(days, 50, 1e-8);
    EXPECT_LT(event.separation, 5 * solsys::kDegree);
    EXPECT_EQ(event.type1, 0);
    EXPECT_THAT(debug.text(), testing::StartsWith("2456390.500778 <=> "));
    EXPECT_EQ(std::count(debug.text().begin(), debug.text().end(), '\n'), 6);
}

TEST(Conjunctions, WhatCannotBeSearchedFindsNothing) {
    const auto model = solsys::test::make_model(Source::kDe405);
    CSWConjunc search(model.get());
    const double nan = std::nan("");
    Ids good{body(2), body(5)}, unknown{body(2), SSO_ID(SSO_PLNT, 77)}, one{body(2)}, none;
    const struct {
        double start, end;
        Ids* ids;
    } cases[] = {
        {2451545, 2451545, &good},   {2452545, 2451545, &good},    {nan, 2451545, &good},
        {2451545, 1e300, &good},     {2451545, 2455545, &one},     {2451545, 2455545, &none},
        {2451545, 2455545, nullptr}, {2451545, 2455545, &unknown}, {-2e9, 2e9, &good}};
    for (const auto& c : cases) {
        CONJUN event;
        search.InitSearch(c.start, c.end, c.ids, 0.1, false);
        EXPECT_FALSE(search.SearchNext(&event));
        EXPECT_EQ(search.SearchAll(), 0);
    }
    search.InitSearch(2451545, 2455545, &good, 0, false);
    search.Stop();
    EXPECT_EQ(search.SearchAll(), 0);
}

TEST(Conjunctions, DestructorTellsWhatItFrees) {
    const auto model = solsys::test::make_model(Source::kBuiltIn);
    const char* ends = "ResListReset\n~CSWConjunc return\n";
    for (const bool owned : {false, true}) {
        auto search = std::make_unique<CSWConjunc>(owned ? nullptr : model.get());
        support::DebugText debug;
        search.reset();
        EXPECT_EQ(debug.text(), std::string("~CSWConjunc\n") +
                                    (owned ? "ET_UT::Finish\ndelete m_SolSys\n" : "") + ends);
    }
}

}  // namespace
