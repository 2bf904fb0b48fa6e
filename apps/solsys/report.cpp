#include "apps/solsys/report.h"

#include <fmt/format.h>

#include <cmath>
#include <cstdio>
#include <nlohmann/json.hpp>

namespace app {
namespace {

// Columns that a terminal gives to a text in UTF-8.
std::size_t width_of(const std::string& text) {
    std::size_t width = 0;
    for (const char c : text) width += (static_cast<unsigned char>(c) & 0xC0U) != 0x80U;
    return width;
}

bool is_number(const Cell& cell) {
    return std::holds_alternative<double>(cell) || std::holds_alternative<long long>(cell);
}

std::string quoted(const std::string& text) {
    if (text.find_first_of(",\"\n") == std::string::npos) return text;
    std::string out(1, '"');
    for (const char c : text) out.append(c == '"' ? 2U : 1U, c);
    out.push_back('"');
    return out;
}

}  // namespace

Shown fixed(int decimals) {
    return [decimals](double value) {
        std::string text = fmt::format("{:.{}f}", value, decimals);
        const bool zero = text.find_first_of("123456789") == std::string::npos;
        return zero && text.front() == '-' ? text.substr(1) : text;
    };
}

std::string shown_hours(double degrees) {
    const auto tenths = static_cast<long long>(std::llround(degrees / 15 * 36000)) % 864000;
    return fmt::format("{:02}h {:02}m {:02}.{}s", tenths / 36000, tenths / 600 % 60,
                       tenths / 10 % 60, tenths % 10);
}

std::string shown_degrees(double degrees) {
    const auto seconds = static_cast<long long>(std::llround(std::fabs(degrees) * 3600));
    return fmt::format("{}{:02}\u00b0 {:02}' {:02}\"", degrees < 0 ? '-' : '+', seconds / 3600,
                       seconds / 60 % 60, seconds % 60);
}

void Report::add(std::vector<Cell> row) {
    row.resize(columns_.size());
    rows_.push_back(std::move(row));
}

void Report::print(Format format) const {
    switch (format) {
        case Format::kTable:
            return print_table();
        case Format::kJson:
            return print_json();
        case Format::kCsv:
            return print_csv();
    }
}

std::string text_of(const Cell& cell, const Shown& shown) {
    if (const auto* number = std::get_if<double>(&cell)) {
        if (!std::isfinite(*number)) return "";
        return shown ? shown(*number) : fmt::format("{}", *number);
    }
    if (const auto* whole = std::get_if<long long>(&cell)) return fmt::format("{}", *whole);
    if (const auto* flag = std::get_if<bool>(&cell)) return *flag ? "yes" : "no";
    if (const auto* text = std::get_if<std::string>(&cell)) return *text;
    return "";
}

void Report::print_table() const {
    std::vector<std::vector<std::string>> lines(rows_.size() + 1);
    std::vector<std::size_t> widths;
    std::vector<bool> right;
    for (std::size_t c = 0; c < columns_.size(); ++c) {
        if (columns_[c].title.empty()) continue;
        lines[0].push_back(columns_[c].title);
        std::size_t width = width_of(columns_[c].title);
        bool numeric = false;
        for (std::size_t r = 0; r < rows_.size(); ++r) {
            lines[r + 1].push_back(text_of(rows_[r][c], columns_[c].shown));
            width = std::max(width, width_of(lines[r + 1].back()));
            numeric = numeric || is_number(rows_[r][c]);
        }
        widths.push_back(width);
        right.push_back(numeric);
    }
    for (const auto& line : lines) {
        std::string out;
        for (std::size_t c = 0; c < line.size(); ++c) {
            const std::string padding(widths[c] - width_of(line[c]), ' ');
            if (c > 0) out += "  ";
            out += right[c] ? padding + line[c] : line[c] + padding;
        }
        out.erase(out.find_last_not_of(' ') + 1);
        fmt::print("{}\n", out);
    }
}

void Report::print_json() const {
    // An ordered object keeps the keys in the order of the columns.
    nlohmann::ordered_json out = nlohmann::ordered_json::array();
    for (const auto& row : rows_) {
        nlohmann::ordered_json object = nlohmann::ordered_json::object();
        for (std::size_t c = 0; c < columns_.size(); ++c) {
            if (columns_[c].key.empty()) continue;
            auto& slot = object[columns_[c].key];
            if (const auto* number = std::get_if<double>(&row[c])) {
                if (std::isfinite(*number)) slot = *number;
            } else if (const auto* whole = std::get_if<long long>(&row[c])) {
                slot = *whole;
            } else if (const auto* flag = std::get_if<bool>(&row[c])) {
                slot = *flag;
            } else if (const auto* text = std::get_if<std::string>(&row[c])) {
                slot = *text;
            }
        }
        out.push_back(std::move(object));
    }
    fmt::print("{}\n", out.dump(2));
}

void Report::print_csv() const {
    const char* separator = "";
    for (const Column& column : columns_) {
        if (column.key.empty()) continue;
        fmt::print("{}{}", separator, column.key);
        separator = ",";
    }
    fmt::print("\n");
    for (const auto& row : rows_) {
        separator = "";
        for (std::size_t c = 0; c < columns_.size(); ++c) {
            if (columns_[c].key.empty()) continue;
            fmt::print("{}{}", separator, quoted(text_of(row[c], nullptr)));
            separator = ",";
        }
        fmt::print("\n");
    }
}

}  // namespace app
