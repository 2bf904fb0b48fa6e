// Body-fixed frames of the model's bodies.
#include <cmath>

#include "frames/body_rotation.h"
#include "frames/rotation_registry.h"
#include "solsys/earth_orientation.h"
#include "solsys/model.h"
#include "solsys/toolkit.h"

using solsys::Instant;
using solsys::Mat3;

namespace {

constexpr int kEarth = 3;
// The number under which the registry holds the rotation of all bodies of a type.
constexpr std::int32_t kWholeType = -1;

bool is_earth(const SSO_ID& body) { return body.type == SSO_PLNT && body.number == kEarth; }

}  // namespace

namespace solsys {

const BodyRotationParams* registered_rotation(const SSO_ID& body) {
    const BodyRotationParams* own = rotation_registry::get(ObjectKey{body.type, body.number});
    return own != nullptr ? own : rotation_registry::get(ObjectKey{body.type, kWholeType});
}

Mat3 j2000_from_registered(const BodyRotationParams& rotation, Instant t) {
    const double w = double{rotation.w0} + double{rotation.rate} * days_since_j2000(t);
    // The fast sine behind this reduces whole turns in one step.
    return body_matrix_from_encoded(rotation.e, rotation.sin_dec, std::fmod(w, kTwoPi));
}

namespace {

// J2000 equator from the body-fixed frame by the body's rotation elements or, failing these,
// by the registry. False, and nothing written, when the body has neither.
bool j2000_from_body(SS_Object* object, const SSO_ID& body, Instant t, Mat3& out) {
    double ra = 0, dec = 0, w = 0;
    if (object != nullptr && object->GetRotationElements(t.day, t.fraction, &ra, &dec, &w)) {
        out = body_matrix_from_pole(ra, dec, w);
        return true;
    }
    const BodyRotationParams* rotation = registered_rotation(body);
    if (rotation == nullptr) return false;
    out = j2000_from_registered(*rotation, t);
    return true;
}

}  // namespace
}  // namespace solsys

void CSWSolSys::AddBodyRotationParams(const ObjectKey& key, const BodyRotationParams* params) {
    if (params != nullptr) solsys::rotation_registry::add(key, *params);
}

int CSWSolSys::GetBodyRotationsCount() { return solsys::rotation_registry::count(); }

const BodyRotationParams* CSWSolSys::GetBodyRotation(int index) {
    return solsys::rotation_registry::get(index);
}

const BodyRotationParams* CSWSolSys::GetBodyRotation(const ObjectKey& key) {
    return solsys::rotation_registry::get(key);
}

void CSWSolSys::GetMtrxPl_EqFromEncodedAngles(double encodedRA, double sinDec, double w,
                                              double* out, bool toDate) const {
    const Mat3 m = solsys::body_matrix_from_encoded(encodedRA, sinDec, w);
    store(toDate ? model_->current.frames.cur_from_j2000 * m : m, out);
}

void CSWSolSys::GetMtrxPl_EqFromAngles(double alpha, double dec, double w, double* out,
                                       bool toDate) const {
    const Mat3 m = solsys::body_matrix_from_angles(alpha, dec, w);
    store(toDate ? model_->current.frames.cur_from_j2000 * m : m, out);
}

bool CSWSolSys::GetMtrxPl_Eq(const SSO_ID& body, double* out, bool toDate) {
    Model& m = *model_;
    const Instant now = m.current.now;
    const Mat3& cur_from_j2000 = m.current.frames.cur_from_j2000;

    if (is_earth(body)) {
        const double theta = SiderialTime(true, now.day, now.fraction);
        const Mat3 cur_from_body = solsys::rotate_z(-theta);
        store(toDate ? cur_from_body : transpose(cur_from_j2000) * cur_from_body, out);
        return true;
    }

    // The elements of a body hold for the instants for which it has a place.
    SS_Object* object = m.find(body);
    double place[3];
    if (object != nullptr && !GetHelVec2K(body, 0, place)) object = nullptr;

    Mat3 j2000_from_body{};
    if (!solsys::j2000_from_body(object, body, now, j2000_from_body)) return false;
    store(toDate ? cur_from_j2000 * j2000_from_body : j2000_from_body, out);
    return true;
}

bool CSWSolSys::GetMtrxEq2K_PlEq(const SSO_ID& body, int day, double fraction, double* out,
                                 double* outTransposed) {
    Model& m = *model_;
    Mat3 body_from_j2000{};
    if (is_earth(body)) {
        // True equator of date, which does not turn.
        body_from_j2000 = m.current.frames.cur_from_j2000;
    } else if (body.type == SSO_PLNT && body.number == 11) {
        // The frame of the ecliptic stands under this number.
        body_from_j2000 = m.ecl2k_from_j2000;
    } else {
        Mat3 j2000_from_body{};
        if (!solsys::j2000_from_body(m.find(body), body, {day, fraction}, j2000_from_body))
            return false;
        body_from_j2000 = transpose(j2000_from_body);
    }
    store(body_from_j2000, out);
    store(transpose(body_from_j2000), outTransposed);
    return true;
}

bool CSWSolSys::SetMtrxEq2K_PlEq(const SSO_ID& body) {
    solsys::ObserverState& o = model_->current.observer;
    const Instant now = model_->current.now;
    double forth[9];
    double back[9];
    const bool known = GetMtrxEq2K_PlEq(body, now.day, now.fraction, forth, back);
    o.body_from_j2000 = known ? solsys::load_matrix(forth) : solsys::kIdentity;
    o.j2000_from_body = transpose(o.body_from_j2000);
    return true;
}

bool CSWSolSys::PlgToEq(const SSO_ID& body, const double* planetographic, double* out) {
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
    double flattening = 0;
    const double radius = GetRadiEq(body, &flattening);
    double m[9];
    if (!(radius > 0) || !GetMtrxPl_Eq(body, m, true)) return false;
    double fixed[3];
    V3Mprod(vector, m, fixed);
    Plc2Plg(radius, flattening, fixed, out);
    return true;
}
