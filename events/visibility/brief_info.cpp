// A line about an object: its brightness, its place, its day.
#include <cmath>

#include "core/constants.h"
#include "events/visibility/day_step.h"
#include "events/visibility/hour_angle.h"
#include "events/visibility/state.h"

using solsys::visibility::et_from_ut;
using solsys::visibility::Track;
using solsys::visibility::usable;

bool CSWVisibility::GetBrief_OI(int day, double fraction, SSO_ID id, BRIEF_INFO* info) {
    State& s = *state_;
    if (info == nullptr) return false;
    *info = BRIEF_INFO{};
    info->type = id.type;
    info->number = id.number;
    const double start = day + fraction;
    if (!s.model || !usable(start)) return false;
    CSWSolSys& model = *s.model;
    const bool at_site = model.GetObserver().kind == LOCATION_SURFACE;
    if (!at_site) s.place_observer();
    const double height_km =
        at_site ? model.GetObserver().location[0] * solsys::kAuKm : s.height_km();

    Track track(model, id);
    const double start_et = et_from_ut(start);
    if (!track.at(start_et)) return false;
    model.GetMagnitude(id, &info->magnitude);
    info->constellation =
        static_cast<unsigned char>(model.RADecInConstell(track.ra(), track.dec()));

    double cursor = start_et + 0.5;
    VISIBILITY visible;
    if (day_step(track, height_km, cursor, visible)) {
        info->rise = visible.rise;
        info->transit = visible.transit;
        info->set = visible.set;
    }
    info->best_altitude = visible.transit_altitude;
    return true;
}
