// Tables and pictures as they were when they were last looked at: headings, decimals, colours,
// and where every line is drawn. tools/record_outputs makes them anew.
#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <optional>
#include <string>
#include <vector>

#include "tests/support/run_command.h"

namespace {

const std::string kFolder = "tests/apps/recorded/";
constexpr std::size_t kMayRound = 2;  // numbers of a file that may end in a neighbouring digit

struct Recorded {
    std::string name, arguments;
};

std::vector<Recorded> all_recorded() {
    std::ifstream list(kFolder + "commands.txt");
    std::vector<Recorded> all;
    Recorded one;
    while (list >> one.name && std::getline(list >> std::ws, one.arguments)) all.push_back(one);
    return all;
}

bool in_number(char c) { return (c >= '0' && c <= '9') || c == '.'; }

struct Number {
    double value, last_digit;
};
// The number that begins there.
std::optional<Number> number_at(const std::string& text, std::size_t at) {
    std::size_t end = at;
    while (end < text.size() && in_number(text[end])) ++end;
    if (end == at || text[at] == '.') return std::nullopt;
    const std::string digits = text.substr(at, end - at);
    const std::size_t point = digits.find('.');
    const std::size_t decimals = point == std::string::npos ? 0 : digits.size() - point - 1;
    return Number{std::stod(digits), std::pow(10.0, -static_cast<double>(decimals))};
}

// Where the texts differ by more than the last digits of a few numbers; npos for nowhere.
std::size_t first_difference(const std::string& now, const std::string& then) {
    std::size_t rounded = 0, i = 0, k = 0;
    while (i < now.size() && k < then.size()) {
        const auto a = number_at(now, i), b = number_at(then, k);
        if (!a || !b) {
            if (now[i++] != then[k++]) return i - 1;
            continue;
        }
        const double apart = std::fabs(a->value - b->value);
        if (apart > 0 && (apart > 1.01 * b->last_digit || ++rounded > kMayRound)) return i;
        while (i < now.size() && in_number(now[i])) ++i;
        while (k < then.size() && in_number(then[k])) ++k;
    }
    return i == now.size() && k == then.size() ? std::string::npos : i;
}

class Output : public testing::TestWithParam<Recorded> {};

TEST_P(Output, IsTheOneThatWasLookedAt) {
    std::string arguments = GetParam().arguments;
    const auto file = std::filesystem::temp_directory_path() / ("recorded_" + GetParam().name);
    const std::size_t picture = arguments.find('@');
    if (picture != std::string::npos) arguments.replace(picture, 1, file.string());
    const auto outcome = support::run_command(arguments);
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    const std::string now =
        picture == std::string::npos ? outcome.out : support::printed_text(file);
    const std::size_t at =
        first_difference(now, support::printed_text(kFolder + GetParam().name));
    EXPECT_EQ(at, std::string::npos)
        << arguments << "\nnow " << now.substr(std::min(at, now.size()), 200);
    std::filesystem::remove(file);
}

TEST(Picture, CannotBeDrawnNowhere) {
    EXPECT_EQ(support::run_command("sky --svg /no/such/folder/sky.svg").status, 2);
}

INSTANTIATE_TEST_SUITE_P(Recorded, Output, testing::ValuesIn(all_recorded()),
                         [](const auto& c) {
                             std::string name = c.param.name;
                             for (char& letter : name)
                                 if (letter == '.') letter = '_';
                             return name;
                         });

}  // namespace
