// The body of the kernel, included by sgp4_kernel_baseline.cpp, _avx2.cpp and _avx512.cpp.
//
// Written once for a number and for a vector of lanes, in the order of the published
// computation. What is chosen by a value is chosen lane by lane (select).
#include "ephemeris/lanes.inl"
#include "ephemeris/tle/sgp4_kernel.h"

namespace solsys {
namespace {

static_assert(kSgp4Lanes == kLanes && sizeof(Vector) == sizeof(Sgp4Lanes));

// Those of a small angle, |x| <= 0.05 (terms left out below 2e-17), which the short-period
// terms are for every orbit above the ground; sines of all others.
template <class T>
inline Angle<T> small_sines(T x) {
    const T q = x * x;
    const Angle<T> close = {
        x + (x * q) *
                ((-1.0 / 6 + q * (1.0 / 120)) + (q * q) * (-1.0 / 5040 + q * (1.0 / 362880))),
        (1.0 - 0.5 * q) + (q * q) * ((1.0 / 24 + q * (-1.0 / 720)) +
                                     (q * q) * (1.0 / 40320 + q * (-1.0 / 3628800)))};
    const auto far = !(absolute(x) < 0.05);
    if (!any(far)) return close;
    const Angle<T> all = sines(x);
    return {select(far, all.sin, close.sin), select(far, all.cos, close.cos)};
}

template <class T>
inline Angle<T> sum(Angle<T> a, Angle<T> b) {
    return {a.sin * b.cos + a.cos * b.sin, a.cos * b.cos - a.sin * b.sin};
}
template <class T>
inline Angle<T> difference(Angle<T> a, Angle<T> b) {
    return {a.sin * b.cos - a.cos * b.sin, a.cos * b.cos + a.sin * b.sin};
}

// x less whole turns with the sign of x kept, as truncated division by 2 pi (in double
// precision) leaves it. The turn in two pieces, of which the first has 33 bits: the products
// are exact below 2^20 turns.
template <class T>
inline T rem(T x) {
    constexpr double kHigh = 0x1.921fb544p+2, kLow = kTurn - kHigh;
    const T turns = nearest(x * (1 / kTurn));
    const T rest = (x - turns * kHigh) - turns * kLow;
    const T sign_kept = select(both(x >= 0, rest < 0), rest + kTurn, rest);
    return select(both(x<0, sign_kept> 0), sign_kept - kTurn, sign_kept);
}

// Elements on their way from secular to osculating; `code` of the first error met, else 0.
template <class T>
struct Elements {
    T a, n, e, i, node, w, M;
    T sin_i, cos_i;
    T code;
};

template <class T, class M>
inline void fail(Elements<T>& at, M where, double code) {
    at.code = select(both(where, at.code == 0), T{} + code, at.code);
}

// The pull of the resonance and its derivative by the longitude.
template <class T>
struct Pull {
    T n_rate, by_lam;
};

template <class T>
inline void add_pull(Pull<T>& pull, const PullTerm<T>& term, double k_lam, Angle<T> angle) {
    pull.n_rate += term.of_sine * angle.sin + term.of_cosine * angle.cos;
    pull.by_lam += k_lam * (term.of_sine * angle.cos - term.of_cosine * angle.sin);
}

template <Sgp4Kind kKind, class T>
inline Pull<T> pull_at(const Sgp4Coefficients<T>& c, T tau, T lam_tau) {
    Pull<T> pull{};
    const Angle<T> lam = sines(lam_tau), lam2 = sum(lam, lam);
    if constexpr (kKind == Sgp4Kind::one_day) {
        const Angle<T> angles[] = {lam, lam2, sum(lam2, lam)};
        for (int k = 0; k < 3; ++k) add_pull(pull, c.pull[k], k + 1, angles[k]);
    } else {
        const Angle<T> w = sines(c.w0 + c.w_rate * tau), lam_w = sum(lam, w);
        const Angle<T> angles[] = {sum(lam_w, w),     lam,  lam_w,        difference(lam, w),
                                   sum(lam_w, lam_w), lam2, sum(lam2, w), difference(lam2, w)};
        for (int k = 0; k < kPullTerms; ++k)
            add_pull(pull, c.pull[k], kHalfDayAngles[k].k_lam, angles[k]);
    }
    return pull;
}

// Longitude and mean motion of a resonant orbit, in steps of 720 minutes from the epoch.
template <Sgp4Kind kKind, class T>
inline void integrate_resonance(const Sgp4Coefficients<T>& c, T t, ResonanceState<T>& kept,
                                T& lam, T& n) {
    const auto anew =
        (kept.tau == 0) | (t * kept.tau <= 0) | (absolute(t) < absolute(kept.tau));
    kept.tau = select(anew, T{}, kept.tau);
    kept.lam = select(anew, c.lam0, kept.lam);
    kept.n = select(anew, c.n0, kept.n);
    const T step = select(t > 0, T{} + 720.0, T{} - 720.0);
    for (;;) {
        const Pull<T> pull = pull_at<kKind>(c, kept.tau, kept.lam);
        const T lam_1 = kept.n + c.lam_rate, n_1 = pull.n_rate, n_2 = lam_1 * pull.by_lam;
        const auto far = absolute(t - kept.tau) >= 720;
        const T f = select(far, step, t - kept.tau), half = 0.5 * (f * f);
        lam = kept.lam + lam_1 * f + n_1 * half;
        n = kept.n + n_1 * f + n_2 * half;
        if (!any(far)) return;
        kept.tau = select(far, kept.tau + step, kept.tau);
        kept.lam = select(far, lam, kept.lam);
        kept.n = select(far, n, kept.n);
    }
}

// What a body of the lunisolar terms changes.
template <class T>
struct Lunisolar {
    T e, i, l, g, h;
};

template <class T>
inline void add_body(Lunisolar<T>& p, const LunisolarTerms<T>& c, double rate,
                     double eccentricity, T t) {
    const T z = c.mu + rate * t;
    const Angle<T> f = sines(z + 2 * eccentricity * sines(z).sin);
    const T f2 = 0.5 * f.sin * f.sin - 0.25, f3 = -0.5 * f.sin * f.cos;
    p.e += c.e1 * f2 + c.e2 * f3;
    p.i += c.i1 * f2 + c.i2 * f3;
    p.l += c.l1 * f2 + c.l2 * f3 + c.l3 * f.sin;
    p.g += c.g1 * f2 + c.g2 * f3 + c.g3 * f.sin;
    p.h += c.h1 * f2 + c.h2 * f3;
}

// The lunisolar periodic terms; below 0.2 rad of inclination in Lyddane's form, which has no
// division by its sine.
template <class T>
inline void add_lunisolar(const Sgp4Coefficients<T>& c, T t, Elements<T>& at) {
    Lunisolar<T> p{};
    add_body(p, c.sun, kSunRate, kSunEccentricity, t);
    add_body(p, c.moon, kMoonRate, kMoonEccentricity, t);
    at.i += p.i;
    at.e += p.e;
    const Angle<T> i = sines(at.i);
    const auto low = at.i < 0.2;
    T w = at.w + p.g - i.cos * p.h / i.sin;
    T node = at.node + p.h / i.sin;
    const T M = at.M + p.l;
    if (any(low)) {
        const T from = select(both(c.turned > 0, at.node < 0), at.node + kTurn, at.node);
        const T L = at.M + at.w + i.cos * from + p.l + p.g - p.i * from * i.sin;
        // The angle between the old node and atan2(alpha, beta) of the publication.
        const T to = from + arctangent(p.h, i.sin + p.i * i.cos);
        w = select(low, L - M - i.cos * to, w);
        node = select(low, to, node);
    }
    const auto negative = at.i < 0;
    at.i = select(negative, -at.i, at.i);
    at.sin_i = select(negative, -i.sin, i.sin);
    at.cos_i = i.cos;
    at.node = select(negative, node + kPi, node);
    at.w = select(negative, w - kPi, w);
    at.M = M;
    fail(at, (at.e < 0) | (at.e > 1), 3);
}

// The elements at t with everything but long- and short-period terms of the Earth.
template <Sgp4Kind kKind, class T>
inline Elements<T> mean_elements(const Sgp4Coefficients<T>& c, T t,
                                 ResonanceState<T>& resonance) {
    constexpr bool kDeep = kKind != Sgp4Kind::near_earth;
    Elements<T> at{c.a0, c.n0, c.e0, c.i0, c.node0, c.w0, c.M0, c.sin_i0, c.cos_i0, T{}};
    at.M = c.M0 + c.M_rate * t;
    at.w = c.w0 + c.w_rate * t;
    at.node = c.node0 + c.node_rate * t + c.KN * t * t;
    T fa = 1.0 - c.C1 * t, fe = c.Bs_C4 * t, fl = c.T2 * t * t;
    if constexpr (!kDeep) {
        const T swing = 1.0 + c.eta * sines(at.M).cos;
        const T dW = c.KW * t + c.KM * (swing * swing * swing - c.m0);
        at.M += dW;
        at.w -= dW;
        const T t2 = t * t, t3 = t2 * t;
        fa = fa - c.D2 * t2 - c.D3 * t3 - c.D4 * (t3 * t);
        fe += c.Bs_C5 * (sines(at.M).sin - c.sin_M0);
        fl = fl + c.T3 * t3 + (t3 * t) * (c.T4 + t * c.T5);
    } else {
        at.e += c.e_dot * t;
        at.i += c.i_dot * t;
        at.w += c.w_dot * t;
        at.node += c.node_dot * t;
        at.M += c.M_dot * t;
    }
    if constexpr (kKind == Sgp4Kind::one_day || kKind == Sgp4Kind::half_day) {
        T lam;
        integrate_resonance<kKind>(c, t, resonance, lam, at.n);
        T theta = rem(c.theta0 + kEarthRate * t);
        theta = select(theta < 0, theta + kTurn, theta);
        at.M = kKind == Sgp4Kind::one_day ? lam - at.node - at.w + theta
                                          : lam - 2 * at.node + 2 * theta;
        const T root = cube_root(c.ke / at.n);
        at.a = root * root;
    }
    fail(at, at.n <= 0, 2);
    at.a = at.a * fa * fa;
    at.n = c.ke / (at.a * square_root(at.a));
    at.e -= fe;
    fail(at, (at.e >= 1) | (at.e < -0.001), 1);
    at.e = select(at.e < 1e-6, T{} + 1e-6, at.e);
    at.M += c.n0 * fl;
    const T L = rem(at.M + at.w + at.node);
    at.node = rem(at.node);
    at.w = rem(at.w);
    at.M = rem(L - at.w - at.node);
    if constexpr (kDeep) add_lunisolar(c, t, at);
    return at;
}

constexpr double kLastStep = 1e-8;

// Kepler's equation U = E + ay cos E - ax sin E in E + w by Newton's steps, each limited to
// 0.95 rad, ten at most: the sine and the cosine of its solution.
template <class T>
inline Angle<T> kepler(T U, T ax, T ay) {
    T E = U;
    Angle<T> at = sines(E);
    T step{};
    auto open = T{} >= 0;  // all
    for (int k = 0; k < 10; ++k) {
        const Angle<T> now = k == 0 ? at : sines(E);
        at.sin = select(open, now.sin, at.sin);
        at.cos = select(open, now.cos, at.cos);
        T next = (U - ay * now.cos + ax * now.sin - E) / (1.0 - ax * now.cos - ay * now.sin);
        next = select(next > 0.95, T{} + 0.95, next);
        next = select(next < -0.95, T{} - 0.95, next);
        step = select(open, next, step);
        E = select(open, E + next, E);
        // The error that a step leaves is below half its square over 1 - e.
        open = both(open, absolute(next) >= kLastStep);
        if (!any(open)) break;
    }
    // After the last step, unless the ten were not enough.
    const T near = select(absolute(step) < kLastStep, step, T{});
    const T half = 0.5 * near * near;
    return {at.sin + at.cos * near - at.sin * half, at.cos - at.sin * near - at.cos * half};
}

// The orbit with the Earth's periodic terms: state in km and km/s.
template <class T>
inline void osculate(const Sgp4Coefficients<T>& c, Elements<T>& at, T state[6]) {
    const T ci = at.cos_i, si = at.sin_i;
    const T den = select(absolute(1.0 + ci) > 1.5e-12, 1.0 + ci, T{} + 1.5e-12);
    const T g = (1.0 / (at.a * (1.0 - at.e * at.e))) * c.j3_j2 * si;
    const Angle<T> w = sines(at.w);
    const T ax = at.e * w.cos, ay = at.e * w.sin - 0.5 * g;
    const T L = at.M + at.w + at.node - 0.25 * g * ((3.0 + 5.0 * ci) / den) * ax;
    const Angle<T> E = kepler(rem(L - at.node), ax, ay);

    const T eC = ax * E.cos + ay * E.sin, eS = ax * E.sin - ay * E.cos;
    const T eL2 = ax * ax + ay * ay, p = at.a * (1.0 - eL2);
    fail(at, p < 0, 4);
    const T r = at.a * (1.0 - eC), by_r = 1.0 / r;
    const T r_dot = square_root(at.a) * eS * by_r, rf_dot = square_root(p) * by_r;
    const T bL = square_root(1.0 - eL2), k = eS / (1.0 + bL);
    const T su = at.a * by_r * (E.sin - ay - ax * k), cu = at.a * by_r * (E.cos - ax + ay * k);
    const T s2u = 2.0 * su * cu, c2u = 1.0 - 2.0 * su * su;
    const T by_p = 1.0 / p, k1 = 0.5 * c.j2 * by_p, k2 = k1 * by_p;
    const T ci2 = ci * ci, A = 3.0 * ci2 - 1.0, B = 1.0 - ci2;
    const T r_k = r * (1.0 - 1.5 * k2 * bL * A) + 0.5 * k1 * B * c2u;
    const T k1_n = k1 * at.n / c.ke;
    const T rd_k = r_dot - k1_n * B * s2u, rf_k = rf_dot + k1_n * (B * c2u + 1.5 * A);
    fail(at, r_k < 1, 6);

    // The angles of 5.13 by small turns of what is known.
    const Angle<T> u = sum({su, cu}, small_sines(-0.25 * k2 * (7.0 * ci2 - 1.0) * s2u));
    const Angle<T> i = sum({si, ci}, small_sines(1.5 * k2 * ci * si * c2u));
    const Angle<T> node = sines(at.node + 1.5 * k2 * ci * s2u);
    const T ux = node.cos * u.cos - node.sin * i.cos * u.sin;
    const T uy = node.sin * u.cos + node.cos * i.cos * u.sin;
    const T uz = i.sin * u.sin;
    const T vx = -node.cos * u.sin - node.sin * i.cos * u.cos;
    const T vy = -node.sin * u.sin + node.cos * i.cos * u.cos;
    const T vz = i.sin * u.cos;
    const T km = c.radius_km * r_k, km_s = c.radius_km * c.ke * (1.0 / 60);
    state[0] = km * ux, state[1] = km * uy, state[2] = km * uz;
    state[3] = km_s * (rd_k * ux + rf_k * vx);
    state[4] = km_s * (rd_k * uy + rf_k * vy);
    state[5] = km_s * (rd_k * uz + rf_k * vz);
}

// The whole way: a code of sgp4_state.
template <Sgp4Kind kKind, class T>
inline T state_of_kind(const Sgp4Coefficients<T>& c, T t, ResonanceState<T>& resonance,
                       T state[6]) {
    const auto within = absolute(t) <= kSgp4Farthest;
    Elements<T> at = mean_elements<kKind>(c, select(within, t, T{}), resonance);
    osculate(c, at, state);
    T size{};
    for (int k = 0; k < 6; ++k) size += absolute(state[k]);
    const auto with_state = (at.code == 0) | (at.code == 6);
    const T code = select(both(with_state, !(size < 1e12)), T{} + 8.0, at.code);
    return select(within, code, T{} + 7.0);
}

template <class T>
inline T state_of(Sgp4Kind kind, const Sgp4Coefficients<T>& c, T t,
                  ResonanceState<T>& resonance, T state[6]) {
    switch (kind) {
        case Sgp4Kind::near_earth:
            return state_of_kind<Sgp4Kind::near_earth>(c, t, resonance, state);
        case Sgp4Kind::deep:
            return state_of_kind<Sgp4Kind::deep>(c, t, resonance, state);
        case Sgp4Kind::one_day:
            return state_of_kind<Sgp4Kind::one_day>(c, t, resonance, state);
        default:
            return state_of_kind<Sgp4Kind::half_day>(c, t, resonance, state);
    }
}

inline void states_of_lanes(Sgp4Kind kind, const Sgp4Block& block,
                            ResonanceState<Sgp4Lanes>& kept, Sgp4Work& work) {
    // The same numbers as vectors; those of deep space only where they are used.
    using Coefficients = Sgp4Coefficients<Vector>;
    static_assert(sizeof(Coefficients) == sizeof block);
    Coefficients c;
    __builtin_memcpy(
        &c, &block,
        kind == Sgp4Kind::near_earth ? __builtin_offsetof(Coefficients, e_dot) : sizeof c);
    ResonanceState<Vector> resonance;
    Vector day, fraction, state[6];
    __builtin_memcpy(&resonance, &kept, sizeof kept);
    __builtin_memcpy(&day, &work.day, sizeof day);
    __builtin_memcpy(&fraction, &work.fraction, sizeof fraction);
    const Vector t = ((day - c.epoch_day) + (fraction - c.epoch_fraction)) * 1440.0;
    const Vector code = state_of<Vector>(kind, c, t, resonance, state);
    __builtin_memcpy(&kept, &resonance, sizeof kept);
    __builtin_memcpy(&work.state, &state, sizeof state);
    __builtin_memcpy(&work.code, &code, sizeof code);
}

}  // namespace
}  // namespace solsys
