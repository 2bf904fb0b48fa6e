// States of bodies from the open DE file.
#include "ephemeris/de/state.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "ephemeris/de/chebyshev.h"
#include "ephemeris/de/locate.h"
#include "ephemeris/de/open_file.h"
#include "platform/clock.h"

namespace solsys {
namespace {

constexpr double kSameInstant = 1e-8;          // day
constexpr double kNever = -1e38;               // Julian date
constexpr std::uint32_t kReplacePoll = 50000;  // microseconds
constexpr short kEarth = 3, kMoon = 10, kSun = 11;

// The file that a state evaluates: the open one, of which the state becomes an owner. Null when
// there is none. What the state has of another file goes.
const DeFile* file_of(DE_EvalState& state) {
    while (de_file.replacing.load(std::memory_order_acquire)) {
        state = DE_EvalState{};
        sleep_microseconds(kReplacePoll);
    }
    const std::uint32_t generation = de_file.generation.load(std::memory_order_acquire);
    if (state.generation != generation) {
        state = DE_EvalState{};
        state.file = current_de_file();
        state.generation = generation;
    }
    return static_cast<const DeFile*>(state.file.get());
}

double position_in_record(const DeFile& file, double record_time) {
    const double within = record_time - static_cast<double>(record_number(file, record_time));
    return within <= 1.0 ? within : 1.0;  // rounding of the reciprocal of the span
}

void evaluate(const DeFile& file, DE_EvalState& state, int row, double within, bool velocity,
              double* out) {
    const auto& [offset, terms, subs] = file.header.pointers[row - 1];
    evaluate_series(state, state.record + (offset - 1), terms, subs, within, velocity,
                    {file.per_span, file.per_au}, out);
}

// Body less Sun, and for the Earth less the Moon's share: the file has the centre of mass of
// the Earth and the Moon. `sun` and `moon` make the two states that the caller keeps.
template <class Sun, class Moon>
void combine(const DeFile& file, DE_EvalState& state, short body, double within, bool velocity,
             Sun sun, Moon moon, double* out) {
    sun();
    evaluate(file, state, body, within, velocity, out);
    if (body >= kMoon) return;
    const int count = velocity ? 6 : 3;
    for (int i = 0; i < count; ++i) out[i] -= state.sun[i];
    if (body == kEarth) {
        moon();
        for (int i = 0; i < count; ++i) out[i] -= state.moon[i] * file.moon_share;
    }
}

// Leads a state to the record of an instant. \return the position in it, 0 to 1; -1 outside
double seek(const DeFile& file, DE_EvalState& state, Instant t) {
    const std::optional<RecordPlace> place = locate(file, t);
    if (!place) return -1;
    state.record_time = static_cast<double>(place->number) + place->within;
    state.record = place->record;
    return place->within;
}

}  // namespace

int de_state(DE_EvalState& state, Instant t, short body, bool velocity, double* out) {
    const DeFile* file = file_of(state);
    if (file == nullptr || body < 1 || body > kSun) return -1;
    const double within = seek(*file, state, t);
    if (within < 0) return -1;

    const auto kept = [&](DE_EvalState::Exact& exact, short row, double& cached_time,
                          std::int32_t& cached_level, double* cached) {
        const std::int32_t level = velocity ? 1 : 0;
        if (exact.record == state.record && exact.within == within && cached_level >= level)
            return;
        evaluate(*file, state, row, within, velocity, cached);
        exact = {state.record, within};
        cached_time = kNever;
        cached_level = level;
    };
    combine(
        *file, state, body, within, velocity,
        [&] { kept(state.exact_sun, kSun, state.sun_time, state.sun_level, state.sun); },
        [&] { kept(state.exact_moon, kMoon, state.moon_time, state.moon_level, state.moon); },
        out);
    return 0;
}

bool de_planet_positions(DE_EvalState& state, Instant t,
                         std::array<Vec3, kPlanetsInFile>& out) {
    const DeFile* file = file_of(state);
    if (file == nullptr) return false;
    const double within = seek(*file, state, t);
    if (within < 0) return false;
    const auto place = [&](int row) {
        double r[3];
        evaluate(*file, state, row, within, false, r);
        return load(r);
    };
    const Vec3 sun = place(kSun);
    for (int row = 1; row <= kPlanetsInFile; ++row)
        out[static_cast<std::size_t>(row - 1)] = place(row) - sun;
    return true;
}

}  // namespace solsys

int DE_Ephemeris::getState(DE_EvalState& state, int day, double fraction, short body,
                           short velocities, double* out) {
    using namespace solsys;
    const DeFile* file = file_of(state);
    if (file == nullptr || body < 1 || body > kSun) return -1;
    const double t = day + fraction;
    if (!(t >= file->header.start_jd && t <= file->last_jd)) return -1;  // NaN too

    state.record_time = (t - file->header.start_jd) * file->per_span;
    state.record = file->records + (record_number(*file, state.record_time) + kHeaderRecords) *
                                       file->header.ncoeff;
    const double within = position_in_record(*file, state.record_time);
    const bool velocity = velocities != 0;

    const auto kept = [&](DE_EvalState::Exact& exact, short row, double& cached_time,
                          std::int32_t& cached_level, double* cached) {
        const std::int32_t level = velocity ? 1 : 0;
        if (std::fabs(t - cached_time) <= kSameInstant && cached_level >= level) return;
        evaluate(*file, state, row, within, velocity, cached);
        exact = {};
        cached_time = t;
        cached_level = level;
    };
    combine(
        *file, state, body, within, velocity,
        [&] { kept(state.exact_sun, kSun, state.sun_time, state.sun_level, state.sun); },
        [&] { kept(state.exact_moon, kMoon, state.moon_time, state.moon_level, state.moon); },
        out);
    return 0;
}

void DE_Ephemeris::interpolate(DE_EvalState& state, const double* coefficients, int ncoef,
                               int nsub, int velocities, double* out) {
    using namespace solsys;
    const double record_time = state.record_time;
    const DeFile* file = file_of(state);
    state.record_time = record_time;
    if (file == nullptr || ncoef < 2 || ncoef > 20 || nsub < 1 || !(record_time >= 0) ||
        record_time > static_cast<double>(file->count))
        return;
    evaluate_series(state, coefficients, ncoef, nsub, position_in_record(*file, record_time),
                    velocities != 0, {file->per_span, file->per_au}, out);
}
