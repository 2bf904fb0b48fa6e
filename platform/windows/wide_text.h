// Path text between UTF-8 and the UTF-16 that the system takes.
#pragma once

#include <optional>
#include <string>

namespace solsys {

// Empty when the text is not valid in its encoding, or holds a NUL.
std::optional<std::wstring> utf16_from_utf8(const std::string& text);
std::optional<std::string> utf8_from_utf16(const std::wstring& text);

}  // namespace solsys
