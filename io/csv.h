// Tables of comma-separated values: comment lines that begin with '#', a header row, data rows.
#pragma once

#include <cstddef>
#include <istream>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "io/text_lines.h"

namespace solsys_io {

// Splits a row into cells. A cell in double quotes may hold commas and doubled quotes, not line
// ends. The strings are reused from row to row. False: a quote is not closed, or something
// follows one.
bool split_csv(std::string_view line, std::vector<std::string>& cells);

// Reads a table row by row, its columns by name.
class CsvTable {
  public:
    explicit CsvTable(std::istream& in) : lines_(in) {}

    // Reads up to the header row; false if the stream has none. Once, before next().
    bool read_header();
    // The place of a column, empty if the table has none of that name.
    [[nodiscard]] std::optional<std::size_t> column(std::string_view name) const;

    // The next row that is neither blank nor a comment; false at the end of the stream.
    bool next();
    // What is wrong with the row; empty: nothing. A faulty row has no cells.
    [[nodiscard]] std::string_view fault() const { return fault_; }
    // The text of a cell, blanks around it removed; empty for a column the table lacks.
    [[nodiscard]] std::string_view cell(std::optional<std::size_t> column) const;

    [[nodiscard]] std::size_t line() const { return lines_.number(); }
    [[nodiscard]] bool broken() const { return lines_.broken(); }

  private:
    // The next line that is neither blank nor a comment.
    bool next_line(std::string_view& line);

    TextLines lines_;
    std::vector<std::string> names_;
    std::vector<std::string> cells_;
    std::string_view fault_;
};

}  // namespace solsys_io
