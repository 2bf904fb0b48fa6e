// How an object looks at an instant.
#include "core/constants.h"
#include "events/search/sky_at.h"
#include "events/search/span.h"
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
    if (!solsys::search::is_instant(v->day + v->fraction)) return false;

    const double delta_t = ET_UT::Get(v->day, v->fraction);
    const double fraction = v->fraction + delta_t / solsys::kSecondsPerDay;
    model.SetTime(v->day, fraction, true);
    s.take_observer(observer);
    solsys::search::SkyAt sky(model);
    const auto place = sky.at({v->day, fraction}) ? sky.apparent(id) : std::nullopt;
    if (!place) return false;
    v->distance = place->distance;
    v->ra = place->ra;
    v->dec = place->dec;
    const double radius_km = model.GetRadiEq(id);
    if (radius_km > 0) {
        v->semidiameter = solsys::search::semidiameter(radius_km, place->distance);
    } else if (const StarObject* star = model.GetStar(id)) {
        const double size = star->angular_size;
        if (size > 0 && size < STAR_UNKNOWN) v->semidiameter = size / 2;
    }
    if (s.observer.kind == LOCATION_SURFACE) {
        v->horizontal = 1;
        const auto h = sky.horizontal(*place);
        v->azimuth = h.azimuth;
        v->altitude = h.altitude;
    }
    model.GetMagnitude(id, &v->magnitude);
    model.PhaseElongation(id, &v->phase_angle, &v->illuminated, &v->elongation, &v->bright_limb,
                          &v->age);
    v->constellation = static_cast<unsigned char>(model.RADecInConstell(v->ra, v->dec));
    return true;
}
