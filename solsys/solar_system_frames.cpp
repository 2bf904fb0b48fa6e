// Directions between the frames of the instant.
#include "core/angles.h"
#include "core/fast_trig.h"
#include "core/spherical.h"
#include "solsys/arguments.h"
#include "solsys/body_frames.h"
#include "solsys/model.h"

using solsys::any_null;
using solsys::Vec3;

namespace {

// Classic: by the cosines of both angles, from which the sines follow, with half the digits
// near the axes.
Vec3 direction(const solsys::Bodies& bodies, double longitude, double latitude) {
    if (bodies.modern != nullptr) return solsys::direction(longitude, latitude);
    const solsys::SinCos lon = solsys::fast_sincos(longitude);
    const solsys::SinCos lat = solsys::fast_sincos(latitude);
    return {lat.cos * lon.cos, lat.cos * lon.sin, lat.sin};
}

void angles(Vec3 v, double* longitude, double* latitude) {
    const solsys::Spherical s = solsys::to_spherical(v, norm(v));
    *longitude = s.lon;
    *latitude = s.lat;
}

Vec3 to_horizon(const solsys::ObserverFrames& o, Vec3 cur) {
    return transpose_times(o.body_from_horizon, transpose_times(o.cur_from_body, cur));
}

}  // namespace

const double* CSWSolSys::GetMtrxEq2K_EqCur() const {
    return model_->visible.cur_from_j2000.data();
}
const double* CSWSolSys::GetMtrxEq2K_Ecl2K() const { return model_->visible.ecl2k.data(); }
const double* CSWSolSys::GetMtrxEq2K_EclCur() const {
    return model_->visible.ecl_from_j2000.data();
}
const double* CSWSolSys::GetMtrxEqCur_EclCur() const {
    return model_->visible.ecl_from_cur.data();
}
const double* CSWSolSys::GetMtrxPrecession() const { return model_->visible.precession.data(); }
const double* CSWSolSys::GetMtrxNutation() const { return model_->visible.nutation.data(); }
const double* CSWSolSys::GetMtrxTopoCur() const { return model_->visible.horizon.data(); }

bool CSWSolSys::GetNutationAngles(double* obliquity, double* d_epsilon, double* d_psi) const {
    if (any_null({obliquity, d_epsilon, d_psi})) return false;
    const solsys::FrameSet& f = model_->current.frames;
    *obliquity = f.obliquity;
    *d_epsilon = f.d_epsilon;
    *d_psi = f.d_psi;
    return true;
}

bool CSWSolSys::GetMtrxTopo(OBSERVER* observer, double* matrix) const {
    if (any_null({observer, matrix})) return false;
    store(solsys::horizon_frame(observer->location[1], observer->location[2]), matrix);
    return true;
}

bool CSWSolSys::GetLocal2CelestialMtrx(double* matrix) const {
    if (matrix == nullptr) return false;
    const solsys::ObserverFrames& o = model_->current.observer.frames;
    store(o.cur_from_body * o.body_from_horizon, matrix);
    return true;
}

bool CSWSolSys::GetMtrx_Eq2K_GalCur(double* matrix) const {
    if (matrix == nullptr) return false;
    store(solsys::kGalFromJ2000, matrix);
    return true;
}

bool CSWSolSys::GetMtrx_EqCur_GalCur(double* matrix) const {
    if (matrix == nullptr) return false;
    store(model_->current.frames.gal_from_cur(), matrix);
    return true;
}

bool CSWSolSys::VecFromRAToAzm(const double* in, double* out) const {
    if (any_null({in, out})) return false;
    store(to_horizon(model_->current.observer.frames, solsys::load(in)), out);
    return true;
}

bool CSWSolSys::FromRAToAzm(bool j2000, const double* ra, const double* dec, double* azm,
                            double* alt) const {
    if (any_null({ra, dec, azm, alt})) return false;
    Vec3 cur = direction(model_->bodies, *ra, *dec);
    if (j2000) cur = model_->current.frames.cur_from_j2000 * cur;
    double longitude = 0;  // from north through west
    angles(to_horizon(model_->current.observer.frames, cur), &longitude, alt);
    const double azimuth = solsys::kTwoPi - longitude;
    *azm = azimuth == solsys::kTwoPi ? 0.0 : azimuth;
    return true;
}

bool CSWSolSys::FromAzmToRA(bool j2000, const double* azm, const double* alt, double* ra,
                            double* dec) const {
    if (any_null({azm, alt, ra, dec})) return false;
    const solsys::ObserverFrames& o = model_->current.observer.frames;
    Vec3 horizon = direction(model_->bodies, *azm, *alt);
    horizon.y = -horizon.y;  // azimuth runs through east, the frame's second axis points west
    Vec3 v = o.cur_from_body * (o.body_from_horizon * horizon);
    if (j2000) v = transpose_times(model_->current.frames.cur_from_j2000, v);
    angles(v, ra, dec);
    return true;
}

bool CSWSolSys::FromRAToEclAng(bool j2000, const double* ra, const double* dec, double* lon,
                               double* lat) const {
    if (any_null({ra, dec, lon, lat})) return false;
    const solsys::FrameSet& f = model_->current.frames;
    Vec3 cur = direction(model_->bodies, *ra, *dec);
    if (j2000) cur = f.cur_from_j2000 * cur;
    angles(f.ecl_from_tod * cur, lon, lat);
    return true;
}

bool CSWSolSys::FromEclAngToRA(bool j2000, const double* lon, const double* lat, double* ra,
                               double* dec) const {
    if (any_null({lon, lat, ra, dec})) return false;
    const solsys::FrameSet& f = model_->current.frames;
    Vec3 v = transpose_times(f.ecl_from_tod, direction(model_->bodies, *lon, *lat));
    if (j2000) v = transpose_times(f.cur_from_j2000, v);
    angles(v, ra, dec);
    return true;
}

bool CSWSolSys::FromRAToPlEq(bool j2000, const double* ra, const double* dec, double* lon,
                             double* lat) const {
    if (any_null({ra, dec, lon, lat})) return false;
    Vec3 v = direction(model_->bodies, *ra, *dec);
    if (!j2000) v = transpose_times(model_->current.frames.cur_from_j2000, v);
    angles(model_->current.observer.frames.body_from_j2000 * v, lon, lat);
    return true;
}

bool CSWSolSys::FromPlEqToRA(bool j2000, const double* lon, const double* lat, double* ra,
                             double* dec) const {
    if (any_null({lon, lat, ra, dec})) return false;
    Vec3 v = transpose_times(model_->current.observer.frames.body_from_j2000,
                             direction(model_->bodies, *lon, *lat));
    if (!j2000) v = model_->current.frames.cur_from_j2000 * v;
    angles(v, ra, dec);
    return true;
}

bool CSWSolSys::FromRAToOrbAng(bool j2000, const double* ra, const double* dec, double* lon,
                               double* lat) const {
    if (any_null({ra, dec, lon, lat})) return false;
    Vec3 v = direction(model_->bodies, *ra, *dec);
    if (!j2000) v = transpose_times(model_->current.frames.cur_from_j2000, v);
    angles(model_->current.observer.frames.orbit_from_j2000 * v, lon, lat);
    return true;
}

bool CSWSolSys::FromOrbAngToRA(bool j2000, const double* lon, const double* lat, double* ra,
                               double* dec) const {
    if (any_null({lon, lat, ra, dec})) return false;
    Vec3 v = transpose_times(model_->current.observer.frames.orbit_from_j2000,
                             direction(model_->bodies, *lon, *lat));
    if (!j2000) v = model_->current.frames.cur_from_j2000 * v;
    angles(v, ra, dec);
    return true;
}

bool CSWSolSys::FromRAToGalAng(bool j2000, const double* ra, const double* dec, double* lon,
                               double* lat) const {
    if (any_null({ra, dec, lon, lat})) return false;
    const solsys::FrameSet& f = model_->current.frames;
    angles((j2000 ? solsys::kGalFromJ2000 : f.gal_from_cur()) *
               direction(model_->bodies, *ra, *dec),
           lon, lat);
    return true;
}

bool CSWSolSys::FromGalAngToRA(bool j2000, const double* lon, const double* lat, double* ra,
                               double* dec) const {
    if (any_null({lon, lat, ra, dec})) return false;
    const solsys::FrameSet& f = model_->current.frames;
    angles(transpose_times(j2000 ? solsys::kGalFromJ2000 : f.gal_from_cur(),
                           direction(model_->bodies, *lon, *lat)),
           ra, dec);
    return true;
}
