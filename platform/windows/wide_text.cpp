#include "platform/windows/wide_text.h"

#include <windows.h>

#include <climits>

namespace solsys {

std::optional<std::wstring> utf16_from_utf8(const std::string& text) {
    if (text.find('\0') != std::string::npos || text.size() > INT_MAX) return std::nullopt;
    if (text.empty()) return std::wstring();
    const int size = static_cast<int>(text.size());
    const int needed =
        MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, text.data(), size, nullptr, 0);
    if (needed <= 0) return std::nullopt;
    std::wstring wide(static_cast<std::size_t>(needed), L'\0');
    MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, text.data(), size, wide.data(), needed);
    return wide;
}

std::optional<std::string> utf8_from_utf16(const std::wstring& text) {
    if (text.find(L'\0') != std::wstring::npos || text.size() > INT_MAX) return std::nullopt;
    if (text.empty()) return std::string();
    const int size = static_cast<int>(text.size());
    const int needed = WideCharToMultiByte(CP_UTF8, WC_ERR_INVALID_CHARS, text.data(), size,
                                           nullptr, 0, nullptr, nullptr);
    if (needed <= 0) return std::nullopt;
    std::string narrow(static_cast<std::size_t>(needed), '\0');
    WideCharToMultiByte(CP_UTF8, WC_ERR_INVALID_CHARS, text.data(), size, narrow.data(), needed,
                        nullptr, nullptr);
    return narrow;
}

}  // namespace solsys
