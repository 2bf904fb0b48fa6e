// The part of JSON (RFC 8259) that messages need: an array of objects, or one object; nested
// values are passed over, to a bounded depth, without recursion.
#include <algorithm>

#include "ephemeris/tle/messages.h"

namespace solsys {
namespace {

class JsonReader {
  public:
    explicit JsonReader(std::string_view text) : text_(text) {}

    [[nodiscard]] bool failed() const { return failed_; }
    [[nodiscard]] int line() const { return line_; }

    // The next mark that is no white space; 0 at the end.
    char peek() {
        while (at_ < text_.size() && is_space(text_[at_])) line_ += text_[at_++] == '\n';
        return at_ < text_.size() ? text_[at_] : '\0';
    }
    // Takes a mark, or fails.
    bool take(char mark) {
        if (peek() != mark) return fail();
        ++at_;
        return true;
    }
    // Takes it if it is there.
    bool take_if(char mark) { return peek() == mark && ++at_; }

    std::string string() {
        std::string value;
        if (!take('"')) return value;
        while (at_ < text_.size() && text_[at_] != '"') {
            const char c = text_[at_++];
            line_ += c == '\n';
            c == '\\' ? add_escaped(value) : value.push_back(c);
        }
        take('"');
        return value;
    }
    // A value as text; none for null, arrays and objects.
    std::optional<std::string> value() {
        const char first = peek();
        if (first == '"') return string();
        if (first == '{' || first == '[') return pass_over();
        const std::size_t start = at_;
        while (at_ < text_.size() && is_word(text_[at_])) ++at_;
        const std::string word(text_.substr(start, at_ - start));
        if (word.empty()) fail();
        return word == "null" ? std::nullopt : std::optional(word);
    }

  private:
    static bool is_space(char c) { return c == ' ' || c == '\n' || c == '\r' || c == '\t'; }
    static bool is_word(char c) {
        return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') ||
               c == '+' || c == '-' || c == '.';
    }
    bool fail() {
        failed_ = true;
        at_ = text_.size();
        return false;
    }
    void add_escaped(std::string& value) {
        const char c = at_ < text_.size() ? text_[at_++] : '\0';
        constexpr std::string_view kLetters = "\"\\/bfnrt", kMarks = "\"\\/\b\f\n\r\t";
        if (const std::size_t k = kLetters.find(c); k != std::string_view::npos && c != '\0')
            return value.push_back(kMarks[k]);
        if (c != 'u' || text_.size() - at_ < 4) return static_cast<void>(fail());
        unsigned code = 0;
        for (int k = 0; k < 4; ++k) {
            const std::size_t digit =
                std::string_view("0123456789abcdef").find(static_cast<char>(text_[at_++] | 32));
            if (digit == std::string_view::npos) return static_cast<void>(fail());
            code = code * 16 + static_cast<unsigned>(digit);
        }
        add_utf8(value, code);
    }
    // Halves of pairs beyond the basic plane become question marks.
    static void add_utf8(std::string& value, unsigned code) {
        if (code >= 0xD800 && code < 0xE000) code = '?';
        if (code < 0x80) return value.push_back(static_cast<char>(code));
        if (code >= 0x800) {
            value.push_back(static_cast<char>(0xE0 | code >> 12));
            value.push_back(static_cast<char>(0x80 | (code >> 6 & 0x3F)));
        } else {
            value.push_back(static_cast<char>(0xC0 | code >> 6));
        }
        value.push_back(static_cast<char>(0x80 | (code & 0x3F)));
    }
    std::nullopt_t pass_over() {
        constexpr int kDeepest = 64;
        int depth = 0;
        do {
            const char c = peek();
            if (c == '"') {
                string();
            } else if (at_ < text_.size()) {
                ++at_;
                depth += (c == '{' || c == '[') - (c == '}' || c == ']');
            }
            if (c == '\0' || depth > kDeepest) fail();
        } while (depth > 0 && !failed_);
        return std::nullopt;
    }

    std::string_view text_;
    std::size_t at_ = 0;
    int line_ = 1;
    bool failed_ = false;
};

void read_object(JsonReader& json, SetSink& sink) {
    OmmFields fields;
    json.take('{');
    for (bool more = json.peek() != '}'; more && !json.failed(); more = json.take_if(',')) {
        const std::string key = json.string();
        json.take(':');
        fields.set(key, json.value());
    }
    if (!json.take('}')) return;
    TLERecord record;
    const TLEFault fault = read_message(fields, record);
    sink.take(record, fault, json.line());
}

}  // namespace

void read_json(std::string_view text, SetSink& sink) {
    JsonReader json(text);
    if (json.take_if('[')) {
        for (bool more = json.peek() != ']'; more && !json.failed(); more = json.take_if(','))
            read_object(json, sink);
        json.take(']');
    } else {
        read_object(json, sink);
    }
    if (json.failed() || json.peek() != '\0')
        sink.take({}, {TLE_FAULT_SYNTAX, 0, 0, {}}, json.line());
}

}  // namespace solsys
