// The door: which files pass as DE files. Every refusal is one well-formed file spoilt at one
// place.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <limits>
#include <random>

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

// Changes an existing file in place: making it anew is slow where the disk is waited for.
void overwrite(const std::string& path, const std::string& bytes) {
    std::fstream(path, std::ios::in | std::ios::out | std::ios::binary) << bytes;
    std::filesystem::resize_file(path, bytes.size());
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

TEST(DeHeader, FieldsComeBack) {
    const TempFolder folder;
    Layout layout;
    layout.series[11] = {10, 4};
    std::string bytes = de_file::bytes(layout);
    de_file::put(bytes, de_file::kLibrations + 4, std::int32_t{12});
    const auto header = header_of(folder, bytes);
    ASSERT_TRUE(header);
    EXPECT_EQ(header->start_jd, layout.start);
    EXPECT_EQ(header->end_jd, layout.end);
    EXPECT_EQ(header->span, layout.span);
    EXPECT_EQ(header->au_km, layout.au_km);
    EXPECT_EQ(header->emrat, layout.emrat);
    EXPECT_EQ(header->ncon, 156);
    EXPECT_EQ(header->de_number, 405);
    EXPECT_EQ(header->ncoeff, layout.ncoeff());
    EXPECT_EQ(header->pointers[9][0], layout.offset(9));
    EXPECT_EQ(header->pointers[11][1], 10);
    EXPECT_EQ(header->libration_pointers[1], 12);
    EXPECT_FALSE(header->constant_names || header->constant_values);
    expect_safe(*header, bytes.size());
}

// More than 400 constants push the pointers of the mantle and of TT-TDB back by their names.
class FurtherNames : public testing::TestWithParam<std::int32_t> {};

TEST_P(FurtherNames, MoveTheLastPointers) {
    const TempFolder folder;
    Layout layout;
    layout.ncon = GetParam();
    std::string bytes = de_file::bytes(layout);
    const std::size_t further =
        GetParam() > 400 ? 6 * static_cast<std::size_t>(GetParam() - 400) : 0;
    for (std::int32_t i = 0; i < 6; ++i)
        de_file::put(bytes, de_file::kFurtherNames + further + 4 * static_cast<std::size_t>(i),
                     7000 + i);
    const auto header = header_of(folder, bytes);
    ASSERT_TRUE(header);
    EXPECT_EQ(header->mantle_pointers[0], 7000);
    EXPECT_EQ(header->tt_tdb_pointers[2], 7005);
}

INSTANTIATE_TEST_SUITE_P(Counts, FurtherNames,
                         testing::Values(0, 156, 400, 401, 572, 645, 1000));

struct Fault {
    const char* name;
    std::function<void(std::string&)> spoil;
};

template <class T>
std::function<void(std::string&)> put(std::size_t at, T value) {
    return [=](std::string& bytes) { de_file::put(bytes, at, value); };
}

std::function<void(std::string&)> retitle(const char* from, const char* to) {
    return [=](std::string& bytes) { bytes.replace(bytes.find(from), std::strlen(from), to); };
}

std::size_t pointer(std::size_t row, std::size_t column) {
    return de_file::kPointers + 12 * row + 4 * column;
}

class HostileHeader : public testing::TestWithParam<Fault> {};

TEST_P(HostileHeader, IsRefused) {
    const TempFolder folder;
    std::string bytes = de_file::bytes(Layout{});
    ASSERT_TRUE(header_of(folder, bytes));
    GetParam().spoil(bytes);
    EXPECT_FALSE(header_of(folder, bytes));
}

const Layout kPlain;
INSTANTIATE_TEST_SUITE_P(
    Faults, HostileHeader,
    testing::Values(
        Fault{"TitleWithNewline", put(83, '\n')}, Fault{"TitleWithNul", put(251, '\0')},
        Fault{"NoSecondEpoch", retitle("Final Epoch: JED", "Final Epoch: jed")},
        Fault{"NoEpochs", put(0, std::array<char, 252>{})},
        Fault{"EpochNotANumber", retitle("2451632.5", "unknown__")},
        Fault{"EpochNan", retitle("2451632.5", "nan      ")},
        Fault{"StartBeforeTitle", put(de_file::kStart, kPlain.start - 1)},
        Fault{"EndAfterTitle", put(de_file::kEnd, kPlain.end + 1)},
        Fault{"StartNan", put(de_file::kStart, kNan)}, Fault{"EndNan", put(de_file::kEnd, kNan)},
        Fault{"EndInfinite", put(de_file::kEnd, kInf)},
        Fault{"StartAtEnd", put(de_file::kEnd, kPlain.start)},
        Fault{"EndBeforeStart", put(de_file::kEnd, kPlain.start - 64)},
        Fault{"SpanZero", put(de_file::kSpan, 0.0)},
        Fault{"SpanNegative", put(de_file::kSpan, -32.0)},
        Fault{"SpanNan", put(de_file::kSpan, kNan)},
        Fault{"SpanInfinite", put(de_file::kSpan, kInf)},
        Fault{"SpanDenormal", put(de_file::kSpan, 5e-324)},
        Fault{"SpanTiny", put(de_file::kSpan, 1e-9)},
        Fault{"SpanNotDividing", put(de_file::kSpan, 10.0)},
        Fault{"AuInMetres", put(de_file::kAu, 149597870691.0)},
        Fault{"AuNan", put(de_file::kAu, kNan)},
        Fault{"AuOff", put(de_file::kAu, 149597870.591)},
        Fault{"EmratNan", put(de_file::kEmrat, kNan)},
        Fault{"EmratMinusOne", put(de_file::kEmrat, -1.0)},
        Fault{"NconNegative", put(de_file::kNcon, -1)},
        Fault{"NconHuge", put(de_file::kNcon, kMaxInt)},
        Fault{"NconPastEnd", put(de_file::kNcon, 100000)},
        Fault{"OffsetZero", put(pointer(3, 0), 0)}, Fault{"OffsetInDates", put(pointer(3, 0), 2)},
        Fault{"OffsetNegative", put(pointer(0, 0), -kMaxInt)},
        Fault{"OffsetPastRecord", put(pointer(10, 0), kPlain.ncoeff())},
        Fault{"OffsetHuge", put(pointer(10, 0), kMaxInt)},
        Fault{"OneTerm", put(pointer(4, 1), 1)}, Fault{"TooManyTerms", put(pointer(4, 1), 21)},
        Fault{"TermsOverflow", put(pointer(4, 1), kMaxInt)},
        Fault{"NoSubinterval", put(pointer(5, 2), 0)},
        Fault{"SubintervalsNegative", put(pointer(5, 2), -1)},
        Fault{"SubintervalsOverflow", put(pointer(5, 2), kMaxInt)},
        Fault{"OneByteLonger", [](std::string& bytes) { bytes += 'x'; }},
        Fault{"OneDoubleLonger", [](std::string& bytes) { bytes.append(8, '\0'); }},
        Fault{"FourBytesARecordLonger", [](std::string& bytes) { bytes.append(20, '\0'); }},
        Fault{"OtherEndian",
              [](std::string& bytes) {
                  for (std::size_t at = de_file::kStart; at < de_file::kNcon; at += 8)
                      std::reverse(&bytes[at], &bytes[at] + 8);
                  std::reverse(&bytes[de_file::kAu], &bytes[de_file::kAu] + 8);
              }},
        Fault{"Text", [](std::string& bytes) { bytes.assign(bytes.size(), 'A'); }}),
    [](const auto& fault) { return fault.param.name; });

// What a reader of numbers in text takes: a sign, and 0 for what is no number at all.
TEST(DeHeader, TitleEpochsAreReadLeniently) {
    const TempFolder folder;
    for (const char* start : {"+2451536.", "-451536.5", "unknown  "}) {
        std::string bytes = de_file::bytes(Layout{});
        retitle("2451536.5", start)(bytes);
        EXPECT_TRUE(header_of(folder, bytes)) << start;
    }
}

TEST(DeHeader, MissingFilesAndFoldersHaveNone) {
    const TempFolder folder;
    EXPECT_FALSE(DE_Ephemeris::readHeader(nullptr));
    EXPECT_FALSE(DE_Ephemeris::readHeader(""));
    EXPECT_FALSE(DE_Ephemeris::readHeader((folder / "missing").c_str()));
    EXPECT_FALSE(DE_Ephemeris::readHeader(folder.path().c_str()));
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

// Random bytes, bits and splices; fixed seeds, so a failure comes again.
TEST(DeHeader, MutationsAreRefusedOrSafe) {
    const TempFolder folder;
    Layout layout;
    layout.padding = 40;
    const std::string original = de_file::bytes(layout);
    const std::string path = folder.write("file.bin", original);
    std::mt19937_64 draw(20251);
    const auto below = [&draw](std::size_t n) { return static_cast<std::size_t>(draw() % n); };
    const std::int32_t values[] = {0,       -1,           1,      2, 3, 20, 21, 400, 401,
                                   kMaxInt, -kMaxInt - 1, 1 << 30};
    int accepted = 0;
    for (int round = 0; round < 10000; ++round) {
        std::string bytes = original;
        for (std::size_t n = 1 + below(3); n > 0; --n) {
            const std::size_t at =
                de_file::kStart + below(de_file::kFurtherNames - de_file::kStart - 8);
            switch (below(4)) {
                case 0:
                    bytes[at] = static_cast<char>(draw());
                    break;
                case 1:
                    bytes[below(bytes.size())] ^= static_cast<char>(1 << below(8));
                    break;
                case 2:
                    de_file::put(bytes, at & ~std::size_t{3}, values[below(std::size(values))]);
                    break;
                default:
                    bytes.resize(bytes.size() -
                                 below(bytes.size() / 8) * (below(4) == 0 ? 1 : 0));
                    break;
            }
        }
        if (bytes.size() < de_file::kFurtherNames) continue;
        overwrite(path, bytes);
        if (const auto header = DE_Ephemeris::readHeader(path.c_str())) {
            ++accepted;
            expect_safe(*header, bytes.size());
        }
    }
    EXPECT_GT(accepted, 100);  // otherwise the mutations never reach the later checks
}

}  // namespace
