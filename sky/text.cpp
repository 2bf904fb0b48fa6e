#include "sky/text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <numeric>

namespace solsys::sky {
namespace {

// The next character of a text in UTF-8; bytes that are none count for themselves.
std::uint32_t take_character(std::string_view& text) {
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned char lead = byte(0);
    const std::size_t length = lead < 0x80 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
    std::uint32_t code = lead;
    if (lead >= 0xC0 && length <= text.size()) {
        code = lead & (0xFFU >> (length + 1));
        for (std::size_t i = 1; i < length; ++i) code = code << 6 | (byte(i) & 0x3FU);
        text.remove_prefix(length);
    } else {
        text.remove_prefix(1);
    }
    return code;
}

void append_utf8(std::string& out, std::uint32_t code) {
    if (code < 0x80) {
        out += static_cast<char>(code);
    } else if (code < 0x800) {
        out += static_cast<char>(0xC0 | code >> 6);
        out += static_cast<char>(0x80 | (code & 0x3F));
    } else if (code < 0x10000) {
        out += static_cast<char>(0xE0 | code >> 12);
        out += static_cast<char>(0x80 | (code >> 6 & 0x3F));
        out += static_cast<char>(0x80 | (code & 0x3F));
    } else {
        out += static_cast<char>(0xF0 | code >> 18);
        out += static_cast<char>(0x80 | (code >> 12 & 0x3F));
        out += static_cast<char>(0x80 | (code >> 6 & 0x3F));
        out += static_cast<char>(0x80 | (code & 0x3F));
    }
}

// Latin letters with marks, by the blocks of Unicode: what each stretch folds to.
struct Stretch {
    std::uint16_t first, last;
    const char* plain;
};
constexpr Stretch kLatin[] = {
    {0x00C0, 0x00C5, "a"},  {0x00C6, 0x00C6, "ae"}, {0x00C7, 0x00C7, "c"},
    {0x00C8, 0x00CB, "e"},  {0x00CC, 0x00CF, "i"},  {0x00D0, 0x00D0, "d"},
    {0x00D1, 0x00D1, "n"},  {0x00D2, 0x00D6, "o"},  {0x00D8, 0x00D8, "o"},
    {0x00D9, 0x00DC, "u"},  {0x00DD, 0x00DD, "y"},  {0x00DE, 0x00DE, "th"},
    {0x00DF, 0x00DF, "ss"}, {0x00E0, 0x00E5, "a"},  {0x00E6, 0x00E6, "ae"},
    {0x00E7, 0x00E7, "c"},  {0x00E8, 0x00EB, "e"},  {0x00EC, 0x00EF, "i"},
    {0x00F0, 0x00F0, "d"},  {0x00F1, 0x00F1, "n"},  {0x00F2, 0x00F6, "o"},
    {0x00F8, 0x00F8, "o"},  {0x00F9, 0x00FC, "u"},  {0x00FD, 0x00FD, "y"},
    {0x00FE, 0x00FE, "th"}, {0x00FF, 0x00FF, "y"},  {0x0100, 0x0105, "a"},
    {0x0106, 0x010D, "c"},  {0x010E, 0x0111, "d"},  {0x0112, 0x011B, "e"},
    {0x011C, 0x0123, "g"},  {0x0124, 0x0127, "h"},  {0x0128, 0x0131, "i"},
    {0x0132, 0x0133, "ij"}, {0x0134, 0x0135, "j"},  {0x0136, 0x0138, "k"},
    {0x0139, 0x0142, "l"},  {0x0143, 0x014B, "n"},  {0x014C, 0x0151, "o"},
    {0x0152, 0x0153, "oe"}, {0x0154, 0x0159, "r"},  {0x015A, 0x0161, "s"},
    {0x0162, 0x0167, "t"},  {0x0168, 0x0173, "u"},  {0x0174, 0x0175, "w"},
    {0x0176, 0x0178, "y"},  {0x0179, 0x017E, "z"},  {0x017F, 0x017F, "s"},
    {0x018F, 0x018F, "e"},  {0x01A0, 0x01A1, "o"},  {0x01AF, 0x01B0, "u"},
    {0x01CD, 0x01CE, "a"},  {0x01CF, 0x01D0, "i"},  {0x01D1, 0x01D2, "o"},
    {0x01D3, 0x01DC, "u"},  {0x01E6, 0x01E7, "g"},  {0x0218, 0x0219, "s"},
    {0x021A, 0x021B, "t"},  {0x0259, 0x0259, "e"},  {0x1E0C, 0x1E13, "d"},
    {0x1E20, 0x1E21, "g"},  {0x1E22, 0x1E2B, "h"},  {0x1E30, 0x1E35, "k"},
    {0x1E36, 0x1E3D, "l"},  {0x1E44, 0x1E4B, "n"},  {0x1E58, 0x1E5F, "r"},
    {0x1E60, 0x1E69, "s"},  {0x1E6A, 0x1E71, "t"},  {0x1E80, 0x1E89, "w"},
    {0x1E90, 0x1E95, "z"},  {0x1EA0, 0x1EB7, "a"},  {0x1EB8, 0x1EC7, "e"},
    {0x1EC8, 0x1ECB, "i"},  {0x1ECC, 0x1EE3, "o"},  {0x1EE4, 0x1EF1, "u"},
    {0x1EF2, 0x1EF9, "y"},
};

void append_folded(std::string& out, std::uint32_t code) {
    if (code < 0x80) {
        const char c = static_cast<char>(code);
        if (c >= 'A' && c <= 'Z') {
            out += static_cast<char>(c - 'A' + 'a');
        } else if ((c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '/' || c == ':' ||
                   c == '(' || c == ')') {
            out += c;
        }
        return;
    }
    if (code < 0xC0 || (code >= 0x2000 && code < 0x2070)) return;  // signs and punctuation
    if (code >= 0x300 && code < 0x370) return;                     // combining marks
    if (code >= 0x391 && code <= 0x3A9) code += 0x20;              // Greek capitals
    if (code >= 0x410 && code <= 0x42F) code += 0x20;              // Cyrillic capitals
    if (code >= 0x400 && code <= 0x40F) code += 0x50;
    const auto* const at =
        std::partition_point(std::begin(kLatin), std::end(kLatin),
                             [code](const Stretch& stretch) { return stretch.last < code; });
    if (at != std::end(kLatin) && at->first <= code) {
        out += at->plain;
    } else {
        append_utf8(out, code);
    }
}

}  // namespace

std::string fixed(double value, int decimals) {
    char buffer[400];
    const auto [end, error] = std::to_chars(buffer, buffer + sizeof buffer, value,
                                            std::chars_format::fixed, decimals);
    std::string text(buffer, error == std::errc{} ? end : buffer);
    const bool zero = text.find_first_of("123456789") == std::string::npos;
    return zero && text.starts_with('-') ? text.substr(1) : text;
}

std::string padded(long long value, int digits) {
    std::string text = std::to_string(value < 0 ? -value : value);
    if (static_cast<int>(text.size()) < digits)
        text.insert(0, static_cast<std::size_t>(digits) - text.size(), '0');
    return value < 0 ? "-" + text : text;
}

std::string in_quotes(std::string_view text) { return "'" + std::string(text) + "'"; }

std::string joined(const std::vector<std::string>& parts, const char* separator) {
    std::string out;
    for (const std::string& part : parts) out += (out.empty() ? "" : separator) + part;
    return out;
}

std::string folded(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    while (!text.empty()) append_folded(out, take_character(text));
    return out;
}

int edits_between(std::string_view a, std::string_view b, int most) {
    const auto longer = std::max(a.size(), b.size());
    const auto shorter = std::min(a.size(), b.size());
    if (longer - shorter > static_cast<std::size_t>(most)) return most + 1;
    std::vector<int> before(b.size() + 1);
    std::vector<int> row(b.size() + 1);
    std::vector<int> next(b.size() + 1);
    std::iota(row.begin(), row.end(), 0);
    for (std::size_t i = 1; i <= a.size(); ++i) {
        next[0] = static_cast<int>(i);
        for (std::size_t j = 1; j <= b.size(); ++j) {
            next[j] =
                std::min({row[j] + 1, next[j - 1] + 1, row[j - 1] + (a[i - 1] != b[j - 1])});
            if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1])
                next[j] = std::min(next[j], before[j - 2] + 1);
        }
        before.swap(row);
        row.swap(next);
    }
    return std::min(row[b.size()], most + 1);
}

void Suggestions::consider(std::string_view name) {
    if (typed_.size() < 3) return;
    const std::string candidate = folded(name);
    if (candidate.size() < 3) return;
    const int most = typed_.size() < 6 ? 1 : 2;
    // A beginning counts as one slip, however much is left out.
    int edits = edits_between(typed_, candidate, most);
    if (candidate.starts_with(typed_)) edits = std::min(edits, 1);
    if (edits > most || edits > best_) return;
    if (edits < best_) names_.clear();
    best_ = edits;
    const std::string text(name);
    if (names_.size() < 3 && std::find(names_.begin(), names_.end(), text) == names_.end())
        names_.push_back(text);
}

std::string Suggestions::text() const {
    return names_.empty() ? "" : "perhaps " + joined(names_, " or ");
}

std::string_view take_field(std::string_view& text, char separator) {
    const std::size_t end = text.find(separator);
    const std::string_view field = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    return field;
}

bool all_digits(std::string_view text) {
    return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
}

double number_in(std::string_view text, double otherwise) {
    std::from_chars(text.data(), text.data() + text.size(), otherwise);
    return otherwise;
}

std::string_view trimmed_text(std::string_view text) {
    while (!text.empty() && (text.front() == ' ' || text.front() == '\t'))
        text.remove_prefix(1);
    while (!text.empty() && (text.back() == ' ' || text.back() == '\t')) text.remove_suffix(1);
    return text;
}

}  // namespace solsys::sky
