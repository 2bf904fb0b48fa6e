#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

#include "apps/solsys/failure.h"
#include "apps/solsys/selfcheck.h"

namespace app {
namespace {

// The cell of a number in a line.
std::string_view cell(std::string_view line, std::size_t index) {
    for (; index > 0; --index) {
        const std::size_t comma = line.find(',');
        if (comma == std::string_view::npos) return {};
        line.remove_prefix(comma + 1);
    }
    return line.substr(0, line.find(','));
}

}  // namespace

void Check::add(double residual) {
    ++cases;
    const double size = std::fabs(residual);
    // What is not a number is no agreement.
    worst = std::isnan(size) ? std::numeric_limits<double>::infinity() : std::max(worst, size);
    sum_of_squares += residual * residual;
}

double Check::rms() const {
    return cases > 0 ? std::sqrt(sum_of_squares / static_cast<double>(cases)) : 0.0;
}

CheckTable::CheckTable(std::string_view csv)
    : header_(csv.substr(0, csv.find('\n'))), rows_(csv.substr(header_.size() + 1)) {}

std::size_t CheckTable::column(std::string_view name) const {
    const auto count =
        static_cast<std::size_t>(std::count(header_.begin(), header_.end(), ','));
    for (std::size_t i = 0; i <= count; ++i) {
        if (cell(header_, i) == name) return i;
    }
    throw BadInput("a table of check values has no column " + std::string(name));
}

void CheckTable::each(const std::function<void(const Row&)>& visit) const {
    for (std::string_view rest = rows_; !rest.empty();) {
        const std::string_view line = rest.substr(0, rest.find('\n'));
        if (!line.empty()) visit(Row(*this, line));
        rest.remove_prefix(std::min(line.size() + 1, rest.size()));
    }
}

std::string_view CheckTable::Row::text(std::string_view name) const {
    return cell(line_, table_.column(name));
}

double CheckTable::Row::operator[](std::string_view name) const {
    const std::string_view value = text(name);
    double number = std::numeric_limits<double>::quiet_NaN();
    std::from_chars(value.data(), value.data() + value.size(), number);
    return number;
}

}  // namespace app
