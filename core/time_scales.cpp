#include "solsys/time_scales.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cmath>
#include <cstdint>
#include <iterator>
#include <limits>

#include "core/constants.h"
#include "core/instant.h"
#include "solsys/calendar.h"

namespace {

struct Row {
    int year, month, key_day;
    double key_fraction, delta_t;
};
constexpr Row kRows[] = {
#include "delta_t.inc"
};
constexpr std::size_t kCount = std::size(kRows);
static_assert(kCount == 233);

// The keys by themselves, so that they take little memory.
constexpr auto kKeys = [] {
    std::array<double, kCount> keys{};
    for (std::size_t i = 0; i < kCount; ++i) keys[i] = kRows[i].key_day + kRows[i].key_fraction;
    return keys;
}();
static_assert(std::is_sorted(kKeys.begin(), kKeys.end()));

// The last row whose key is not after the beginning of a slot. Slots are shorter than the steps
// of the table: at most one key is within a slot.
constexpr double kSlotDays = 128;
constexpr std::size_t kSlots =
    static_cast<std::size_t>((kKeys.back() - kKeys.front()) / kSlotDays) + 1;
constexpr auto kRowOfSlot = [] {
    std::array<std::uint8_t, kSlots> rows{};
    for (std::size_t slot = 0, row = 0; slot < kSlots; ++slot) {
        const double begin = kKeys.front() + static_cast<double>(slot) * kSlotDays;
        while (row + 1 < kCount && kKeys[row + 1] <= begin) ++row;
        rows[slot] = static_cast<std::uint8_t>(row);
    }
    return rows;
}();
static_assert([] {
    for (std::size_t i = 1; i < kCount; ++i)
        if (kKeys[i] - kKeys[i - 1] <= kSlotDays) return false;
    return true;
}());

// jd: at the first key or after it.
std::size_t row_of(double jd) {
    if (jd >= kKeys.back()) return kCount - 1;
    const std::size_t row =
        kRowOfSlot[static_cast<std::size_t>((jd - kKeys.front()) / kSlotDays)];
    return jd >= kKeys[row + 1] ? row + 1 : row;
}

template <std::size_t N>
double horner(const double (&c)[N], double u) {
    double sum = 0;
    for (std::size_t i = N; i-- > 0;) sum = sum * u + c[i];
    return sum;
}

// Before the table: polynomials in the decimal year (Espenak & Meeus 2006). The year, and what
// is formed from it, is held in single precision.
constexpr double kFrom500BC[] = {10583.6,    -1014.41,    33.78311,    -5.952053,
                                 -0.1798452, 0.022174192, 0.0090316521};
constexpr double kFrom500[] = {1574.2,     -556.01,      71.23472,    0.319781,
                               -0.8503463, -0.005050998, 0.0083572073};
constexpr double kFrom1600[] = {120, -1.0247, -0.01532, 0.00014027212792818068};

double before_table(float y) {
    if (y < -500.0F) {
        const float u = (y - 1820.0F) / 100.0F;
        return 32.0F * u * u - 20.0F;
    }
    if (y < 500.0F) return horner(kFrom500BC, y / 100.0F);
    if (y < 1600.0F) return horner(kFrom500, static_cast<float>(y * 0.01 - 10.0));
    if (y < 1650.0F) return horner(kFrom1600, y - 1600.0F);
    return 48.0;
}

std::atomic<int> users{0};

using Segments = std::array<ET_UT::ET_UT_Poly, 6>;

Segments make_segments() {
    struct Values {
        int start, end;
        double c0, c1, c2, c3;
    };
    // Of the last one c0 makes it meet the table's last value a year after its key.
    const double t_end = (kKeys.back() + 365.25 - 2385801) * 2.7378507871321012e-5;
    const Values values[6] = {
        {0, 1538800, 184.4, 111.6, 31.0, 0.0},
        {1538800, 1830633, -31527.7, -4773.29, -212.0889, -3.93731},
        {1830633, 2086308, 6833.0, 1996.25, 186.1189, 3.87068},
        {2086308, 2177621, -116.0, -88.45, -22.3509, -3.07831},
        {2177621, 2323711, -782.0, -454.81, -84.8571, -6.47619},
        {2385801, 5373120, kRows[kCount - 1].delta_t - 32 * t_end * t_end, 0.0, 32.0, 0.0}};
    Segments segments;
    for (std::size_t i = 0; i < segments.size(); ++i) {
        segments[i].start_day = values[i].start;
        segments[i].end_day = values[i].end;
        segments[i].c0 = values[i].c0;
        segments[i].c1 = values[i].c1;
        segments[i].c2 = values[i].c2;
        segments[i].c3 = values[i].c3;
    }
    return segments;
}

}  // namespace

namespace ET_UT {

ET_UT_Poly::~ET_UT_Poly() = default;

bool Init(const char*) {
    users.fetch_add(1, std::memory_order_relaxed);
    return true;
}

void Finish() {
    int count = users.load(std::memory_order_relaxed);
    while (count > 0 &&
           !users.compare_exchange_weak(count, count - 1, std::memory_order_relaxed)) {
    }
}

const ET_UT_Poly* GetSegments() {
    static const Segments segments = make_segments();
    return users.load(std::memory_order_relaxed) > 0 ? segments.data() : nullptr;
}

double Get(int day, double fraction) {
    const double jd = day + fraction;
    if (!std::isfinite(jd)) return std::numeric_limits<double>::quiet_NaN();
    if (jd >= kKeys.front()) return kRows[row_of(jd)].delta_t;
    short year = 0, month = 0, date = 0, hour = 0, minute = 0;
    double day_fraction = 0, second = 0;
    JD(day, fraction, &year, &month, &date, &day_fraction, &hour, &minute, &second);
    // Beyond the calendar (32,768 BC) the month no longer matters.
    const double decimal_year =
        month == 0 ? 2000 + (jd - solsys::kJ2000Day) / solsys::kDaysPerJulianYear
                   : year + (month - 0.5) / 12;
    return before_table(static_cast<float>(decimal_year));
}

void UT2ET(double jd, int& day, double& fraction) {
    const solsys::Instant t = solsys::split(jd);
    day = t.day;
    fraction = t.fraction;
    if (std::fabs(jd) < solsys::kLargestDay)
        fraction += Get(day, fraction) * (1 / solsys::kSecondsPerDay);
}

}  // namespace ET_UT
