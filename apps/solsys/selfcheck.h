// Recomputing the check values that come with the project.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "solsys/solar_system.h"

namespace app {

// One line of the table of residuals.
struct Check {
    std::string quantity;
    std::string against;  // where the values come from
    std::string unit;
    double bound = 0;  // what the largest residual may not exceed
    std::size_t cases = 0;
    double worst = 0;
    double sum_of_squares = 0;

    void add(double residual);
    [[nodiscard]] double rms() const;
    [[nodiscard]] bool passed() const { return cases > 0 && worst <= bound; }
};

// Rows of check values by the names of their columns.
class CheckTable {
  public:
    explicit CheckTable(std::string_view csv);

    class Row {
      public:
        Row(const CheckTable& table, std::string_view line) : table_(table), line_(line) {}
        [[nodiscard]] std::string_view text(std::string_view column) const;
        [[nodiscard]] double operator[](std::string_view column) const;

      private:
        const CheckTable& table_;
        std::string_view line_;
    };
    void each(const std::function<void(const Row&)>& visit) const;

  private:
    [[nodiscard]] std::size_t column(std::string_view name) const;
    std::string_view header_, rows_;
};

// The checks, by what they need. `file`: a model on a DE405 file; `theory`: one on the built-in
// theories. Both come back in the reduction that they had.
std::vector<Check> orientation_checks(CSWSolSys& theory);
std::vector<Check> place_checks(CSWSolSys& file);
std::vector<Check> table_checks(CSWSolSys& theory);
std::vector<Check> event_checks(CSWSolSys& theory);
// Classic minus modern apparent places, ten bodies, by random instants of 1960..2059 [mas].
std::vector<Check> reduction_differences(CSWSolSys& model);

}  // namespace app
