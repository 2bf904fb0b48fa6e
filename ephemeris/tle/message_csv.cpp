// Messages as a table (RFC 4180): a row of keys, then one object a row.
#include "ephemeris/tle/element_lines.h"
#include "ephemeris/tle/messages.h"

namespace solsys {
namespace {

class CsvReader {
  public:
    explicit CsvReader(std::string_view text) : text_(text) {}

    [[nodiscard]] bool at_end() const { return at_ >= text_.size(); }
    [[nodiscard]] int line() const { return line_; }

    // The fields of the next row; quotes may hold commas, line ends and doubled quotes.
    const std::vector<std::string>& row() {
        row_.assign(1, {});
        bool quoted = false;
        ++line_;
        for (; !at_end(); ++at_) {
            const char c = text_[at_];
            if (quoted && c == '"' && at_ + 1 < text_.size() && text_[at_ + 1] == '"') {
                row_.back().push_back(text_[++at_]);
            } else if (c == '"') {
                quoted = !quoted;
            } else if (!quoted && c == ',') {
                row_.emplace_back();
            } else if (!quoted && c == '\n') {
                break;
            } else {
                row_.back().push_back(c);
                line_ += c == '\n';
            }
        }
        ++at_;
        row_.back().resize(without_end(row_.back()).size());
        return row_;
    }

  private:
    std::string_view text_;
    std::size_t at_ = 0;
    int line_ = 0;
    std::vector<std::string> row_;
};

}  // namespace

void read_csv(std::string_view text, SetSink& sink) {
    CsvReader csv(text);
    const std::vector<std::string> keys = csv.row();
    while (!csv.at_end()) {
        const auto& row = csv.row();
        if (row.size() == 1 && row[0].empty()) continue;
        TLERecord record;
        TLEFault fault{TLE_FAULT_FIELDS, 0, 0, {}};
        if (row.size() == keys.size()) {
            OmmFields fields;
            for (std::size_t k = 0; k < keys.size(); ++k)
                if (!row[k].empty()) fields.set(keys[k], row[k]);
            fault = read_message(fields, record);
        }
        sink.take(record, fault, csv.line());
    }
}

}  // namespace solsys
