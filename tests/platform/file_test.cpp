// Files, folders and mappings, against what the standard library's own streams wrote.
#include "platform/file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "platform/clock.h"
#include "platform/mapped_file.h"
#include "tests/support/temp_folder.h"

namespace {

using solsys::MappedFile;
using solsys::ReadFile;

TEST(ReadFile, ReadsExactlyWhatIsThere) {
    const TempFolder folder;
    const std::string path = folder.write("data.bin", "0123456789");
    const auto file = ReadFile::open(path);
    ASSERT_TRUE(file);
    EXPECT_EQ(file->length(), 10);

    std::array<char, 4> part{};
    EXPECT_TRUE(file->read(6, part.data(), 4));
    EXPECT_EQ(std::string(part.data(), 4), "6789");
    // One byte past the end, wholly past it, and before the start.
    EXPECT_FALSE(file->read(7, part.data(), 4));
    EXPECT_FALSE(file->read(std::int64_t{1} << 40, part.data(), 1));
    EXPECT_FALSE(file->read(-1, part.data(), 1));
}

TEST(ReadFile, RefusesWhatIsNotAnOrdinaryFile) {
    const TempFolder folder;
    EXPECT_FALSE(ReadFile::open(""));
    EXPECT_FALSE(ReadFile::open(folder.path()));
    EXPECT_FALSE(ReadFile::open(folder / "missing"));
    EXPECT_FALSE(ReadFile::open(folder / "bad\xff\xfename"));
}

// Long ephemerides pass 4 GB; only the end of this file takes room on the disk.
TEST(ReadFile, ReachesBeyondFourGigabytes) {
    const TempFolder folder;
    const std::string path = folder.write("long.bin", "");
    constexpr std::int64_t kLength = (std::int64_t{1} << 32) + 4096;
    std::error_code failed;
    std::filesystem::resize_file(path, kLength - 3, failed);
    if (failed) GTEST_SKIP() << "no sparse files here";
    std::ofstream(path, std::ios::binary | std::ios::app) << "end";

    const auto file = ReadFile::open(path);
    ASSERT_TRUE(file);
    EXPECT_EQ(file->length(), kLength);
    std::array<char, 3> tail{};
    EXPECT_TRUE(file->read(kLength - 3, tail.data(), 3));
    EXPECT_EQ(std::string(tail.data(), 3), "end");

    const MappedFile mapped = MappedFile::open(path);
    ASSERT_NE(mapped.data(), nullptr);
    EXPECT_EQ(mapped.size(), kLength);
    EXPECT_EQ(std::string(static_cast<const char*>(mapped.data()) + kLength - 3, 3), "end");
}

TEST(Folder, ListsFilesSortedWithAndWithoutADot) {
    const TempFolder folder;
    for (const char* name : {"zeta", "lnxp.405", "B.bin", "\xc3\xa9t\xc3\xa9"})
        folder.write(name, "x");
    std::filesystem::create_directory(folder / "sub.folder");

    EXPECT_THAT(solsys::list_files(folder.path()),
                testing::ElementsAre("B.bin", "lnxp.405", "zeta", "\xc3\xa9t\xc3\xa9"));
    EXPECT_THAT(solsys::list_files(folder / "missing"), testing::IsEmpty());
    EXPECT_THAT(solsys::list_files(folder / "zeta"), testing::IsEmpty());
    EXPECT_TRUE(solsys::is_folder(folder / "sub.folder"));
    EXPECT_FALSE(solsys::is_folder(folder / "zeta"));
    EXPECT_FALSE(solsys::is_folder(folder / "missing"));
}

TEST(MappedFile, HoldsTheWholeFileAndSurvivesMoves) {
    const TempFolder folder;
    const std::string content(100001, 'q');
    const std::string path = folder.write("data.bin", content);
    MappedFile first = MappedFile::open(path);
    MappedFile second = std::move(first);
    EXPECT_EQ(first.data(), nullptr);
    ASSERT_EQ(second.size(), 100001);
    EXPECT_EQ(std::string(static_cast<const char*>(second.data()), content.size()), content);
    second.unmap();
    EXPECT_EQ(second.data(), nullptr);
    EXPECT_EQ(second.size(), 0);
}

TEST(MappedFile, SaysWhyItCannot) {
    const TempFolder folder;
    for (const std::string& path :
         {folder / "missing", folder.write("empty", ""), folder.path()}) {
        std::uint32_t error = 0;
        EXPECT_EQ(MappedFile::open(path, &error).data(), nullptr) << path;
        EXPECT_NE(error, 0u) << path;
    }
}

}  // namespace
