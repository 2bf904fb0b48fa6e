// How an object looks at an instant.
#include <cmath>

#include "core/constants.h"
#include "events/visibility/state.h"
#include "solsys/time_scales.h"

bool CSWVisibility::GetCurVisibility(OBSERVER* observer, tagCURVISIBILITY* v) {
    State& s = *state_;
    if (v == nullptr || !s.model) return false;
    CSWSolSys& model = *s.model;
    SSO_ID id(v->type, v->number);
    id.spare2 = v->spare;
    v->flag = 0;
    v->horizontal = 0;
    v->semidiameter = -1;

    const double delta_t = ET_UT::Get(v->day, v->fraction);
    const double fraction = v->fraction + delta_t / solsys::kSecondsPerDay;
    model.SetTime(v->day, fraction, true);
    s.take_observer(observer);
    model.UpdateSys(v->day, fraction);
    double place[3];
    if (!std::isfinite(v->fraction) || !model.GetRADecVis(id, place, 0.0)) return false;
    v->distance = place[0];
    v->ra = place[1];
    v->dec = place[2];
    const double radius_km = model.GetRadiEq(id);
    if (radius_km > 0) v->semidiameter = std::atan(radius_km / (place[0] * solsys::kAuKm));
    if (s.observer.kind == LOCATION_SURFACE) {
        v->horizontal = 1;
        model.FromRAToAzm(false, &v->ra, &v->dec, &v->azimuth, &v->altitude);
    }
    model.GetMagnitude(id, &v->magnitude);
    model.PhaseElongation(id, &v->phase_angle, &v->illuminated, &v->elongation, &v->bright_limb,
                          &v->age);
    v->constellation = static_cast<unsigned char>(model.RADecInConstell(v->ra, v->dec));
    return true;
}
