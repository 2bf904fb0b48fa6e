#include "apps/solsys/utf8.h"

#include <algorithm>

namespace app {
namespace {

// Length of the UTF-8 character at a place; 0: none is there.
std::size_t character_at(const std::string& text, std::size_t at) {
    const auto lead = static_cast<unsigned char>(text[at]);
    const std::size_t length = lead < 0x80    ? 1
                               : lead < 0xC2  ? 0
                               : lead < 0xE0  ? 2
                               : lead < 0xF0  ? 3
                               : lead <= 0xF4 ? 4
                                              : 0;
    if (length == 0 || at + length > text.size()) return 0;
    for (std::size_t i = 1; i < length; ++i)
        if ((static_cast<unsigned char>(text[at + i]) & 0xC0U) != 0x80U) return 0;
    return length;
}

}  // namespace

std::string valid_utf8(const std::string& text) {
    std::string out;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t length = character_at(text, at);
        out += length == 0 ? "\ufffd" : text.substr(at, length);
        at += std::max<std::size_t>(length, 1);
    }
    return out;
}

}  // namespace app
