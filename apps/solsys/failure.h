// How a subcommand ends early: thrown with one clear line for standard error.
#pragma once

#include <cstdio>
#include <stdexcept>
#include <string>
#include <utility>

#include "apps/solsys/utf8.h"
#include "solsys/sky/result.h"

namespace app {

// Exit status 2: the user's input cannot be used.
struct BadInput : std::runtime_error {
    using std::runtime_error::runtime_error;
};

// Exit status 1: something was asked for and there is none.
struct NothingFound : std::runtime_error {
    using std::runtime_error::runtime_error;
};

// The value of a result; its failure ends the command, after the name of what was typed wrong.
template <class T>
T need(solsys::sky::Result<T> result, const char* argument = "") {
    if (!result)
        throw BadInput(argument + std::string(*argument ? ": " : "") + result.message());
    return std::move(*result);
}

// A line on standard error; nothing can be done where that cannot be written.
inline void tell(const std::string& text) {
    std::fputs(("solsys: " + valid_utf8(text) + "\n").c_str(), stderr);
}

}  // namespace app
