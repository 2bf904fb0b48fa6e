// Vectors, matrices and states as values. The exported functions work on plain arrays; inside
// there are only these, and crossing the border (load, store) costs nothing.
#pragma once

#include <cmath>

namespace solsys {

struct Vec3 {
    double x, y, z;
};

// Stored by rows, so that m * v is three dot products.
struct Mat3 {
    Vec3 r0, r1, r2;
};

// Position and velocity.
struct State {
    Vec3 r, v;
};

constexpr Vec3 operator+(Vec3 a, Vec3 b) { return {a.x + b.x, a.y + b.y, a.z + b.z}; }
constexpr Vec3 operator-(Vec3 a, Vec3 b) { return {a.x - b.x, a.y - b.y, a.z - b.z}; }
constexpr Vec3 operator-(Vec3 a) { return {-a.x, -a.y, -a.z}; }
constexpr Vec3 operator*(double k, Vec3 a) { return {k * a.x, k * a.y, k * a.z}; }
constexpr Vec3 operator*(Vec3 a, double k) { return k * a; }
constexpr Vec3& operator+=(Vec3& a, Vec3 b) { return a = a + b; }
constexpr Vec3& operator-=(Vec3& a, Vec3 b) { return a = a - b; }

constexpr double dot(Vec3 a, Vec3 b) { return a.x * b.x + a.y * b.y + a.z * b.z; }
constexpr Vec3 cross(Vec3 a, Vec3 b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}
inline double norm(Vec3 a) { return std::sqrt(dot(a, a)); }
// No zero test: the zero vector has no direction and gives a non-finite one.
inline Vec3 unit(Vec3 a) { return (1.0 / norm(a)) * a; }

constexpr Vec3 operator*(const Mat3& m, Vec3 v) {
    return {dot(m.r0, v), dot(m.r1, v), dot(m.r2, v)};
}
// The transpose of m applied to v: for a rotation, the way back.
constexpr Vec3 transpose_times(const Mat3& m, Vec3 v) {
    return v.x * m.r0 + v.y * m.r1 + v.z * m.r2;
}
constexpr Mat3 transpose(const Mat3& m) {
    return {{m.r0.x, m.r1.x, m.r2.x}, {m.r0.y, m.r1.y, m.r2.y}, {m.r0.z, m.r1.z, m.r2.z}};
}
constexpr Mat3 operator*(const Mat3& a, const Mat3& b) {
    return {transpose_times(b, a.r0), transpose_times(b, a.r1), transpose_times(b, a.r2)};
}

constexpr State operator+(const State& a, const State& b) { return {a.r + b.r, a.v + b.v}; }
constexpr State operator-(const State& a, const State& b) { return {a.r - b.r, a.v - b.v}; }
constexpr State operator-(const State& a) { return {-a.r, -a.v}; }
constexpr State operator*(double k, const State& a) { return {k * a.r, k * a.v}; }
constexpr State operator*(const Mat3& m, const State& a) { return {m * a.r, m * a.v}; }
constexpr State transpose_times(const Mat3& m, const State& a) {
    return {transpose_times(m, a.r), transpose_times(m, a.v)};
}

constexpr Mat3 kIdentity{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};

// Rotations of the frame by a positive angle about its x, y or z axis (the coordinates of a
// fixed vector turn the other way), from a cosine and a sine.
constexpr Mat3 rotation_x(double c, double s) { return {{1, 0, 0}, {0, c, s}, {0, -s, c}}; }
constexpr Mat3 rotation_y(double c, double s) { return {{c, 0, -s}, {0, 1, 0}, {s, 0, c}}; }
constexpr Mat3 rotation_z(double c, double s) { return {{c, s, 0}, {-s, c, 0}, {0, 0, 1}}; }
inline Mat3 rotate_x(double a) { return rotation_x(std::cos(a), std::sin(a)); }
inline Mat3 rotate_y(double a) { return rotation_y(std::cos(a), std::sin(a)); }
inline Mat3 rotate_z(double a) { return rotation_z(std::cos(a), std::sin(a)); }

// Arrays are read whole before anything is written: an output may alias an input.
constexpr Vec3 load(const double v[3]) { return {v[0], v[1], v[2]}; }
constexpr Mat3 load_matrix(const double m[9]) { return {load(m), load(m + 3), load(m + 6)}; }
constexpr State load_state(const double s[6]) { return {load(s), load(s + 3)}; }
constexpr void store(Vec3 v, double out[3]) { out[0] = v.x, out[1] = v.y, out[2] = v.z; }
constexpr void store(const Mat3& m, double out[9]) {
    store(m.r0, out), store(m.r1, out + 3), store(m.r2, out + 6);
}
constexpr void store(const State& s, double out[6]) { store(s.r, out), store(s.v, out + 3); }

}  // namespace solsys
