// Rows of a reference file as text cells: lines that start with # are comments, the first other
// line names the columns.
#pragma once

#include <cstddef>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace solsys::test {

using CsvRow = std::vector<std::string>;

inline std::vector<CsvRow> read_csv(const std::string& path) {
    std::ifstream file(path);
    if (!file) throw std::runtime_error("cannot read " + path);
    std::vector<CsvRow> rows;
    std::size_t columns = 0;
    for (std::string line; std::getline(file, line);) {
        if (!line.empty() && line.back() == '\r') line.pop_back();
        if (line.empty() || line.front() == '#') continue;
        CsvRow row;
        std::istringstream cells(line);
        for (std::string cell; std::getline(cells, cell, ',');) row.push_back(cell);
        if (line.back() == ',') row.emplace_back();
        if (columns == 0) {
            columns = row.size();
            continue;
        }
        if (row.size() != columns) throw std::runtime_error("ragged row in " + path);
        rows.push_back(row);
    }
    if (rows.empty()) throw std::runtime_error("no rows in " + path);
    return rows;
}

}  // namespace solsys::test
