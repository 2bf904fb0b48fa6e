// Text of whoever called, made fit for output.
#pragma once

#include <string>

namespace app {

// What is no UTF-8 becomes U+FFFD.
std::string valid_utf8(const std::string& text);

}  // namespace app
