// Good and bad element sets as they are written.
#include <gmock/gmock.h>

#include <fstream>
#include <sstream>

#include "tests/support/published_sets.h"

namespace {

using namespace solsys::test;

std::string file_text(const std::string& name) {
    std::ifstream file(kElementSets + name, std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

std::size_t read(const std::string& text, std::vector<TLERecord>& sets,
                 std::vector<TLEFault>& faults) {
    return TLEConvert::Read(text.data(), text.size(), &sets, &faults);
}

TEST(ElementLines, AreJudgedByTheColumn) {
    std::map<std::string, NamedRow> values;
    for (const NamedRow& row : read_named_csv(kElementSets + "format_values.csv"))
        values[row.text("case")] = row;
    for (const NamedRow& row : read_named_csv(kElementSets + "format_cases.csv")) {
        const std::string name = row.text("case");
        std::string line1 = row.text("line1");
        if (const auto tab = line1.find("\\t"); tab != std::string::npos)
            line1.erase(tab, 1), line1[tab] = '\t';
        TLEConvert set;
        const bool good = set.Set((line1 + "  \r").c_str(), row.text("line2").c_str()) == 0;
        const TLEFault& fault = set.GetFault();
        EXPECT_EQ(good, row.text("verdict") == "ok")
            << name << ": " << TLEFaultName(fault.code);
        EXPECT_STREQ(TLEFaultName(fault.code), good ? "none" : row.text("fault").c_str())
            << name;
        EXPECT_EQ(fault.line, static_cast<int>(row["line"])) << name;
        EXPECT_EQ(fault.column, static_cast<int>(row["column"])) << name;
        if (!good) continue;
        const NamedRow& is = values.at(name);
        const TLERecord& record = *set.GetRecord();
        EXPECT_EQ(record.number, static_cast<int>(is["number"])) << name;
        EXPECT_EQ(record.designator, is.text("designator")) << name;
        EXPECT_NEAR(record.epochDay - is["day"] + record.epochFraction, is["fraction"], 1e-9);
        const std::pair<double, const char*> numbers[] = {
            {record.meanMotionDot, "ndot_2"},
            {record.meanMotionDDot, "nddot_6"},
            {record.bstar, "bstar"},
            {record.inclination, "inclination"},
            {record.node, "node"},
            {record.eccentricity, "eccentricity"},
            {record.perigee, "perigee"},
            {record.meanAnomaly, "anomaly"},
            {record.meanMotion, "motion"},
            {1.0 * record.setNumber, "set_number"},
            {1.0 * record.revolution, "revolution"}};
        for (const auto& [value, column] : numbers)
            EXPECT_DOUBLE_EQ(value, is[column]) << name << ' ' << column;
    }
}

class Messages : public testing::TestWithParam<const char*> {};

TEST_P(Messages, AreReadOrRefusedOneByOne) {
    std::vector<TLERecord> sets;
    std::vector<TLEFault> faults;
    read(file_text(GetParam()), sets, faults);
    std::size_t good = 0, bad = 0;
    for (const NamedRow& row : read_named_csv(kElementSets + "omm_verdicts.csv")) {
        if (row.text("file") != GetParam()) continue;
        if (row.text("verdict") == "bad") {
            ASSERT_LT(bad, faults.size());
            EXPECT_EQ(faults[bad++].key, row.text("key_at_fault")) << row.text("index");
            continue;
        }
        ASSERT_LT(good, sets.size());
        const TLERecord& record = sets[good++];
        EXPECT_EQ(record.number, static_cast<int>(row["number"]));
        EXPECT_NEAR(record.epochDay - row["day"] + record.epochFraction, row["fraction"],
                    1e-12);
        TLEConvert set;
        double state[6];
        ASSERT_EQ(set.Set(record), 0);
        ASSERT_EQ(set.GetState(1000, state), TLE_OK);
        EXPECT_NEAR(state[0], row["x_km"], 2e-6) << row.text("index");
        EXPECT_NEAR(state[1], row["y_km"], 2e-6) << row.text("index");
        EXPECT_NEAR(state[2], row["z_km"], 2e-6) << row.text("index");
    }
    EXPECT_EQ(sets.size(), good);
    EXPECT_EQ(faults.size(), bad);
}
INSTANTIATE_TEST_SUITE_P(Forms, Messages, testing::Values("omm_cases.json", "omm_cases.csv"));

// Three-line and two-line sets, blank lines, comments, other line ends, what is no set.
TEST(ElementText, ReadsSetsOfLinesAmongOtherThings) {
    const std::string line1 =
        "1 99001U 24017A   24123.45678901  .00001234  00000-0  56789-4 0  1233";
    const std::string line2 =
        "2 99001  51.6400 123.4567 0001234  45.6789 314.2718 15.50123456123457";
    std::string spoilt = line1;
    spoilt[20] = '2';
    const std::string text = "# a list\r\n\r\n0 STATION\r\n" + line1 + "\r\n" + line2 +
                             "\r\n\r\n" + line1 + "\n" + line2 + "\n1 SMALL ONE\n" + line1 +
                             "\n" + line2 + "\nBAD\n" + spoilt + "\n" + line2 + "\n" + line2 +
                             "\n" + line1;
    std::vector<TLERecord> sets;
    std::vector<TLEFault> faults;
    ASSERT_EQ(read(text, sets, faults), 3u);
    EXPECT_STREQ(sets[0].name, "STATION");
    EXPECT_STREQ(sets[1].name, "");
    EXPECT_STREQ(sets[2].name, "1 SMALL ONE");
    std::vector<std::pair<int, int>> found;
    for (const TLEFault& fault : faults) found.emplace_back(fault.code, fault.line);
    EXPECT_THAT(found, testing::ElementsAre(std::pair<int, int>(TLE_FAULT_CHECKSUM, 13),
                                            std::pair<int, int>(TLE_FAULT_LINE_NUMBER, 15),
                                            std::pair<int, int>(TLE_FAULT_LENGTH, 16)));
}

// Quoted line ends are counted: a fault is on the last line of its row.
TEST(ElementText, FaultsOfTablesHaveTheirLines) {
    const std::string whole = file_text("omm_cases.csv");
    std::vector<TLERecord> sets;
    std::vector<TLEFault> faults;
    read(whole.substr(0, whole.find('\n')) + "\na,b\n\n\"two\nlines\",c\nd,e", sets, faults);
    std::vector<std::pair<int, int>> found;
    for (const TLEFault& fault : faults) found.emplace_back(fault.code, fault.line);
    EXPECT_THAT(found, testing::ElementsAre(std::pair<int, int>(TLE_FAULT_FIELDS, 2),
                                            std::pair<int, int>(TLE_FAULT_FIELDS, 5),
                                            std::pair<int, int>(TLE_FAULT_FIELDS, 6)));
}

// Every cut of a good text ends, and gives no set that was not whole.
TEST(ElementText, EndsWhateverIsCutOff) {
    for (const char* name : {"omm_cases.json", "omm_cases.csv"}) {
        const std::string whole = file_text(name);
        std::size_t before = 0;
        for (std::size_t size = 0; size < whole.size(); size += 3) {
            std::vector<TLERecord> sets;
            std::vector<TLEFault> faults;
            const std::size_t count = read(whole.substr(0, size), sets, faults);
            EXPECT_GE(count, before) << size;
            before = count;
        }
    }
    std::vector<TLERecord> sets;
    std::vector<TLEFault> faults;
    for (const std::string& text :
         {std::string(100000, '['), std::string("{\"a\":") + std::string(100000, '{'),
          std::string("[{\"\\u12"), std::string("\"\0{", 3), std::string(5000, '\n')})
        EXPECT_EQ(read(text, sets, faults), 0u);
}

}  // namespace
