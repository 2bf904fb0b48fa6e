#include "frames/tdb.h"

#include <cmath>
#include <cstddef>
#include <iterator>

namespace solsys {
namespace {

struct Row {
    int power;
    double amplitude_us, frequency, phase, weight_us;  // per Julian millennium
};
constexpr Row kRows[] = {
#include "tdb_tt_terms.inc"
};
constexpr std::size_t kTerms = 7;
static_assert(std::size(kRows) >= kTerms && kRows[0].power == 0 && kRows[1].power == 1);

}  // namespace

double tdb_minus_tt(Instant tt) {
    const double tau = centuries_since_j2000(tt) / 10;
    double sum = 0;
    for (std::size_t i = kTerms; i-- > 0;) {
        const Row& r = kRows[i];
        const double term = r.amplitude_us * std::sin(r.frequency * tau + r.phase);
        sum += r.power == 0 ? term : term * std::pow(tau, r.power);
    }
    return sum * 1e-6;
}

Instant tdb_from_tt(Instant tt) {
    return {tt.day, tt.fraction + tdb_minus_tt(tt) / kSecondsPerDay};
}

}  // namespace solsys
