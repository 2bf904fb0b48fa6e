// Observers and a model on the DE file, for the tests of the searches.
#pragma once

#include <memory>
#include <stdexcept>

#include "core/constants.h"
#include "solsys/de_ephemeris.h"
#include "solsys/solar_system.h"
#include "solsys/time_scales.h"
#include "solsys/visibility.h"

namespace support {

inline std::unique_ptr<CSWSolSys> de405_model() {
    DE_Ephemeris::clear();
    auto model = std::make_unique<CSWSolSys>();
    model->InitSys(SOLSYS_DE405);
    if (!model->HasEphemeris()) throw std::runtime_error("no DE405 file");
    return model;
}

// A place on the Earth as CSWVisibility takes it: degrees, and the height in km.
inline OBSERVER site(double latitude_deg, double longitude_deg, double height_km = 0) {
    OBSERVER o;
    o.kind = LOCATION_SURFACE;
    o.body_type = SSO_PLNT;
    o.body_number = 3;
    o.location[0] = height_km;
    o.location[1] = longitude_deg * solsys::kDegree;
    o.location[2] = latitude_deg * solsys::kDegree;
    return o;
}

inline OBSERVER for_model(OBSERVER o) {
    o.location[0] /= solsys::kAuKm;
    return o;
}

// Apparent, seen directly from the model by no code of a search: at an instant of universal
// time, or (`tt`) of dynamical time.
struct View {
    double azimuth = 0, altitude = 0, distance = 0;
};
inline View look(CSWSolSys& model, const OBSERVER& site, const SSO_ID& id, double jd,
                 bool tt = false) {
    int day = static_cast<int>(jd);
    double fraction = jd - day;
    if (!tt) ET_UT::UT2ET(jd, day, fraction);
    const OBSERVER in_au = for_model(site);
    model.SetObserver(&in_au);
    model.UpdateSys(day, fraction);
    double place[3];
    View view;
    if (!model.GetRADecVis(id, place, 0.0)) throw std::runtime_error("no place");
    model.FromRAToAzm(false, &place[1], &place[2], &view.azimuth, &view.altitude);
    view.distance = place[0];
    return view;
}

constexpr std::int32_t kCeres = 1;
constexpr std::int32_t kSirius = 32349, kVega = 91262;

// A minor planet and two stars, J2000: osculating elements of (1) Ceres of about the year 2006
// (any orbit like it serves), catalogue places of Sirius and Vega.
inline void add_objects(CSWSolSys& model) {
    AsteroidRecord ceres;
    ceres.elements.q = 2.7655;
    ceres.elements.e = 0.0800;
    ceres.elements.i = 10.587 * solsys::kDegree;
    ceres.elements.node = 80.41 * solsys::kDegree;
    ceres.elements.peri = 73.39 * solsys::kDegree;
    ceres.elements.n = 0.2143 * solsys::kDegree;
    ceres.elements.M = 6.2 * solsys::kDegree;
    ceres.elements.epochDay = 2453500;
    ceres.H = 3.34F;
    ceres.G = 0.12F;
    model.AddAsteroid(kCeres, ceres);
    StarObject star;
    star.ra = 101.2872 * solsys::kDegree, star.dec = -16.7161 * solsys::kDegree;
    star.magnitude = -1.46F;
    model.AddStar(SSO_ID(SSO_STAR, kSirius), star);
    star.ra = 279.2347 * solsys::kDegree, star.dec = 38.7837 * solsys::kDegree;
    star.magnitude = 0.03F;
    model.AddStar(SSO_ID(SSO_STAR, kVega), star);
}

}  // namespace support
