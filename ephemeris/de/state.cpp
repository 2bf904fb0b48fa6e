// States of bodies from the open DE file.
#include <algorithm>
#include <cmath>

#include "ephemeris/de/chebyshev.h"
#include "ephemeris/de/open_file.h"
#include "platform/clock.h"

namespace solsys {
namespace {

constexpr double kSameInstant = 1e-8;          // day
constexpr std::uint32_t kReplacePoll = 50000;  // microseconds
constexpr short kEarth = 3, kMoon = 10, kSun = 11;
constexpr int kHeaderRecords = 2;

// Number of the record of a record time. The end of the file's span belongs to the last record.
std::int64_t record_number(double record_time) {
    return std::min(static_cast<std::int64_t>(record_time), de_file.count - 1);
}

double position_in_record(double record_time) {
    const double within = record_time - static_cast<double>(record_number(record_time));
    return within <= 1.0 ? within : 1.0;  // rounding of the reciprocal of the span
}

void evaluate(DE_EvalState& state, int row, double within, bool velocity, double* out) {
    const auto& [offset, terms, subs] = de_file.header.pointers[row - 1];
    evaluate_series(state, state.record + (offset - 1), terms, subs, within, velocity,
                    {de_file.per_span, de_file.per_au}, out);
}

// A state cached for one instant: its values, when they are for, and how much of them.
void refresh(DE_EvalState& state, int row, double t, double within, bool velocity,
             double& cached_time, std::int32_t& cached_level, double* cached) {
    const std::int32_t level = velocity ? 1 : 0;
    if (std::fabs(t - cached_time) <= kSameInstant && cached_level >= level) return;
    evaluate(state, row, within, velocity, cached);
    cached_time = t;
    cached_level = level;
}

}  // namespace
}  // namespace solsys

int DE_Ephemeris::getState(DE_EvalState& state, int day, double fraction, short body,
                           short velocities, double* out) {
    using namespace solsys;
    while (de_file.replacing.load(std::memory_order_acquire)) {
        state = DE_EvalState{};
        sleep_microseconds(kReplacePoll);
    }
    if (de_file.records == nullptr || body < 1 || body > kSun) return -1;
    const double t = day + fraction;
    if (!(t >= de_file.header.start_jd && t <= de_file.last_jd)) return -1;  // NaN too

    if (state.generation != de_file.generation) {
        state = DE_EvalState{};
        state.generation = de_file.generation;
    }
    state.record_time = (t - de_file.header.start_jd) * de_file.per_span;
    state.record = de_file.records +
                   (record_number(state.record_time) + kHeaderRecords) * de_file.header.ncoeff;
    const double within = position_in_record(state.record_time);
    const bool velocity = velocities != 0;

    refresh(state, kSun, t, within, velocity, state.sun_time, state.sun_level, state.sun);
    evaluate(state, body, within, velocity, out);
    if (body >= kMoon) return 0;

    const int count = velocity ? 6 : 3;
    for (int i = 0; i < count; ++i) out[i] -= state.sun[i];
    if (body == kEarth) {
        // The file has the centre of mass of the Earth and the Moon.
        refresh(state, kMoon, t, within, velocity, state.moon_time, state.moon_level,
                state.moon);
        for (int i = 0; i < count; ++i) out[i] -= state.moon[i] * de_file.moon_share;
    }
    return 0;
}

void DE_Ephemeris::interpolate(DE_EvalState& state, const double* coefficients, int ncoef,
                               int nsub, int velocities, double* out) {
    using namespace solsys;
    if (ncoef < 2 || ncoef > 20 || nsub < 1 || !(state.record_time >= 0) ||
        state.record_time > static_cast<double>(de_file.count))
        return;
    evaluate_series(state, coefficients, ncoef, nsub, position_in_record(state.record_time),
                    velocities != 0, {de_file.per_span, de_file.per_au}, out);
}
