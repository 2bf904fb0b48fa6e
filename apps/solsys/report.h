// A result as a table for people, as JSON, or as CSV.
#pragma once

#include <functional>
#include <string>
#include <variant>
#include <vector>

namespace app {

enum class Format { kTable, kJson, kCsv };

using Cell = std::variant<std::monostate, double, long long, bool, std::string>;

// How a table shows a number.
using Shown = std::function<std::string(double)>;
Shown fixed(int decimals);
std::string shown_hours(double degrees);    // "05h 32m 12.3s"
std::string shown_degrees(double degrees);  // "+12 34 56"

// What a table shows for a cell; empty for none and for what is not finite.
std::string text_of(const Cell& cell, const Shown& shown);

struct Column {
    std::string key;    // JSON key and CSV heading, with the unit
    std::string title;  // heading for people; empty: not shown in the table
    Shown shown = nullptr;
};

class Report {
  public:
    explicit Report(std::vector<Column> columns) : columns_(std::move(columns)) {}

    void add(std::vector<Cell> row);
    [[nodiscard]] bool empty() const { return rows_.empty(); }
    // To standard output. Numbers in JSON and CSV read back to the same double.
    void print(Format format) const;

  private:
    void print_table() const;
    void print_json() const;
    void print_csv() const;

    std::vector<Column> columns_;
    std::vector<std::vector<Cell>> rows_;
};

}  // namespace app
