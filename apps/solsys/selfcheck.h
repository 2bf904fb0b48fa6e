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

    // What is not a number is no agreement.
    void add(double residual);
    [[nodiscard]] double rms() const;
    [[nodiscard]] bool passed() const { return cases > 0 && worst <= bound; }
};

struct CheckGroup {
    std::string title;
    std::vector<Check> checks;
};

// A table of check values, of which the first row names the columns.
class CheckTable {
  public:
    explicit CheckTable(std::string_view csv);

    class Row {
      public:
        [[nodiscard]] std::string_view text(std::string_view column) const;
        // NaN where no number stands.
        [[nodiscard]] double operator[](std::string_view column) const;
        [[nodiscard]] int whole(std::string_view column) const {
            return static_cast<int>((*this)[column]);
        }

      private:
        friend class CheckTable;
        const std::vector<std::string_view>* names_ = nullptr;
        std::vector<std::string_view> cells_;
    };
    void each(const std::function<void(const Row&)>& visit) const;

  private:
    std::vector<std::string_view> names_;
    std::string_view rows_;
};

// Angle between two directions [mas].
double separation_mas(const double* a, const double* b);
// Puts the observer at the Earth's centre.
void observe_from_earth(CSWSolSys& model);
// The Sun, the Moon and the planets to Pluto.
struct NamedBody {
    const char* name;
    SSO_ID id;
};
const std::vector<NamedBody>& ten_bodies();
// Instants spread over 1960 to 2059, the same at every run.
struct SplitDate {
    int day;
    double fraction;
};
std::vector<SplitDate> spread_instants(int count);

// What needs no ephemeris but the built-in theories.
CheckGroup orientation_checks(CSWSolSys& theory);
CheckGroup table_checks(CSWSolSys& theory);
CheckGroup theory_checks(CSWSolSys& theory);
CheckGroup event_checks(CSWSolSys& theory);
// On a DE405 file.
CheckGroup classic_place_checks(CSWSolSys& file);
CheckGroup modern_place_checks(CSWSolSys& file);

// Heliocentric positions (the Moon: geocentric) of the ten bodies by instant and body [au], of
// the theory first, then beside those of a file.
using Positions = std::vector<double>;
Positions positions_of_ten(CSWSolSys& model, const std::vector<SplitDate>& instants);
CheckGroup theory_against_file(const Positions& theory, const Positions& file);

// Apparent places by the classic reduction beside those by the modern one.
CheckGroup reduction_differences(CSWSolSys& model);

}  // namespace app
