// Body-fixed frames of the model's bodies.
#include "core/answer_or.h"
#include "frames/body_rotation.h"
#include "frames/rotation_registry.h"
#include "solsys/arguments.h"
#include "solsys/body_frames.h"
#include "solsys/model.h"
#include "solsys/toolkit.h"

using solsys::any_null;
using solsys::body_key;
using solsys::Instant;
using solsys::Mat3;

bool CSWSolSys::AddBodyRotationParams(const ObjectKey& key, const BodyRotationParams* params) {
    if (params == nullptr) return false;
    return solsys::answer_or(false, [&] {
        solsys::rotation_registry::add(key, *params);
        return true;
    });
}

int CSWSolSys::GetBodyRotationsCount() { return solsys::rotation_registry::count(); }

const BodyRotationParams* CSWSolSys::GetBodyRotation(int index) {
    return solsys::rotation_registry::get(index);
}

const BodyRotationParams* CSWSolSys::GetBodyRotation(const ObjectKey& key) {
    return solsys::rotation_registry::get(key);
}

bool CSWSolSys::GetMtrxPl_EqFromEncodedAngles(double encodedRA, double sinDec, double w,
                                              double* out, bool toDate) const {
    if (out == nullptr) return false;
    const Mat3 m = solsys::body_matrix_from_encoded(encodedRA, sinDec, w);
    store(toDate ? model_->current.frames.cur_from_j2000 * m : m, out);
    return true;
}

bool CSWSolSys::GetMtrxPl_EqFromAngles(double alpha, double dec, double w, double* out,
                                       bool toDate) const {
    if (out == nullptr) return false;
    const Mat3 m = solsys::body_matrix_from_angles(alpha, dec, w);
    store(toDate ? model_->current.frames.cur_from_j2000 * m : m, out);
    return true;
}

bool CSWSolSys::GetMtrxPl_Eq(const SSO_ID& body, double* out, bool toDate) {
    if (out == nullptr) return false;
    const solsys::ModelInstant& current = model_->current;
    const Mat3& cur_from_j2000 = current.frames.cur_from_j2000;
    Mat3 m{};
    const bool known =
        toDate ? surface_frame_of_date(model_->bodies, body_key(body), current.now,
                                       cur_from_j2000, m)
               : surface_frame(model_->bodies, body_key(body), current.now, cur_from_j2000, m);
    if (known) store(m, out);
    return known;
}

bool CSWSolSys::GetMtrxEq2K_PlEq(const SSO_ID& body, int day, double fraction, double* out,
                                 double* outTransposed) {
    if (any_null({out, outTransposed})) return false;
    Mat3 body_from_j2000{};
    if (body_key(body) == solsys::kEarthKey) {
        // True equator of date, which does not turn.
        body_from_j2000 = model_->current.frames.cur_from_j2000;
    } else if (!body_frame(model_->bodies, body_key(body), {day, fraction}, body_from_j2000)) {
        return false;
    }
    store(body_from_j2000, out);
    store(transpose(body_from_j2000), outTransposed);
    return true;
}

bool CSWSolSys::SetMtrxEq2K_PlEq(const SSO_ID& body) {
    solsys::ModelInstant& current = model_->current;
    orient_body_frame(model_->bodies, body_key(body), current.now,
                      current.frames.cur_from_j2000, current.observer.frames);
    return true;
}

bool CSWSolSys::PlgToEq(const SSO_ID& body, const double* planetographic, double* out) {
    if (any_null({planetographic, out})) return false;
    double flattening = 0;
    const double radius = GetRadiEq(body, &flattening);
    double m[9];
    if (!(radius > 0) || !GetMtrxPl_Eq(body, m, true)) return false;
    double fixed[3];
    Plg2Plc(radius, flattening, planetographic, fixed);
    MV3prod(m, fixed, out);
    return true;
}

bool CSWSolSys::EqToPlg(const SSO_ID& body, const double* vector, double* out) {
    if (any_null({vector, out})) return false;
    double flattening = 0;
    const double radius = GetRadiEq(body, &flattening);
    double m[9];
    if (!(radius > 0) || !GetMtrxPl_Eq(body, m, true)) return false;
    double fixed[3];
    V3Mprod(vector, m, fixed);
    Plc2Plg(radius, flattening, fixed, out);
    return true;
}
