// A line about an object: its brightness, its place, its day.
#include "core/constants.h"
#include "events/search/span.h"
#include "events/visibility/day_step.h"
#include "events/visibility/state.h"

bool CSWVisibility::GetBrief_OI(int day, double fraction, SSO_ID id, BRIEF_INFO* info) {
    using namespace solsys::visibility;
    State& s = *state_;
    if (info == nullptr) return false;
    *info = BRIEF_INFO{};
    info->type = id.type;
    info->number = id.number;
    const double start = day + fraction;
    if (!s.model || !solsys::search::is_instant(start)) return false;
    CSWSolSys& model = *s.model;
    const bool at_site = model.GetObserver().kind == LOCATION_SURFACE;
    if (!at_site) s.place_observer();
    const double height_km =
        at_site ? model.GetObserver().location[0] * solsys::kAuKm : s.height_km();

    SkyAt sky(model);
    const double start_tt = solsys::search::tt_from_ut(start);
    const auto place = sky.apparent(id, start_tt);
    if (!place) return false;
    model.GetMagnitude(id, &info->magnitude);
    info->constellation =
        static_cast<unsigned char>(model.RADecInConstell(place->ra, place->dec));

    double cursor = start_tt + 0.5;
    VISIBILITY visible;
    if (day_step(sky, Target(model, id), height_km, cursor, visible) == Day::kUp) {
        info->rise = visible.rise;
        info->transit = visible.transit;
        info->set = visible.set;
    }
    info->best_altitude = visible.transit_altitude;
    return true;
}
