// Frames and scalars of a two-body state.
#include <cmath>

#include "core/constants.h"
#include "core/linalg.h"
#include "solsys/earth_orientation.h"

using solsys::Mat3;
using solsys::Vec3;

void RNB_matrix(const double* r, const double* v, double* matrix) {
    const Vec3 position = solsys::load(r);
    const Vec3 velocity = solsys::load(v);
    if (norm(position) == 0 && norm(velocity) == 0) {
        solsys::store(solsys::kIdentity, matrix);
        return;
    }
    const Vec3 inward = -unit(position);
    const Vec3 normal = unit(cross(unit(velocity), inward));
    solsys::store(Mat3{inward, cross(normal, inward), normal}, matrix);
}

void CalcPEM(double mu, const double* r, const double* v, double* p, double* e, double* angle) {
    constexpr double kParabolic = 1e-9;
    const Vec3 position = solsys::load(r);
    const Vec3 velocity = solsys::load(v);
    const double R = norm(position);
    const double k = 2 / R - dot(velocity, velocity) / mu;  // reciprocal semi-major axis
    const double rv = dot(position, velocity);
    if (std::fabs(k) <= kParabolic) {
        *e = 1;
    } else if (k < 0) {
        const double A = std::fabs(1 / k);
        const double c = rv / std::sqrt(A * mu);
        *e = std::sqrt((R / A + 1) * (R / A + 1) - c * c);
    } else {
        *e = std::sqrt(rv * rv * k / mu + (1 - k * R) * (1 - k * R));
    }
    const Vec3 h = cross(position, velocity);
    *p = dot(h, h) / mu;
    const double cosine = position.x / R;
    const double polar = cosine >= 1 ? 0 : cosine <= -1 ? solsys::kPi : std::acos(cosine);
    *angle = position.y < 0 ? -polar : polar;
}

void Eq_Orb(double mu, const double* r, const double* v, double* frame) {
    constexpr double kNearCircular = 1e-4;
    const Vec3 position = solsys::load(r);
    const Vec3 velocity = solsys::load(v);
    const Vec3 h = cross(position, velocity);
    const Vec3 W = unit(h);
    const Vec3 A = cross(velocity, h) - (mu / norm(position)) * position;  // mu e towards P
    Vec3 P = unit(A);
    Vec3 Q = cross(W, P);
    if (norm(A) / mu < kNearCircular) {  // no pericentre to speak of: take the position
        Q = unit(cross(W, position));
        P = unit(cross(Q, W));
    }
    solsys::store(Mat3{P, Q, W}, frame);
}
