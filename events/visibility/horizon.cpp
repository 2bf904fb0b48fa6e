// The horizon and the zenith as points of the sky, and the ecliptic of an instant.
#include <algorithm>

#include "core/answer_or.h"
#include "core/constants.h"
#include "events/search/span.h"
#include "events/visibility/state.h"

using solsys::search::is_instant;
using solsys::search::split;
using solsys::search::tt_from_ut;

namespace {

constexpr double kNoHorizon = 1000.0;

}  // namespace

const std::vector<SpherePoint>* CSWVisibility::GetHorizon(int day, double fraction,
                                                          OBSERVER* observer, short count) {
    State& s = *state_;
    s.horizon.clear();
    if (!s.model || !is_instant(day + fraction)) return &s.horizon;
    s.model->SetTime(day, fraction, true);
    s.take_observer(observer);
    const bool room = count <= 0 || solsys::answer_or(false, [&] {
                          return s.horizon.reserve(static_cast<std::size_t>(count)), true;
                      });
    for (int i = 0; room && i < count; ++i) {
        const double azimuth = i * 360.0 / count * solsys::kDegree;
        const double altitude = 0;
        SpherePoint point;
        s.model->FromAzmToRA(false, &azimuth, &altitude, &point.ra, &point.dec);
        s.horizon.push_back(point);
    }
    std::stable_sort(s.horizon.begin(), s.horizon.end(),
                     [](const SpherePoint& a, const SpherePoint& b) { return a.ra > b.ra; });
    return &s.horizon;
}

int CSWVisibility::GetZenith(int day, double fraction, OBSERVER* observer, double* morning,
                             double* evening) {
    State& s = *state_;
    if (morning == nullptr || evening == nullptr) return 0;
    std::fill(morning, morning + 4, kNoHorizon);
    std::fill(evening, evening + 4, kNoHorizon);
    if (!s.model) return 0;

    const auto zenith = [&s](double jd_tt, double* out) {
        const double azimuth = 0, altitude = solsys::kHalfPi;
        const solsys::Instant t = split(jd_tt);
        s.model->UpdateSys(t.day, t.fraction);
        s.model->FromAzmToRA(false, &azimuth, &altitude, out, out + 1);
    };
    const double start = day + fraction;
    InitSearch(start, start + 1, SSO_ID(SSO_PLNT, 10), observer);
    VISIBILITY sun;
    if (!SearchNext(&sun)) {
        if (!is_instant(start)) return 0;
        zenith(tt_from_ut(start), morning);
        std::copy(morning, morning + 2, evening);
        return 0;
    }
    int crossed = 0;
    const auto show = [&](double time_ut, double* out) {
        if (time_ut == 0) return;
        zenith(tt_from_ut(time_ut), out);
        if (time_ut != sun.transit) ++crossed;
    };
    show(sun.dawn, morning);
    show(sun.sunrise, morning + 2);
    show(sun.dusk, evening);
    show(sun.sunset, evening + 2);
    return crossed;
}

bool CSWVisibility::GetMtrxEq_Ec(int day, double fraction, double* matrix) {
    if (matrix == nullptr || !state_->model || !is_instant(day + fraction)) return false;
    state_->model->SetTime(day, fraction, true);
    std::copy_n(state_->model->GetMtrxEqCur_EclCur(), 9, matrix);
    return true;
}
