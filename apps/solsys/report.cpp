#include "apps/solsys/report.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "apps/solsys/utf8.h"

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

std::string csv_text(const std::string& text) {
    if (text.find_first_of(",\"\n\r") == std::string::npos) return text;
    std::string out(1, '"');
    for (const char c : text) out.append(c == '"' ? 2U : 1U, c);
    out.push_back('"');
    return out;
}

std::string json_text(const std::string& text) {
    const bool plain = std::all_of(text.begin(), text.end(), [](char c) {
        return c >= 0x20 && c < 0x7f && c != '"' && c != '\\';
    });
    if (plain) return '"' + text + '"';
    std::string out = "\"";
    for (const char c : valid_utf8(text)) {
        if (c == '"' || c == '\\') {
            out += '\\';
            out += c;
        } else if (static_cast<unsigned char>(c) < 0x20) {
            out += fmt::format("\\u{:04x}", static_cast<unsigned>(c));
        } else {
            out += c;
        }
    }
    return out + "\"";
}

// The shortest decimal number that reads back to the same double.
std::string json_value(const Cell& cell) {
    if (const auto* number = std::get_if<double>(&cell))
        return std::isfinite(*number) ? fmt::format("{}", *number) : "null";
    if (const auto* whole = std::get_if<long long>(&cell)) return fmt::format("{}", *whole);
    if (const auto* flag = std::get_if<bool>(&cell)) return *flag ? "true" : "false";
    if (const auto* text = std::get_if<std::string>(&cell)) return json_text(*text);
    return "null";
}

std::string csv_value(const Cell& cell) {
    if (const auto* flag = std::get_if<bool>(&cell)) return *flag ? "true" : "false";
    return csv_text(text_of(cell, nullptr));
}

}  // namespace

Shown fixed(int decimals) {
    return [decimals](double value) {
        std::string text = fmt::format("{:.{}f}", value, decimals);
        const bool zero = text.find_first_of("123456789") == std::string::npos;
        return zero && text.front() == '-' ? text.substr(1) : text;
    };
}

Shown fixed_round(int decimals) {
    return [shown = fixed(decimals), whole = fixed(decimals)(360)](double value) {
        const std::string text = shown(value);
        return text == whole ? shown(0) : text;
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

Report::Report(Format format, std::vector<Heading> headings, Context context)
    : format_(format), headings_(std::move(headings)), context_(std::move(context)) {
    for (const Heading& heading : headings_)
        json_keys_.push_back(heading.name.empty() ? "" : json_text(heading.name) + ": ");
    for (const auto& [key, value] : context_)
        json_context_ += ",\n    " + json_text(key) + ": " + json_value(value);
}

void Report::add(std::vector<Cell> row) {
    row.resize(headings_.size());
    if (format_ == Format::kJson) add_json(row);
    if (format_ == Format::kCsv) add_csv(row);
    if (format_ == Format::kTable) rows_.push_back(std::move(row));
    ++count_;
}

void Report::finish() {
    if (format_ == Format::kTable) print_table();
    if (format_ == Format::kJson) fmt::print("{}", count_ == 0 ? "[]\n" : "\n]\n");
}

void Report::add_json(const std::vector<Cell>& row) {
    std::string out = count_ == 0 ? "[\n  {" : ",\n  {";
    const char* separator = "\n    ";
    for (std::size_t c = 0; c < row.size(); ++c) {
        if (json_keys_[c].empty()) continue;
        out += separator + json_keys_[c] + json_value(row[c]);
        separator = ",\n    ";
    }
    fmt::print("{}{}\n  }}", out, json_context_);
}

void Report::add_csv(const std::vector<Cell>& row) {
    std::string heading;
    std::string out;
    const auto add = [&](const std::string& key, const Cell& value) {
        if (key.empty()) return;
        heading += (heading.empty() ? "" : ",") + key;
        if (heading.size() != key.size()) out += ',';
        out += csv_value(value);
    };
    for (std::size_t c = 0; c < row.size(); ++c) add(headings_[c].name, row[c]);
    for (const auto& [key, value] : context_) add(key, value);
    if (count_ == 0) fmt::print("{}\n", heading);
    fmt::print("{}\n", out);
}

void Report::print_table() const {
    std::vector<std::vector<std::string>> lines(rows_.size() + 1);
    std::vector<std::size_t> widths;
    std::vector<bool> right;
    for (std::size_t c = 0; c < headings_.size(); ++c) {
        if (headings_[c].title.empty()) continue;
        std::size_t width = width_of(headings_[c].title);
        bool numeric = false;
        bool something = false;
        lines[0].push_back(headings_[c].title == " " ? "" : headings_[c].title);
        for (std::size_t r = 0; r < rows_.size(); ++r) {
            lines[r + 1].push_back(text_of(rows_[r][c], headings_[c].format));
            width = std::max(width, width_of(lines[r + 1].back()));
            numeric = numeric || is_number(rows_[r][c]);
            something =
                something || (!lines[r + 1].back().empty() && lines[r + 1].back() != "-");
        }
        if (!something && !rows_.empty()) {
            // A column without a value in any row would only take room.
            for (auto& line : lines) line.pop_back();
            continue;
        }
        widths.push_back(width);
        right.push_back(numeric);
    }
    for (const auto& line : lines) {
        std::string out;
        for (std::size_t c = 0; c < line.size(); ++c) {
            const std::string padding(widths[c] - std::min(widths[c], width_of(line[c])), ' ');
            if (c > 0) out += "  ";
            out += right[c] ? padding + line[c] : line[c] + padding;
        }
        out.erase(out.find_last_not_of(' ') + 1);
        fmt::print("{}\n", out);
    }
}

}  // namespace app
