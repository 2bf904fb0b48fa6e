#include "io/text_lines.h"

#include <algorithm>
#include <cstring>

namespace solsys_io {

bool TextLines::refill() {
    std::memmove(buffer_.data(), buffer_.data() + begin_, end_ - begin_);
    end_ -= begin_;
    begin_ = 0;
    if (!in_ || end_ == buffer_.size()) return false;
    in_.read(buffer_.data() + end_, static_cast<std::streamsize>(buffer_.size() - end_));
    const auto count = static_cast<std::size_t>(in_.gcount());
    end_ += count;
    return count > 0;
}

bool TextLines::next(std::string_view& line) {
    too_long_ = false;
    std::size_t searched = 0;
    for (;;) {
        const char* start = buffer_.data() + begin_;
        const std::size_t available = end_ - begin_;
        const void* found = available > searched
                                ? std::memchr(start + searched, '\n', available - searched)
                                : nullptr;
        std::size_t length = available;
        if (found != nullptr) {
            length = static_cast<std::size_t>(static_cast<const char*>(found) - start);
            begin_ += length + 1;
        } else {
            if (available > kLongestLine) {
                too_long_ = true;
                begin_ = end_;
            }
            searched = end_ - begin_;
            if (refill()) continue;
            if (searched == 0 && !too_long_) return false;
            start = buffer_.data() + begin_;
            length = searched;
            begin_ = end_;
        }
        if (length > kLongestLine) too_long_ = true;
        if (too_long_) length = 0;
        if (length > 0 && start[length - 1] == '\r') --length;
        line = {start, length};
        ++number_;
        return true;
    }
}

bool is_binary(std::string_view line) {
    return std::any_of(line.begin(), line.end(), [](char c) {
        const auto byte = static_cast<unsigned char>(c);
        return (byte < 0x20 && byte != '\t') || byte == 0x7f;
    });
}

}  // namespace solsys_io
