#include "ephemeris/de/state_batch.h"

#include <algorithm>
#include <limits>

#include "ephemeris/de/batch_kernel.h"
#include "ephemeris/de/locate.h"
#include "ephemeris/de/open_file.h"
#include "platform/cpu_features.h"

namespace solsys {
namespace {

constexpr double kNone = std::numeric_limits<double>::quiet_NaN();
constexpr int kEarth = 3, kMoon = 10, kSun = 11;

using Kernel = void (*)(const SeriesBatch&, SeriesSums&);

Kernel kernel_of_processor() {
    if (cpu_has_avx512()) return sum_batch_avx512;
    return cpu_has_avx2() ? sum_batch_avx2 : sum_batch_baseline;
}

// Where eight instants lie in the file. Those that it does not hold get the place of another.
struct Places {
    const double* record[kSeriesBatch];
    double within[kSeriesBatch];
    bool held[kSeriesBatch];
    std::size_t count = 0;
};

Places locate_all(const DeFile& file, std::span<const Instant> instants) {
    Places places{};
    RecordPlace some{file.records + kHeaderRecords * file.header.ncoeff, 0, 0};
    for (std::size_t i = 0; i < kSeriesBatch; ++i) {
        const auto place =
            i < instants.size() ? locate(file, instants[i]) : std::optional<RecordPlace>();
        places.held[i] = place.has_value();
        places.count += place.has_value();
        if (place) some = *place;
        places.record[i] = some.record;
        places.within[i] = some.within;
    }
    return places;
}

// Positions [au] and velocities [au/day] of one row of the file, by coordinate and instant.
struct BatchOfStates {
    double at[6][kSeriesBatch];
};

void evaluate(const DeFile& file, Kernel kernel, const Places& places, int row,
              BatchOfStates& out) {
    const auto& [offset, terms, subs] = file.header.pointers[row - 1];
    SeriesBatch batch;
    batch.coefficients = file.records;
    batch.terms = terms;
    for (int i = 0; i < kSeriesBatch; ++i) {
        const double scaled = places.within[i] * subs;
        const int sub = std::min(static_cast<int>(scaled), subs - 1);
        batch.time[i] = 2.0 * (scaled - sub) - 1.0;
        batch.first[i] = places.record[i] - file.records + (offset - 1) + sub * 3 * terms;
    }
    SeriesSums sums;
    kernel(batch, sums);
    const double velocity_factor = 2.0 * subs * file.per_span * file.per_au;
    for (int k = 0; k < 3; ++k)
        for (int i = 0; i < kSeriesBatch; ++i) out.at[k][i] = sums.value[k][i] * file.per_au;
    for (int k = 0; k < 3; ++k)
        for (int i = 0; i < kSeriesBatch; ++i)
            out.at[k + 3][i] = sums.rate[k][i] * velocity_factor;
}

void subtract(BatchOfStates& from, const BatchOfStates& what, double share) {
    for (int k = 0; k < 6; ++k)
        for (int i = 0; i < kSeriesBatch; ++i) from.at[k][i] -= what.at[k][i] * share;
}

}  // namespace

std::optional<std::size_t> de_states(int body, std::span<const Instant> instants,
                                     std::span<std::array<double, 6>> out) {
    const auto file = current_de_file();
    if (file == nullptr || body < 1 || body > kSun || out.size() != instants.size())
        return std::nullopt;
    const Kernel kernel = kernel_of_processor();
    std::size_t done = 0;
    for (std::size_t first = 0; first < instants.size(); first += kSeriesBatch) {
        const std::size_t count = std::min<std::size_t>(kSeriesBatch, instants.size() - first);
        const Places places = locate_all(*file, instants.subspan(first, count));
        BatchOfStates states, other;
        evaluate(*file, kernel, places, body, states);
        if (body < kMoon) {
            evaluate(*file, kernel, places, kSun, other);
            subtract(states, other, 1.0);
        }
        if (body == kEarth) {
            evaluate(*file, kernel, places, kMoon, other);
            subtract(states, other, file->moon_share);
        }
        for (std::size_t i = 0; i < count; ++i) {
            for (std::size_t k = 0; k < 6; ++k) out[first + i][k] = states.at[k][i];
            if (!places.held[i]) out[first + i].fill(kNone);
        }
        done += places.count;
    }
    return done;
}

}  // namespace solsys
