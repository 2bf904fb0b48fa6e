// The records that tell an event.
#include <cmath>

#include "core/angles.h"
#include "events/diary/quantities.h"
#include "events/diary/search.h"

using solsys::Vec3;
using solsys::diary::Apparent;
using solsys::diary::Diary;
using solsys::diary::GeocentricSky;
using solsys::diary::Target;

namespace {

// The model's frames and observer have to belong to its instant.
double magnitude_of(CSWSolSys& model, const Target& target) {
    const StarObject* star = target.star;
    if (star == nullptr) star = model.GetStar(target.id);
    if (star != nullptr) {
        return star->magnitude < 999998 ? static_cast<double>(star->magnitude) : SKYEVENT_NONE;
    }
    float magnitude = 0;
    const bool known = model.GetMagnitude(target.id, &magnitude);
    return known && std::isfinite(magnitude) ? static_cast<double>(magnitude) : SKYEVENT_NONE;
}

}  // namespace

OBSERVER Diary::site_in_au() const {
    OBSERVER in_au = site;
    if (in_au.kind == LOCATION_SURFACE) in_au.location[0] /= solsys::kAuKm;
    return in_au;
}

void Diary::horizontal(const Target& target, double jd_tt, double& azimuth, double& altitude) {
    if (!local || !has_site) return;
    const OBSERVER observer = site_in_au();
    const solsys::Instant t = solsys::search::split(jd_tt);
    model->SetObserver(&observer);
    model->UpdateSys(t.day, t.fraction);
    double place[3];
    double vector[3];
    const bool known = target.star != nullptr
                           ? model->GetRADecVisStar(target.star, place, vector, true)
                           : model->GetRADecVis(target.id, place, 0);
    if (known) model->FromRAToAzm(false, &place[1], &place[2], &azimuth, &altitude);
    model->SetObserver(&geocentre);
    model->UpdateSys(t.day, t.fraction);
}

SKYEVENT_SUN Diary::sun_detail(GeocentricSky& sky, double jd_tt) {
    sky.at(jd_tt);
    const Vec3 sun = sky.ecliptic() * sky.sun().direction;
    SKYEVENT_SUN detail;
    detail.longitude = solsys::longitude_of(sun.x, sun.y);
    detail.distance = norm(sky.earth().r);
    horizontal({solsys::diary::kSun}, jd_tt, detail.azimuth, detail.altitude);
    return detail;
}

SKYEVENT_BODY Diary::body_detail(GeocentricSky& sky, double jd_tt, const Target& first,
                                 const Target* second) {
    const solsys::Instant t = solsys::search::split(jd_tt);
    model->UpdateSys(t.day, t.fraction);
    sky.at(jd_tt);
    SKYEVENT_BODY detail;
    detail.type1 = first.id.type, detail.number1 = first.id.number;
    const Apparent body = sky.apparent(first);
    const Apparent sun = sky.sun();
    detail.distance = body.distance;
    const double east =
        solsys::diary::difference(sky.ecliptic(), body.direction, sun.direction).sine < 0 ? -1.0
                                                                                          : 1.0;
    detail.elongation = east * solsys::separation(body.direction, sun.direction);
    if (second != nullptr) {
        detail.type2 = second->id.type, detail.number2 = second->id.number;
        const Vec3 other = sky.apparent(*second).direction;
        detail.separation = solsys::separation(body.direction, other);
        detail.position_angle =
            solsys::position_angle(sky.equator() * other, sky.equator() * body.direction);
        detail.magnitude2 = magnitude_of(*model, *second);
    }
    detail.magnitude = magnitude_of(*model, first);
    const Vec3 of_date = sky.equator() * body.direction;
    detail.constellation = static_cast<unsigned char>(model->RADecInConstell(
        solsys::longitude_of(of_date.x, of_date.y), solsys::latitude_of(of_date)));
    horizontal(first, jd_tt, detail.azimuth, detail.altitude);
    return detail;
}
