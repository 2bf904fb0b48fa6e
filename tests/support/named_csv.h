// Rows of a reference file by the names of their columns.
#pragma once

#include <fstream>
#include <map>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "core/instant.h"
#include "core/linalg.h"

namespace solsys::test {

class NamedRow {
  public:
    std::map<std::string, std::string> cells;

    [[nodiscard]] const std::string& text(const std::string& name) const {
        return cells.at(name);
    }
    [[nodiscard]] double operator[](const std::string& name) const {
        return std::stod(cells.at(name));
    }
    [[nodiscard]] Vec3 vector(const std::string& stem) const {
        return {(*this)[stem + "x"], (*this)[stem + "y"], (*this)[stem + "z"]};
    }
    // Columns stem11 .. stem33.
    [[nodiscard]] Mat3 matrix(const std::string& stem) const {
        double m[9];
        for (int k = 0; k < 9; ++k)
            m[k] =
                (*this)[stem + static_cast<char>('1' + k / 3) + static_cast<char>('1' + k % 3)];
        return load_matrix(m);
    }
    // Columns stem_day, stem_fraction.
    [[nodiscard]] Instant instant(const std::string& stem) const {
        return {static_cast<int>((*this)[stem + "_day"]), (*this)[stem + "_fraction"]};
    }
};

inline std::vector<NamedRow> read_named_csv(const std::string& path) {
    std::ifstream file(path);
    if (!file) throw std::runtime_error("cannot read " + path);
    std::vector<std::string> names;
    std::vector<NamedRow> rows;
    for (std::string line; std::getline(file, line);) {
        if (!line.empty() && line.back() == '\r') line.pop_back();
        if (line.empty() || line.front() == '#') continue;
        std::istringstream cells(line);
        std::vector<std::string> row;
        for (std::string cell; std::getline(cells, cell, ',');) row.push_back(cell);
        if (names.empty()) {
            names = row;
            continue;
        }
        row.resize(names.size());  // an empty last cell leaves no trace
        rows.emplace_back();
        for (std::size_t i = 0; i < names.size(); ++i) rows.back().cells[names[i]] = row[i];
    }
    if (rows.empty()) throw std::runtime_error("no rows in " + path);
    return rows;
}

}  // namespace solsys::test
