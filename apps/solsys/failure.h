// How a subcommand ends early: thrown with one clear line for standard error.
#pragma once

#include <stdexcept>
#include <string>

namespace app {

// Exit status 2: the user's input cannot be used.
struct BadInput : std::runtime_error {
    using std::runtime_error::runtime_error;
};

// Exit status 1: something was asked for and there is none.
struct NothingFound : std::runtime_error {
    using std::runtime_error::runtime_error;
};

}  // namespace app
