// How the readers report what they could not read.
#pragma once

#include <cstddef>
#include <functional>
#include <string_view>

namespace solsys_io {

// A line that was skipped, and why. The message lives as long as the program.
struct Problem {
    std::size_t line;  // counted from 1
    std::string_view message;
};

// Called once for each line skipped, in the order of the file; may be empty.
using ProblemHandler = std::function<void(const Problem&)>;

// What a reader saw.
struct ReadSummary {
    std::size_t lines = 0;     // of the input, headers and blank ones included
    std::size_t records = 0;   // handed over
    std::size_t problems = 0;  // lines skipped with a report
    bool complete = true;      // false: the stream broke before its end
};

}  // namespace solsys_io
