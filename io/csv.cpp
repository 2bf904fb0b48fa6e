#include "io/csv.h"

#include <algorithm>

#include "io/fields.h"

namespace solsys_io {

bool split_csv(std::string_view line, std::vector<std::string>& cells) {
    std::size_t used = 0;
    const auto fresh = [&]() -> std::string& {
        if (used == cells.size()) cells.emplace_back();
        cells[used].clear();
        return cells[used++];
    };
    std::size_t at = 0;
    bool well_formed = true;
    for (;;) {
        std::string& cell = fresh();
        if (at < line.size() && line[at] == '"') {
            bool closed = false;
            for (++at; at < line.size() && !closed; ++at) {
                if (line[at] != '"')
                    cell += line[at];
                else if (at + 1 < line.size() && line[at + 1] == '"')
                    cell += line[++at];
                else
                    closed = true;
            }
            well_formed = closed && (at == line.size() || line[at] == ',');
        } else {
            const std::size_t end = std::min(line.find(',', at), line.size());
            cell.assign(line.substr(at, end - at));
            at = end;
        }
        if (!well_formed || at >= line.size()) break;
        ++at;
    }
    cells.resize(used);
    return well_formed;
}

bool CsvTable::next_line(std::string_view& line) {
    while (lines_.next(line)) {
        if (lines_.too_long() || (!trimmed(line).empty() && line.front() != '#')) return true;
    }
    return false;
}

bool CsvTable::read_header() {
    std::string_view line;
    if (!next_line(line) || lines_.too_long() || is_binary(line)) return false;
    constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
    if (line.substr(0, 3) == kByteOrderMark) line.remove_prefix(3);
    return split_csv(line, names_);
}

std::optional<std::size_t> CsvTable::column(std::string_view name) const {
    const auto found = std::find_if(names_.begin(), names_.end(), [&](const std::string& text) {
        return trimmed(text) == name;
    });
    if (found == names_.end()) return std::nullopt;
    return static_cast<std::size_t>(found - names_.begin());
}

bool CsvTable::next() {
    std::string_view line;
    if (!next_line(line)) return false;
    fault_ = {};
    if (lines_.too_long())
        fault_ = "line too long";
    else if (is_binary(line))
        fault_ = "not text";
    else if (!split_csv(line, cells_))
        fault_ = "quotes do not match";
    else if (cells_.size() != names_.size())
        fault_ = "the number of cells is not that of the header";
    if (!fault_.empty()) cells_.clear();
    return true;
}

std::string_view CsvTable::cell(std::optional<std::size_t> column) const {
    if (!column || *column >= cells_.size()) return {};
    return trimmed(cells_[*column]);
}

}  // namespace solsys_io
