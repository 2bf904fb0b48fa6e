// Numbers as text, whatever the host's locale, and what people type, made comparable.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace solsys::sky {

// "3.50"; never "-0.00".
std::string fixed(double value, int decimals);
// "007": at least that many digits, a minus sign in front.
std::string padded(long long value, int digits);
// 'text', for messages.
std::string in_quotes(std::string_view text);
// "a, b, c".
std::string joined(const std::vector<std::string>& parts, const char* separator = ", ");

// Lower case, letters without their marks (Latin, Greek and Cyrillic), and of the rest only
// digits, slashes, colons, brackets and letters of other scripts: "S/2003 J 2" and "s/2003j2"
// are the same, and so are "São Paulo" and "saopaulo".
std::string folded(std::string_view text);

// How many letters must be changed, added, left out or swapped with their neighbours to turn
// one folded word into the other (Damerau 1964, Comm. ACM 7, 171); above `most`: most + 1.
int edits_between(std::string_view a, std::string_view b, int most);

// Collects the names closest to a mistyped one.
class Suggestions {
  public:
    explicit Suggestions(std::string_view typed) : typed_(folded(typed)) {}

    void consider(std::string_view name);
    // "perhaps Jupiter or Jupiter's"; empty when nothing is close.
    [[nodiscard]] std::string text() const;

  private:
    std::string typed_;
    int best_ = 99;
    std::vector<std::string> names_;
};

// The front of `text` up to the separator, which is taken off with it.
std::string_view take_field(std::string_view& text, char separator);

// True of digits alone, one at least.
bool all_digits(std::string_view text);
// The number a field of a table begins with; `otherwise` where there is none.
double number_in(std::string_view text, double otherwise = 0);

std::string_view trimmed_text(std::string_view text);

}  // namespace solsys::sky
