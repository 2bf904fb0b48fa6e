#include "ephemeris/tle/element_text.h"

#include "ephemeris/tle/element_lines.h"
#include "ephemeris/tle/messages.h"

namespace solsys {
namespace {

// The lines of a text that are neither blank nor comments, one after the other.
class LineReader {
  public:
    explicit LineReader(std::string_view text) : rest_(text) { next(); }

    [[nodiscard]] bool at_end() const { return ended_; }
    [[nodiscard]] std::string_view line() const { return line_; }
    [[nodiscard]] int number() const { return number_; }
    void next() {
        line_ = {};
        while (!rest_.empty()) {
            const std::size_t end = rest_.find('\n');
            line_ = without_end(rest_.substr(0, end));
            rest_.remove_prefix(end == std::string_view::npos ? rest_.size() : end + 1);
            ++number_;
            if (!line_.empty() && line_[0] != '#') return;
        }
        line_ = {};
        ended_ = true;
    }

  private:
    std::string_view rest_, line_;
    int number_ = 0;
    bool ended_ = false;
};

bool starts(std::string_view line, char number) {
    return line.size() > 1 && line[0] == number && line[1] == ' ';
}

// A name may itself begin with "1 "; it is shorter than a line of elements.
constexpr std::size_t kLongestName = 26;

void read_lines(std::string_view text, bool any_checksum, SetSink& sink) {
    TLERecord named;
    LineReader lines(text);
    while (!lines.at_end()) {
        const std::string_view first = lines.line();
        const int number = lines.number();
        lines.next();
        const bool paired = starts(lines.line(), '2') && !starts(first, '0');
        if (!paired && first.size() <= kLongestName && !starts(first, '2')) {
            named = {};
            store_text(starts(first, '0') ? first.substr(2) : first, named.name,
                       sizeof named.name);
            continue;
        }
        if (!starts(first, '1')) {
            sink.take({}, {TLE_FAULT_LINE_NUMBER, 0, 1, {}}, number);
            continue;
        }
        TLERecord record = named;
        const TLEFault fault = read_element_lines(
            first, paired ? lines.line() : std::string_view{}, any_checksum, record);
        sink.take(record, fault, fault.line == 2 && paired ? lines.number() : number);
        if (paired) lines.next();
        named = {};
    }
}

}  // namespace

void read_element_text(std::string_view text, bool any_checksum, SetSink& sink) {
    if (text.starts_with("\xEF\xBB\xBF")) text.remove_prefix(3);  // byte order mark
    const std::size_t first = text.find_first_not_of(" \t\r\n");
    if (first == std::string_view::npos) return;
    const std::string_view head = text.substr(first, text.find('\n', first) - first);
    if (head[0] == '[' || head[0] == '{') return read_json(text.substr(first), sink);
    if (head.find("NORAD_CAT_ID") != std::string_view::npos &&
        head.find(',') != std::string_view::npos)
        return read_csv(text.substr(first), sink);
    read_lines(text, any_checksum, sink);
}

}  // namespace solsys
