#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <random>

#include "apps/solsys/failure.h"
#include "apps/solsys/selfcheck.h"
#include "solsys/toolkit.h"

namespace app {
namespace {

void split(std::string_view line, std::vector<std::string_view>& cells) {
    cells.clear();
    for (;;) {
        const std::size_t comma = line.find(',');
        cells.push_back(line.substr(0, comma));
        if (comma == std::string_view::npos) return;
        line.remove_prefix(comma + 1);
    }
}

std::string_view take_line(std::string_view& text) {
    const std::string_view line = text.substr(0, text.find('\n'));
    text.remove_prefix(std::min(line.size() + 1, text.size()));
    return line;
}

}  // namespace

void Check::add(double residual) {
    ++cases;
    const double size = std::fabs(residual);
    worst = std::isnan(size) ? std::numeric_limits<double>::infinity() : std::max(worst, size);
    sum_of_squares += residual * residual;
}

double Check::rms() const {
    return cases > 0 ? std::sqrt(sum_of_squares / static_cast<double>(cases)) : 0.0;
}

CheckTable::CheckTable(std::string_view csv) : rows_(csv) {
    while (rows_.starts_with('\n')) rows_.remove_prefix(1);
    split(take_line(rows_), names_);
}

void CheckTable::each(const std::function<void(const Row&)>& visit) const {
    Row row;
    row.names_ = &names_;
    for (std::string_view rest = rows_; !rest.empty();) {
        const std::string_view line = take_line(rest);
        if (line.empty()) continue;
        split(line, row.cells_);
        visit(row);
    }
}

std::string_view CheckTable::Row::text(std::string_view column) const {
    const auto found = std::find(names_->begin(), names_->end(), column);
    const auto index = static_cast<std::size_t>(found - names_->begin());
    if (index >= cells_.size())
        throw BadInput("a table of check values has no column " + std::string(column));
    return cells_[index];
}

double CheckTable::Row::operator[](std::string_view column) const {
    const std::string_view value = text(column);
    double number = std::numeric_limits<double>::quiet_NaN();
    std::from_chars(value.data(), value.data() + value.size(), number);
    return number;
}

double separation_mas(const double* a, const double* b) {
    constexpr double kMas = 4.84813681109536e-9;  // rad
    double cross[3];
    Vprod(a, b, cross);
    return std::atan2(Vmod(cross, 3), (a[0] * b[0] + a[1] * b[1] + a[2] * b[2])) / kMas;
}

void observe_from_earth(CSWSolSys& model) {
    OBSERVER centre;
    centre.kind = LOCATION_BODY_FIXED;
    centre.body_type = SSO_PLNT, centre.body_number = 3;
    model.SetObserver(&centre);
}

const std::vector<NamedBody>& ten_bodies() {
    static const std::vector<NamedBody> all{
        {"Sun", {SSO_PLNT, 10}},   {"Moon", {SSO_MOON, 301}}, {"Mercury", {SSO_PLNT, 1}},
        {"Venus", {SSO_PLNT, 2}},  {"Mars", {SSO_PLNT, 4}},   {"Jupiter", {SSO_PLNT, 5}},
        {"Saturn", {SSO_PLNT, 6}}, {"Uranus", {SSO_PLNT, 7}}, {"Neptune", {SSO_PLNT, 8}},
        {"Pluto", {SSO_PLNT, 9}}};
    return all;
}

std::vector<SplitDate> spread_instants(int count) {
    std::mt19937_64 random(1960);
    std::vector<SplitDate> out;
    for (int i = 0; i < count; ++i) {
        const int day = 2436935 + static_cast<int>(random() % 36515);
        out.push_back({day, static_cast<double>(random() % 1000000) / 1e6});
    }
    return out;
}

}  // namespace app
