// Lines of a stream of unknown provenance, in constant memory.
#pragma once

#include <cstddef>
#include <istream>
#include <string_view>
#include <vector>

namespace solsys_io {

// Hands out the lines of a stream one by one, without their ends (LF or CR LF). The last line
// need not have one.
class TextLines {
  public:
    explicit TextLines(std::istream& in) : in_(in), buffer_(kBufferSize) {}

    // The next line, valid until the next call; false at the end of the stream. A line longer
    // than kLongestLine is handed out empty, with too_long() true.
    bool next(std::string_view& line);

    [[nodiscard]] std::size_t number() const { return number_; }  // of the last line, from 1
    [[nodiscard]] bool too_long() const { return too_long_; }
    // The stream ended because reading failed, not because it was read whole.
    [[nodiscard]] bool broken() const { return in_.bad(); }

    static constexpr std::size_t kLongestLine = 4096;

  private:
    static constexpr std::size_t kBufferSize = 1 << 18;
    static_assert(kBufferSize > 2 * kLongestLine);

    // Moves what is left to the front and fills up; false when nothing came.
    bool refill();

    std::istream& in_;
    std::vector<char> buffer_;
    std::size_t begin_ = 0, end_ = 0;  // of what is buffered and not handed out
    std::size_t number_ = 0;
    bool too_long_ = false;
};

// True if the line holds bytes that no text has (control characters other than tabs).
bool is_binary(std::string_view line);

}  // namespace solsys_io
