// Runs the solsys command as a user would, and catches what it prints.
#pragma once

#include <gmock/gmock.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <nlohmann/json.hpp>
#include <string>

// Large, and compiled in run_command.cpp alone.
extern template class nlohmann::basic_json<>;

namespace support {

struct Outcome {
    int status = -1;
    std::string out, err;

    [[nodiscard]] nlohmann::json json() const;
};

inline std::string contents(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

// What a program printed, with one line end on every system.
inline std::string printed_text(const std::filesystem::path& path) {
    std::string text = contents(path);
#ifdef _WIN32
    std::erase(text, '\r');
#endif
    return text;
}

// The answer of the system's shell; the line is UTF-8.
inline int shell(const std::string& line) {
#ifdef _WIN32
    return _wsystem(std::filesystem::path(std::u8string(line.begin(), line.end())).c_str());
#else
    return std::system(line.c_str());
#endif
}

// Wine's shell now and then does not find a program that it found before.
inline bool was_not_found(const std::filesystem::path& err) {
    return printed_text(err).starts_with("Can't recognize");
}

// The system's shell runs the program; its two streams go through files.
inline Outcome run_command(const std::string& arguments) {
    static int run = 0;
    const auto folder = std::filesystem::temp_directory_path();
    const std::string stem =
        "solsys_test_" +
        std::to_string(std::hash<std::string>{}(SOLSYS_COMMAND + std::to_string(++run)));
    const auto out = folder / (stem + ".out");
    const auto err = folder / (stem + ".err");
    std::filesystem::path program(SOLSYS_COMMAND);
    program.make_preferred();
    const std::string line =
        program.string() + " " + arguments + " > " + out.string() + " 2> " + err.string();
    int answer = shell(line);
    for (int again = 0; again < 3 && was_not_found(err); ++again) answer = shell(line);
    Outcome outcome;
    // POSIX packs the exit status into the second byte, Windows answers it plainly.
    outcome.status = answer > 255 ? answer / 256 : answer;
    outcome.out = printed_text(out);
    outcome.err = printed_text(err);
    std::filesystem::remove(out);
    std::filesystem::remove(err);
    return outcome;
}

// Arguments that the command refuses, and words of the line with which it does.
struct Refusal {
    const char* arguments;
    const char* says;
};

// Status 2, nothing on standard output, one clear line on standard error.
inline void expect_refusal(const Refusal& refusal) {
    const auto outcome = run_command(refusal.arguments);
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.out, "");
    EXPECT_THAT(outcome.err, testing::HasSubstr(refusal.says));
    EXPECT_EQ(std::count(outcome.err.begin(), outcome.err.end(), '\n'), 1) << outcome.err;
}

}  // namespace support
