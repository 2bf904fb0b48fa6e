#include "ephemeris/de/state_batch.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "ephemeris/de/locate.h"
#include "ephemeris/de/open_file.h"
#include "platform/cpu_features.h"

namespace solsys {
namespace {

constexpr double kNone = std::numeric_limits<double>::quiet_NaN();
constexpr int kEarth = 3, kMoon = 10, kSun = 11;

auto kernel_of_processor() {
    if (cpu_has_avx512()) return sum_batch_avx512;
    return cpu_has_avx2() ? sum_batch_avx2 : sum_batch_baseline;
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

void take_away(SeriesSums& sums, std::size_t i) {
    for (int k = 0; k < 3; ++k) sums.value[k][i] = sums.rate[k][i] = kNone;
}

void copy_out(const SeriesSums& sums, std::span<std::array<double, 6>> out) {
    for (std::size_t i = 0; i < out.size(); ++i) {
        for (std::size_t k = 0; k < 3; ++k) {
            out[i][k] = sums.value[k][i];
            out[i][k + 3] = sums.rate[k][i];
        }
    }
}

}  // namespace

DeSeries::DeSeries(std::shared_ptr<const DeFile> file, int body)
    : file_(std::move(file)), kernel_(kernel_of_processor()) {
    const double moon = file_->moon_share;  // the file has the centre of mass of Earth and Moon
    add(body == kMoonAboutSunInFile ? kEarth : body, 1.0);
    if (body < kMoon || body == kMoonAboutSunInFile) add(kSun, 1.0);
    if (body == kEarth) add(kMoon, moon);
    if (body == kMoonAboutSunInFile) add(kMoon, moon - 1.0);
}

void DeSeries::add(int row, double share) {
    const auto& [offset, terms, subs] = file_->header.pointers[row - 1];
    const double per_au = file_->per_au;
    rows_[count_++] = {offset - 1, terms, subs, per_au, 2.0 * subs * file_->per_span * per_au,
                       share};
}

std::optional<DeSeries> DeSeries::open(int body) {
    auto file = current_de_file();
    if (file == nullptr || body < 1 || body > kMoonAboutSunInFile) return std::nullopt;
    return DeSeries(std::move(file), body);
}

std::size_t DeSeries::states(std::span<const Instant> instants, SeriesSums& out) const {
    const Places places = locate_all(*file_, instants);
    kernel_(places.batch, rows_, count_, out);
    if (places.count < kSeriesBatch)
        for (std::size_t i = 0; i < kSeriesBatch; ++i)
            if (!places.held[i]) take_away(out, i);
    return places.count;
}

std::optional<std::size_t> de_states(int body, std::span<const Instant> instants,
                                     std::span<std::array<double, 6>> out) {
    const auto series = DeSeries::open(body);
    if (!series || out.size() != instants.size()) return std::nullopt;
    std::size_t done = 0;
    for (std::size_t first = 0; first < instants.size(); first += kSeriesBatch) {
        const std::size_t count = std::min<std::size_t>(kSeriesBatch, instants.size() - first);
        SeriesSums sums;
        done += series->states(instants.subspan(first, count), sums);
        copy_out(sums, out.subspan(first, count));
    }
    return done;
}

}  // namespace solsys
