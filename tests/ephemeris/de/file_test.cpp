// Which file is chosen, and what closing and replacing do to those who hold a state.
#include "platform/file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <fstream>

#include "tests/support/de_file_writer.h"
#include "tests/support/shared_de_file.h"

namespace {

using de_file::Layout;

// A file of so many records whose Sun stands still at x [km].
std::string file_with(int records, double x = 1e6, double start = 2451536.5) {
    Layout layout;
    layout.start = start;
    layout.end = start + 32.0 * records;
    layout.coefficient = [x](int body, int, int, int axis, int degree) {
        return body == 11 && axis == 0 && degree == 0 ? x : 0.0;
    };
    return de_file::bytes(layout);
}

class DeFile : public SharedDeFile {
  protected:
    double covered() const {
        const double* range = DE_Ephemeris::getTimeRange();
        return (range[1] - range[0]) / 32.0;
    }
    double sun_x(DE_EvalState& state) const {
        double out[6] = {-1};
        return DE_Ephemeris::getState(state, 2451545, 0.0, 11, 0, out) == 0
                   ? out[0] * 149597870.691
                   : -1;
    }
};

TEST_F(DeFile, ANamedFileIsUsedUntilClosed) {
    folder_.write("long", file_with(9));
    ASSERT_TRUE(DE_Ephemeris::open(folder_.write("short.405", file_with(2)).c_str()));
    EXPECT_EQ(covered(), 2);
    // One is open: another name changes nothing.
    EXPECT_TRUE(DE_Ephemeris::open((folder_ / "long").c_str()));
    EXPECT_EQ(covered(), 2);
    EXPECT_EQ(printed(), "");
    DE_EvalState state;
    EXPECT_NEAR(sun_x(state), 1e6, 1e-9);
    DE_Ephemeris::clear();
    DE_Ephemeris::clear();
    EXPECT_EQ(sun_x(state), -1);
}

TEST_F(DeFile, AFolderGivesItsLongestSpan) {
    folder_.write("a.405", file_with(2));
    folder_.write("longest", file_with(7, 1e6));
    folder_.write("zequal.406", file_with(7, 2e6));  // as long, but later by name
    folder_.write("notes.txt", "no ephemeris");
    folder_.write("empty", "");
    std::string broken = file_with(50);
    broken.pop_back();
    folder_.write("broken.441", broken);
    std::filesystem::create_directory(folder_ / "folder.405");
    const std::string unreadable = folder_.write("unreadable.405", file_with(99));
    std::filesystem::permissions(unreadable, std::filesystem::perms::none);
    if (solsys::is_readable_file(unreadable)) {
        // Some users, and some systems, read everything.
        std::filesystem::permissions(unreadable, std::filesystem::perms::owner_all);
        std::filesystem::remove(unreadable);
    }

    ASSERT_TRUE(DE_Ephemeris::open(folder_.path().c_str()));
    EXPECT_EQ(covered(), 7);
    DE_EvalState state;
    EXPECT_NEAR(sun_x(state), 1e6, 1e-9);
}

TEST_F(DeFile, TheWorkFolderIsTheLastResort) {
    std::filesystem::create_directories(folder_ / "work/de441pc");
    folder_.write("work/de441pc/binp0999-3000.406", file_with(3));
    EXPECT_TRUE(DE_Ephemeris::open(""));
    EXPECT_EQ(covered(), 3);

    folder_.write("work/de441pc/binm5000-p10000.408", file_with(5));
    DE_Ephemeris::clear();
    EXPECT_TRUE(DE_Ephemeris::open(nullptr));
    EXPECT_EQ(covered(), 5);

    // A folder without any, and a file that is none, lead there too.
    for (const std::string& path :
         {folder_.path() + "/work", folder_.write("x", "not a DE file")}) {
        DE_Ephemeris::clear();
        EXPECT_TRUE(DE_Ephemeris::open(path.c_str())) << path;
        EXPECT_EQ(covered(), 5);
    }
    EXPECT_EQ(printed(), "");
}

TEST_F(DeFile, NothingToOpenIsReported) {
    EXPECT_FALSE(DE_Ephemeris::open(folder_.path().c_str()));
    EXPECT_THAT(printed(),
                testing::StartsWith("Ephemeris file not found:\n" + (folder_ / "work")));
    EXPECT_THAT(printed(), testing::EndsWith("binp0999-3000.406"));

    // One that is there and no DE file fails without a word.
    printed().clear();
    std::filesystem::create_directories(folder_ / "work/de441pc");
    folder_.write("work/de441pc/binp0999-3000.406", "nothing");
    EXPECT_FALSE(DE_Ephemeris::open(nullptr));
    EXPECT_EQ(printed(), "");
    DE_EvalState state;
    EXPECT_EQ(sun_x(state), -1);
}

// 64-bit record addresses: the last record of a sparse file of 5 GB.
TEST_F(DeFile, RecordsBeyondFourGigabytesAreReached) {
    Layout layout;
    layout.start = 0.5;
    layout.end = 0.5 + 32.0 * 600000;
    // The header, then a hole, then the last record's Sun.
    Layout first = layout;
    first.end = first.start + 32.0;
    std::string header = de_file::bytes(first).substr(0, 2880);
    header.replace(0, 252, de_file::titles("long", layout.start, layout.end));
    de_file::put(header, de_file::kEnd, layout.end);
    const std::string path = folder_.write("long", header);
    const std::uintmax_t record = 8 * 1018, size = record * (600000 + 2);
    const double x = 5e6;
    std::error_code failed;
    std::filesystem::resize_file(
        path, size - record + 8 * static_cast<std::uintmax_t>(layout.offset(10) - 1), failed);
    if (failed) GTEST_SKIP() << "no sparse files here";
    std::ofstream(path, std::ios::binary | std::ios::app)
        .write(reinterpret_cast<const char*>(&x), sizeof x);
    std::filesystem::resize_file(path, size);

    ASSERT_TRUE(DE_Ephemeris::open(path.c_str()));
    DE_EvalState state;
    double out[3] = {};
    ASSERT_EQ(DE_Ephemeris::getState(state, 32 * 600000 - 31, 0.0, 11, 0, out), 0);
    EXPECT_NEAR(out[0] * 149597870.691, x, 1e-8);
    ASSERT_EQ(DE_Ephemeris::getState(state, 32 * 599999 - 31, 0.0, 11, 0, out), 0);
    EXPECT_EQ(out[0], 0.0);
}

}  // namespace
