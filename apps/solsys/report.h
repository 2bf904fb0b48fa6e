// A result as a table for people, as JSON, or as CSV.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "apps/solsys/failure.h"

namespace app {

enum class Format { kTable, kJson, kCsv };

using Cell = std::variant<std::monostate, double, long long, bool, std::string>;

template <class T>
Cell cell(const std::optional<T>& value) {
    return value ? Cell(*value) : Cell();
}
inline Cell text_cell(const std::string& text) { return text.empty() ? Cell() : Cell(text); }

// How a table shows a number.
using Shown = std::function<std::string(double)>;
Shown fixed(int decimals);
// The same for angles that go round: 0.00 instead of 360.00.
Shown fixed_round(int decimals);
std::string shown_hours(double degrees);    // "05h 32m 12.3s"
std::string shown_degrees(double degrees);  // "+12° 34' 56""

// What a table shows for a cell; empty for none and for what is not finite.
std::string text_of(const Cell& cell, const Shown& shown);

// One quantity of a row: what it is called in JSON and CSV (with its unit; empty: for people
// only), what a table heads it with (empty: not in the table), how a table shows a number, and
// where it comes from.
template <class Row>
struct Column {
    std::string name;
    std::string title;
    Shown format;
    std::function<Cell(const Row&)> extract;
};

// What holds for every row: the last keys of each JSON object and CSV row.
using Context = std::vector<std::pair<std::string, Cell>>;

// The rows as text. JSON and CSV go out row by row; a table waits for the widths of its
// columns.
class Report {
  public:
    struct Heading {
        std::string name, title;
        Shown format;
    };
    Report(Format format, std::vector<Heading> headings, Context context);

    void add(std::vector<Cell> row);
    [[nodiscard]] bool empty() const { return count_ == 0; }
    // Ends the output; once. Numbers in JSON and CSV read back to the same double.
    void finish();

  private:
    void add_json(const std::vector<Cell>& row);
    void add_csv(const std::vector<Cell>& row);
    void print_table() const;

    Format format_;
    std::vector<Heading> headings_;
    Context context_;
    std::vector<std::string> json_keys_;  // of the columns, as text; empty: not in JSON
    std::string json_context_;
    std::vector<std::vector<Cell>> rows_;  // of a table
    std::size_t count_ = 0;
};

template <class Row>
class Table {
  public:
    Table(Format format, std::vector<Column<Row>> columns, Context context = {})
        : format_(format),
          columns_(std::move(columns)),
          report_(format, headings(), std::move(context)) {}

    void add(const Row& row) {
        std::vector<Cell> cells;
        cells.reserve(columns_.size());
        for (const Column<Row>& column : columns_) cells.push_back(column.extract(row));
        report_.add(std::move(cells));
    }
    [[nodiscard]] bool empty() const { return report_.empty(); }
    void finish() { report_.finish(); }
    // The same; without any row (an empty array in JSON) the command ends with this.
    void finish(const std::string& none) {
        if (!empty() || format_ != Format::kTable) finish();
        if (empty()) throw NothingFound(none);
    }

  private:
    [[nodiscard]] std::vector<Report::Heading> headings() const {
        std::vector<Report::Heading> out;
        for (const Column<Row>& column : columns_)
            out.push_back({column.name, column.title, column.format});
        return out;
    }

    Format format_;
    std::vector<Column<Row>> columns_;
    Report report_;
};

}  // namespace app
