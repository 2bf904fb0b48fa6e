// Directions between the frames of the instant.
#include "core/fast_trig.h"
#include "core/spherical.h"
#include "solsys/model.h"

using solsys::Mat3;
using solsys::Vec3;

namespace {

// By the cosines of both angles; the sines follow from them.
Vec3 direction(double longitude, double latitude) {
    const solsys::SinCos lon = solsys::fast_sincos(longitude);
    const solsys::SinCos lat = solsys::fast_sincos(latitude);
    return {lat.cos * lon.cos, lat.cos * lon.sin, lat.sin};
}

void angles(Vec3 v, double* longitude, double* latitude) {
    const solsys::Spherical s = solsys::to_spherical(v, norm(v));
    *longitude = s.lon;
    *latitude = s.lat;
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

void CSWSolSys::GetNutationAngles(double* obliquity, double* d_epsilon, double* d_psi) const {
    const solsys::FrameSet& f = model_->current.frames;
    *obliquity = f.obliquity;
    *d_epsilon = f.d_epsilon;
    *d_psi = f.d_psi;
}

bool CSWSolSys::GetMtrxTopo(OBSERVER* observer, double* matrix) const {
    if (observer == nullptr) return false;
    const double longitude = observer->location[1];
    const double latitude = observer->location[2];
    const double sl = solsys::fm_sin(longitude);
    const double cl = solsys::cos_from_sin(longitude, sl);
    const double sb = solsys::fm_sin(latitude);
    const double cb = solsys::cos_from_sin(latitude, sb);
    store(Mat3{{-cl * sb, sl, cl * cb}, {-sl * sb, -cl, sl * cb}, {cb, 0, sb}}, matrix);
    return true;
}

void CSWSolSys::GetLocal2CelestialMtrx(double* matrix) const {
    const solsys::ObserverState& o = model_->current.observer;
    store(o.cur_from_body * o.body_from_horizon, matrix);
}

void CSWSolSys::GetMtrx_Eq2K_GalCur(double* matrix) const {
    store(model_->current.frames.gal_from_j2000, matrix);
}

void CSWSolSys::GetMtrx_EqCur_GalCur(double* matrix) const {
    store(model_->current.frames.gal_from_cur, matrix);
}

void CSWSolSys::VecFromRAToAzm(const double* in, double* out) const {
    const solsys::ObserverState& o = model_->current.observer;
    const Vec3 body = transpose_times(o.cur_from_body, solsys::load(in));
    store(transpose_times(o.body_from_horizon, body), out);
}

void CSWSolSys::FromRAToAzm(bool j2000, const double* ra, const double* dec, double* azm,
                            double* alt) const {
    Vec3 cur = direction(*ra, *dec);
    if (j2000) cur = model_->current.frames.cur_from_j2000 * cur;
    double v[3];
    store(cur, v);
    VecFromRAToAzm(v, v);
    double longitude = 0;  // from north through west
    angles(solsys::load(v), &longitude, alt);
    const double azimuth = solsys::kTwoPi - longitude;
    *azm = azimuth == solsys::kTwoPi ? 0.0 : azimuth;
}

void CSWSolSys::FromAzmToRA(bool j2000, const double* azm, const double* alt, double* ra,
                            double* dec) const {
    const solsys::ObserverState& o = model_->current.observer;
    Vec3 horizon = direction(*azm, *alt);
    horizon.y = -horizon.y;  // azimuth runs through east, the frame's second axis points west
    Vec3 v = o.cur_from_body * (o.body_from_horizon * horizon);
    if (j2000) v = transpose_times(model_->current.frames.cur_from_j2000, v);
    angles(v, ra, dec);
}

void CSWSolSys::FromRAToEclAng(bool j2000, const double* ra, const double* dec, double* lon,
                               double* lat) const {
    const solsys::FrameSet& f = model_->current.frames;
    Vec3 cur = direction(*ra, *dec);
    if (j2000) cur = f.cur_from_j2000 * cur;
    angles(f.ecl_from_tod * cur, lon, lat);
}

void CSWSolSys::FromEclAngToRA(bool j2000, const double* lon, const double* lat, double* ra,
                               double* dec) const {
    const solsys::FrameSet& f = model_->current.frames;
    Vec3 v = transpose_times(f.ecl_from_tod, direction(*lon, *lat));
    if (j2000) v = transpose_times(f.cur_from_j2000, v);
    angles(v, ra, dec);
}

void CSWSolSys::FromRAToPlEq(bool j2000, const double* ra, const double* dec, double* lon,
                             double* lat) const {
    Vec3 v = direction(*ra, *dec);
    if (!j2000) v = transpose_times(model_->current.frames.cur_from_j2000, v);
    angles(model_->current.observer.body_from_j2000 * v, lon, lat);
}

void CSWSolSys::FromPlEqToRA(bool j2000, const double* lon, const double* lat, double* ra,
                             double* dec) const {
    Vec3 v = transpose_times(model_->current.observer.body_from_j2000, direction(*lon, *lat));
    if (!j2000) v = model_->current.frames.cur_from_j2000 * v;
    angles(v, ra, dec);
}

void CSWSolSys::FromRAToOrbAng(bool j2000, const double* ra, const double* dec, double* lon,
                               double* lat) const {
    Vec3 v = direction(*ra, *dec);
    if (!j2000) v = transpose_times(model_->current.frames.cur_from_j2000, v);
    angles(model_->current.observer.orbit_from_j2000 * v, lon, lat);
}

void CSWSolSys::FromOrbAngToRA(bool j2000, const double* lon, const double* lat, double* ra,
                               double* dec) const {
    Vec3 v = transpose_times(model_->current.observer.orbit_from_j2000, direction(*lon, *lat));
    if (!j2000) v = model_->current.frames.cur_from_j2000 * v;
    angles(v, ra, dec);
}

void CSWSolSys::FromRAToGalAng(bool j2000, const double* ra, const double* dec, double* lon,
                               double* lat) const {
    const solsys::FrameSet& f = model_->current.frames;
    angles((j2000 ? f.gal_from_j2000 : f.gal_from_cur) * direction(*ra, *dec), lon, lat);
}

void CSWSolSys::FromGalAngToRA(bool j2000, const double* lon, const double* lat, double* ra,
                               double* dec) const {
    const solsys::FrameSet& f = model_->current.frames;
    angles(transpose_times(j2000 ? f.gal_from_j2000 : f.gal_from_cur, direction(*lon, *lat)),
           ra, dec);
}
