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

using Kernel = void (*)(const SeriesBatch&, const SeriesRow*, int, SeriesSums&);

Kernel kernel_of_processor() {
    if (cpu_has_avx512()) return sum_batch_avx512;
    return cpu_has_avx2() ? sum_batch_avx2 : sum_batch_baseline;
}

// Which rows of the file make a body's state.
struct Recipe {
    SeriesRow rows[kMostSeriesRows];
    int count = 0;

    void add(const DeFile& file, int row, double share) {
        const auto& [offset, terms, subs] = file.header.pointers[row - 1];
        rows[count++] = {
            offset - 1, terms, subs, file.per_au, 2.0 * subs * file.per_span * file.per_au,
            share};
    }
};

Recipe recipe_for(const DeFile& file, int body) {
    Recipe recipe;
    recipe.add(file, body, 1.0);
    if (body < kMoon) recipe.add(file, kSun, 1.0);
    if (body == kEarth) recipe.add(file, kMoon, file.moon_share);
    return recipe;
}

// Eight instants in the file. Those that it does not hold get the place of another.
struct Places {
    SeriesBatch batch;
    bool held[kSeriesBatch];
    std::size_t count = 0;
};

Places locate_all(const DeFile& file, std::span<const Instant> instants) {
    Places places{};
    places.batch.coefficients = file.records;
    RecordPlace some{file.records + kHeaderRecords * file.header.ncoeff, 0, 0};
    for (std::size_t i = 0; i < kSeriesBatch; ++i) {
        const auto place =
            i < instants.size() ? locate(file, instants[i]) : std::optional<RecordPlace>();
        places.held[i] = place.has_value();
        places.count += place.has_value();
        if (place) some = *place;
        places.batch.record[i] = some.record - file.records;
        places.batch.within[i] = some.within;
    }
    return places;
}

void copy_out(const SeriesSums& sums, const Places& places,
              std::span<std::array<double, 6>> out) {
    for (std::size_t i = 0; i < out.size(); ++i) {
        for (std::size_t k = 0; k < 3; ++k) {
            out[i][k] = sums.value[k][i];
            out[i][k + 3] = sums.rate[k][i];
        }
        if (!places.held[i]) out[i].fill(kNone);
    }
}

}  // namespace

std::optional<std::size_t> de_states(int body, std::span<const Instant> instants,
                                     std::span<std::array<double, 6>> out) {
    const auto file = current_de_file();
    if (file == nullptr || body < 1 || body > kSun || out.size() != instants.size())
        return std::nullopt;
    const Kernel kernel = kernel_of_processor();
    const Recipe recipe = recipe_for(*file, body);
    std::size_t done = 0;
    for (std::size_t first = 0; first < instants.size(); first += kSeriesBatch) {
        const std::size_t count = std::min<std::size_t>(kSeriesBatch, instants.size() - first);
        const Places places = locate_all(*file, instants.subspan(first, count));
        SeriesSums sums;
        kernel(places.batch, recipe.rows, recipe.count, sums);
        copy_out(sums, places, out.subspan(first, count));
        done += places.count;
    }
    return done;
}

}  // namespace solsys
