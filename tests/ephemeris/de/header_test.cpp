// The door: which files pass as DE files. Every refusal is one well-formed file spoilt at one
// place.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <limits>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "solsys/de_ephemeris.h"
#include "tests/support/de_file_writer.h"
#include "tests/support/temp_folder.h"

namespace {

using de_file::Layout;

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr std::int32_t kMaxInt = std::numeric_limits<std::int32_t>::max();

std::unique_ptr<DEHeader> header_of(const TempFolder& folder, const std::string& bytes) {
    return DE_Ephemeris::readHeader(folder.write("file.bin", bytes).c_str());
}

// What a caller relies on: no coefficient of any body lies outside the file.
void expect_safe(const DEHeader& header, std::size_t length) {
    const double records = std::trunc((header.end_jd - header.start_jd) / header.span) + 2;
    EXPECT_GE(records, 3);
    EXPECT_EQ(records * header.ncoeff * 8, static_cast<double>(length));
    for (int row = 0; row < 11; ++row) {
        const auto& [offset, terms, subs] = header.pointers[row];
        EXPECT_GE(offset, 3);
        EXPECT_TRUE(terms >= 2 && terms <= 20) << terms;
        EXPECT_GE(subs, 1);
        EXPECT_LE(offset - 1.0 + 3.0 * terms * subs, header.ncoeff);
    }
}

// More than 400 constants push the pointers of the mantle and of TT-TDB back by their names.
TEST(DeHeader, FieldsComeBack) {
    const TempFolder folder;
    for (const std::int32_t ncon : {0, 156, 400, 401, 572, 645, 1000}) {
        Layout layout;
        layout.ncon = ncon;
        layout.series[11] = {10, 4};
        std::string bytes = de_file::bytes(layout);
        de_file::put(bytes, de_file::kLibrations + 4, std::int32_t{12});
        const auto further = static_cast<std::size_t>(6 * std::max(ncon - 400, 0));
        for (std::int32_t i = 0; i < 6; ++i)
            de_file::put(bytes,
                         de_file::kFurtherNames + further + 4 * static_cast<std::size_t>(i),
                         7000 + i);
        const auto header = header_of(folder, bytes);
        ASSERT_TRUE(header);
        EXPECT_EQ(header->start_jd, layout.start);
        EXPECT_EQ(header->end_jd, layout.end);
        EXPECT_EQ(header->span, layout.span);
        EXPECT_EQ(header->au_km, layout.au_km);
        EXPECT_EQ(header->emrat, layout.emrat);
        EXPECT_EQ(header->ncon, ncon);
        EXPECT_EQ(header->de_number, 405);
        EXPECT_EQ(header->ncoeff, layout.ncoeff());
        EXPECT_EQ(header->pointers[9][0], layout.offset(9));
        EXPECT_EQ(header->pointers[11][1], 10);
        EXPECT_EQ(header->libration_pointers[1], 12);
        EXPECT_EQ(header->mantle_pointers[0], 7000);
        EXPECT_EQ(header->tt_tdb_pointers[2], 7005);
        EXPECT_FALSE(header->constant_names || header->constant_values);
        expect_safe(*header, bytes.size());
    }
}

TEST(DeHeader, WithOneFaultIsRefused) {
    const TempFolder folder;
    const Layout plain;
    const std::string good = de_file::bytes(plain);
    ASSERT_TRUE(header_of(folder, good));
    const auto expect_refused = [&](const std::string& bytes, const std::string& what) {
        EXPECT_FALSE(header_of(folder, bytes)) << what;
    };
    const auto pointer = [](std::size_t row, std::size_t column) {
        return de_file::kPointers + 12 * row + 4 * column;
    };
    const struct {
        std::size_t at;
        std::vector<double> values;
    } numbers[] = {
        {de_file::kStart, {plain.start - 1, kNan}},
        {de_file::kEnd, {plain.end + 1, kNan, kInf, plain.start, plain.start - 64}},
        {de_file::kSpan, {0, -32, kNan, kInf, 5e-324, 1e-9, 10}},
        {de_file::kAu, {149597870691.0, kNan, 149597870.591}},  // in metres, and just off
        {de_file::kEmrat, {kNan, -1}}};
    for (const auto& [at, values] : numbers) {
        for (const double value : values) {
            std::string bytes = good;
            de_file::put(bytes, at, value);
            expect_refused(bytes, std::to_string(value) + " at " + std::to_string(at));
        }
    }
    const struct {
        std::size_t at;
        std::vector<std::int32_t> values;
    } integers[] = {{de_file::kNcon, {-1, kMaxInt, 100000}},
                    {pointer(3, 0), {0, 2, -kMaxInt}},  // before the record, in its dates
                    {pointer(10, 0), {plain.ncoeff(), kMaxInt}},
                    {pointer(4, 1), {1, 21, kMaxInt}},
                    {pointer(5, 2), {0, -1, kMaxInt}}};
    for (const auto& [at, values] : integers) {
        for (const std::int32_t value : values) {
            std::string bytes = good;
            de_file::put(bytes, at, value);
            expect_refused(bytes, std::to_string(value) + " at " + std::to_string(at));
        }
    }
    const std::string end = "2451632.5";
    for (const auto& [from, to] : {std::pair<std::string, std::string>{"Small", "Sm\nll"},
                                   {"for tests", std::string("for\0tests", 9)},
                                   {"Final Epoch: JED", "Final Epoch: jed"},
                                   {good.substr(0, 252), std::string(252, '\0')},
                                   {end, "unknown__"},
                                   {end, "nan      "}})
        expect_refused(std::string(good).replace(good.find(from), from.size(), to), to);
    for (const std::size_t more : {1, 8, 20}) expect_refused(good + std::string(more, 'x'), "");
    expect_refused(std::string(good.size(), 'A'), "text");
    std::string swapped = good;  // big-endian doubles
    for (std::size_t at = de_file::kStart; at < de_file::kNcon; at += 8)
        std::reverse(&swapped[at], &swapped[at] + 8);
    std::reverse(&swapped[de_file::kAu], &swapped[de_file::kAu] + 8);
    expect_refused(swapped, "other endian");
}

TEST(DeHeader, MissingFilesAndFoldersHaveNone) {
    const TempFolder folder;
    EXPECT_FALSE(DE_Ephemeris::readHeader(nullptr));
    for (const std::string& path : {std::string(), folder / "missing", folder.path()})
        EXPECT_FALSE(DE_Ephemeris::readHeader(path.c_str())) << path;
}

// A cut file is refused unless the cut leaves records of a length that still holds every body:
// the length of records is known from the length of the file alone.
TEST(DeHeader, TruncationsAreRefusedOrSafe) {
    const TempFolder folder;
    Layout layout;
    layout.padding = 40;
    const std::string bytes = de_file::bytes(layout);
    const std::size_t records = static_cast<std::size_t>(layout.records()) + 2;
    const std::string path = folder.write("file.bin", bytes);
    int accepted = 0;
    for (std::size_t length = bytes.size(); length-- > 0;) {
        // Every length that records could have, every one around the fields, some of the rest.
        const bool fields =
            length >= de_file::kStart - 8 && length < de_file::kFurtherNames + 32;
        if (length % (8 * records) != 0 && length % 13 != 0 && !fields) continue;
        std::filesystem::resize_file(path, length);
        const auto header = DE_Ephemeris::readHeader(path.c_str());
        if (!header) continue;
        ++accepted;
        EXPECT_EQ(length % (8 * records), 0u);
        expect_safe(*header, length);
    }
    // Records without part of their padding, from 0 to all but one double of it.
    EXPECT_EQ(accepted, layout.ncoeff() - (layout.offset(12) - 1));
}

}  // namespace
