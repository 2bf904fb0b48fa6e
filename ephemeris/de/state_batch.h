// States from the open DE file at many instants.
#pragma once

#include <array>
#include <cstddef>
#include <memory>
#include <optional>
#include <span>

#include "core/instant.h"
#include "ephemeris/de/batch_kernel.h"

namespace solsys {

struct DeFile;

// Beside the bodies 1 to 11 of the file: the Moon about the Sun.
constexpr int kMoonAboutSunInFile = 12;

// The series of one body in the open file, for eight instants at a time. The file stays mapped
// as long as this lives.
class DeSeries {
  public:
    // Empty without an open file, and for a body that is none (1 to 12).
    static std::optional<DeSeries> open(int body);

    // The states [au, au/day] at up to eight instants, as de_states has them, coordinate by
    // coordinate; beyond the last instant NaN. How many of them the file holds.
    std::size_t states(std::span<const Instant> instants, SeriesSums& out) const;

  private:
    DeSeries(std::shared_ptr<const DeFile> file, int body);
    void add(int row, double share);

    std::shared_ptr<const DeFile> file_;
    void (*kernel_)(const SeriesBatch&, const SeriesRow*, int, SeriesSums&);
    SeriesRow rows_[kMostSeriesRows];  // that make the body's state
    int count_ = 0;
};

// As de_state with velocities, to the same bits, for every instant (TDB; normalised or not).
// Where the file does not reach, NaN. How many it does; nothing, and `out` left alone, without
// an open file, for a body that is none (1 to 12), and for spans of different lengths.
//
// Eight instants go through the series together; neighbours that share a sub-interval of it
// read its coefficients once. Takes nothing from an evaluation state.
std::optional<std::size_t> de_states(int body, std::span<const Instant> instants,
                                     std::span<std::array<double, 6>> out);

}  // namespace solsys
