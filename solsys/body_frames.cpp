#include "solsys/body_frames.h"

#include <cmath>

#include "core/fast_trig.h"
#include "frames/body_rotation.h"
#include "frames/rotation_registry.h"
#include "solsys/earth_orientation.h"
#include "solsys/reduction.h"
#include "solsys/states.h"

namespace solsys {
namespace {

// The frame of the ecliptic stands under this number.
constexpr BodyKey kEclipticKey{SSO_PLNT, 11};
// The number under which the registry holds the rotation of all bodies of a type.
constexpr std::int32_t kWholeType = -1;

// Equator of J2000 from the body-fixed frame by a registered rotation.
Mat3 j2000_from_registered(const BodyRotationParams& rotation, Instant t) {
    const double w = double{rotation.w0} + double{rotation.rate} * days_since_j2000(t);
    // The fast sine behind this reduces whole turns in one step.
    return body_matrix_from_encoded(rotation.e, rotation.sin_dec, std::fmod(w, kTwoPi));
}

bool j2000_from_body(SS_Object* object, BodyKey body, Instant t, Mat3& out) {
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

Mat3 earth_of_date(const Bodies& bodies, Instant t) {
    return bodies.modern != nullptr ? bodies.modern->cur_from_earth(t)
                                    : rotate_z(-SiderialTime(true, t.day, t.fraction));
}

// Of a body other than the Earth.
bool turning_frame(const Bodies& bodies, BodyKey body, Instant t, Mat3& out) {
    SS_Object* object = bodies.find(body);
    State place{};
    if (object != nullptr &&
        !heliocentric(bodies, find_source(bodies, body), t, false, place)) {
        object = nullptr;
    }
    return j2000_from_body(object, body, t, out);
}

}  // namespace

const BodyRotationParams* registered_rotation(BodyKey body) {
    const BodyRotationParams* own = rotation_registry::get(ObjectKey{body.type, body.number});
    return own != nullptr ? own : rotation_registry::get(ObjectKey{body.type, kWholeType});
}

bool body_frame(const Bodies& bodies, BodyKey body, Instant t, Mat3& body_from_j2000) {
    if (body == kEarthKey) return false;
    if (body == kEclipticKey) {
        body_from_j2000 = ecliptic_of(bodies);
        return true;
    }
    Mat3 back{};
    if (!j2000_from_body(bodies.find(body), body, t, back)) return false;
    body_from_j2000 = transpose(back);
    return true;
}

bool surface_frame(const Bodies& bodies, BodyKey body, Instant t, const Mat3& cur_from_j2000,
                   Mat3& j2000_from_body) {
    if (body != kEarthKey) return turning_frame(bodies, body, t, j2000_from_body);
    j2000_from_body = transpose(cur_from_j2000) * earth_of_date(bodies, t);
    return true;
}

bool surface_frame_of_date(const Bodies& bodies, BodyKey body, Instant t,
                           const Mat3& cur_from_j2000, Mat3& cur_from_body) {
    if (body == kEarthKey) {
        cur_from_body = earth_of_date(bodies, t);
        return true;
    }
    Mat3 j2000_from_body{};
    if (!turning_frame(bodies, body, t, j2000_from_body)) return false;
    cur_from_body = cur_from_j2000 * j2000_from_body;
    return true;
}

Mat3 horizon_frame(double longitude, double latitude) {
    const double sl = fm_sin(longitude);
    const double cl = cos_from_sin(longitude, sl);
    const double sb = fm_sin(latitude);
    const double cb = cos_from_sin(latitude, sb);
    return {{-cl * sb, sl, cl * cb}, {-sl * sb, -cl, sl * cb}, {cb, 0, sb}};
}

}  // namespace solsys
