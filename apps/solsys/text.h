// Comparing what people type.
#pragma once

#include <algorithm>
#include <cctype>
#include <string>
#include <string_view>

namespace app {

// Lower case, without blanks, dashes, underscores, dots and quotes: "S/2003 J 2" and
// "s/2003j2" are the same.
inline std::string folded(std::string_view text) {
    std::string out;
    for (const char c : text) {
        if (c == ' ' || c == '-' || c == '_' || c == '.' || c == '\'') continue;
        out += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    }
    return out;
}

}  // namespace app
