// Locations and directions between frames named by a code.
#include "core/constants.h"
#include "core/spherical.h"
#include "solsys/arguments.h"
#include "solsys/model.h"
#include "solsys/physical.h"
#include "solsys/toolkit.h"

using solsys::any_null;
using solsys::Mat3;
using solsys::Vec3;

namespace {

// Codes of TransferViewVec.
enum ViewFrame : char {
    kViewEquator = 0,
    kViewHorizon = 1,
    kViewBody = 2,
    kViewOrbit = 3,
    kViewEcliptic = 4,
    kViewGalactic = 5,
    kViewGalacticLast = 7
};

// The frame of a location code from the J2000 equator.
Mat3 location_from_j2000(char code, const solsys::FrameSet& f, const solsys::ObserverState& o,
                         const Mat3& ecl2k_from_j2000) {
    switch (code) {
        case LOCATION_BODY:
            return o.frames.orbit_from_j2000;
        case LOCATION_BODY_FIXED:
            return o.body() == solsys::kSunKey ? f.ecl_from_j2000 : o.frames.body_from_j2000;
        case LOCATION_SURFACE:
            return transpose(o.frames.cur_from_body) * f.cur_from_j2000;
        case LOCATION_HELIOCENTRIC:
            return f.ecl_from_j2000;
        case LOCATION_GALACTIC:
        case LOCATION_GALACTIC_SUN:
        case LOCATION_GALACTOCENTRIC:
            return solsys::kGalFromJ2000;
        case LOCATION_ECLIPTIC_2K:
            return ecl2k_from_j2000;
        case LOCATION_EQUATOR_CUR:
            return f.cur_from_j2000;
        default:
            return solsys::kIdentity;
    }
}

// The frame of a view code from the equator of date.
Mat3 view_from_cur(char code, const solsys::FrameSet& f, const solsys::ObserverState& o) {
    switch (code) {
        case kViewEquator:
            return solsys::kIdentity;
        case kViewHorizon:
            return transpose(o.frames.cur_from_body * o.frames.body_from_horizon);
        case kViewBody:
            // The Earth's body frame is the equator of date itself.
            return o.on_earth() ? solsys::kIdentity
                                : o.frames.body_from_j2000 * transpose(f.cur_from_j2000);
        case kViewOrbit:
            return o.frames.orbit_from_j2000 * transpose(f.cur_from_j2000);
        case kViewEcliptic:
            return f.ecl_from_tod;
        default:
            return code >= kViewGalactic && code <= kViewGalacticLast ? f.gal_from_cur()
                                                                      : solsys::kIdentity;
    }
}

}  // namespace

bool CSWSolSys::TransferLocationVec(const double* in, char from, double* out, char to) const {
    if (any_null({in, out})) return false;
    const Model& m = *model_;
    const solsys::FrameSet& f = m.current.frames;
    const solsys::ObserverState& o = m.current.observer;
    const Vec3 j2000 = transpose_times(location_from_j2000(from, f, o, ecliptic_of(m.bodies)),
                                       solsys::load(in));
    store(location_from_j2000(to, f, o, ecliptic_of(m.bodies)) * j2000, out);
    return true;
}

bool CSWSolSys::TransferLocationCoor(SphCoor* location, char to) {
    if (location == nullptr) return false;
    const solsys::BodyKey body = model_->current.observer.body();
    const SS_Object* object = model_->bodies.find(body);
    const double flattening = object != nullptr ? object->Flattening() : 0.0;
    const double known = equatorial_radius_km(model_->bodies, body);
    const double radius = (known > 0 ? known : 1.0) * solsys::kAuPerKm;

    double v[3];
    if (location->frame == LOCATION_SURFACE) {
        Plg2Plc(radius, flattening, location->location, v);
    } else {
        const double* l = location->location;
        store(solsys::to_cartesian({l[0], l[1], l[2]}), v);
    }
    if (location->frame == LOCATION_GALACTOCENTRIC) v[0] -= solsys::kGalacticCentreOfTransfer;

    TransferLocationVec(v, location->frame, v, to);

    if (to == LOCATION_GALACTOCENTRIC) v[0] += solsys::kGalacticCentreOfTransfer;
    if (to == LOCATION_SURFACE) {
        Plc2Plg(radius, flattening, v, location->location);
    } else {
        const solsys::Spherical s =
            solsys::to_spherical(solsys::load(v), norm(solsys::load(v)));
        location->location[0] = s.r;
        location->location[1] = s.lon;
        location->location[2] = s.lat;
    }
    location->frame = to;
    return true;
}

bool CSWSolSys::TransferViewVec(const double* in, char from, double* out, char to) const {
    if (any_null({in, out})) return false;
    const Model& m = *model_;
    const solsys::FrameSet& f = m.current.frames;
    const solsys::ObserverState& o = m.current.observer;
    const Vec3 cur = transpose_times(view_from_cur(from, f, o), solsys::load(in));
    store(view_from_cur(to, f, o) * cur, out);
    return true;
}
