/// \file
/// Numerical integration of the motion of small bodies: Everhart's method of 15th order on
/// Gauss-Radau spacings, with the step it needs, forwards and backwards, and the states between
/// the steps at the price of an evaluation.
///
/// Sources: Everhart 1985, in Dynamics of Comets, ed. Carusi & Valsecchi, 185 (the method);
/// Rein & Spiegel 2015, Mon. Not. R. Astron. Soc. 446, 1424 (iteration to convergence, the step
/// by the last term in units of the force, compensated sums); Petit & Luzum 2010, IERS
/// Conventions, equation 10.12 (relativity); Marsden, Sekanina & Yeomans 1973, Astron. J. 78,
/// 211 (forces on comets).
#pragma once

#include <memory>

#include "solsys/export.h"

namespace solsys {
class Perturbers;
}

/// Forces on a small body other than gravity. All zero: none.
struct SmallForces {
    double A1 = 0;  ///< away from the Sun at 1 au [au/day^2], times g(r)
    double A2 = 0;  ///< across, in the orbit's plane, the way it goes
    double A3 = 0;  ///< along the normal of the orbit
    /// g(r) is (1 au/r)^2, which suits the push of reradiated heat on asteroids; false: that of
    /// water ice (Marsden and others, 1973), 1 at 1 au.
    bool inverse_square = false;
    /// Pressure of sunlight in units of the Sun's attraction; about 7.6e-4 times area over mass
    /// [m^2/kg] times the coefficient of reflection. Without the aberration of the light.
    double radiation = 0;
};

/// What became of an integration.
enum IntegrStatus : int {
    INTEGR_OK = 0,
    INTEGR_NOT_STARTED = 1,  ///< no `Start`, or what it was given is not finite
    INTEGR_NO_FORCE = 2,     ///< beyond the ephemeris of the perturbing bodies, or the host's
                             ///< force declined
    INTEGR_COLLISION = 3,    ///< came to the surface of the Sun, a planet or another attracting
                             ///< body
    INTEGR_STEP = 4,   ///< the step shrank below 1e-10 day: a singularity, or too rough a force
    INTEGR_STEPS = 5,  ///< 400,000 steps on one side of the start
    INTEGR_STOPPED = 6,  ///< by the callback
    INTEGR_MEMORY = 7    ///< memory was short; the next call begins anew
};

/// What an object of a model asks of a numerical integrator that moves it about the Sun: the
/// object is given one (`SS_Object::AttachIntegrator`), starts it once and then asks it for
/// states.
class SOLSYS_API Integrator {
  public:
    Integrator() = default;
    Integrator(const Integrator&) = delete;
    Integrator& operator=(const Integrator&) = delete;
    virtual ~Integrator();

    /// Takes the start state.
    /// \param day, fraction  its instant, TDB Julian date
    /// \param state          heliocentric position and velocity, J2000 equator [au, au/day]
    /// \return false when the integration cannot start there
    virtual bool Start(int day, double fraction, const double* state) = 0;
    /// The state at an instant, before or after the start.
    /// \param[out] state  6 values as in `Start`; left alone on failure
    /// \return false when the integration does not reach the instant
    virtual bool IntegrateTo(int day, double fraction, double* state) = 0;
};

/// Everhart's integrator. As constructed it moves one body about the Sun among the planets, the
/// Moon, Ceres, Pallas and Vesta (positions from the DE file that the process has open, where
/// it reaches, and the built-in theories), with the Sun's relativity and, within 0.03 au, the
/// Earth's oblateness. A body that starts at one of the three asteroids is that asteroid. With
/// a force of the host's own it integrates any system of first or second order.
///
/// It goes on from where it is when asked for an instant beyond, and keeps its steps: an
/// instant between them costs no force. The first and the last year of the
/// built-in theories are not reached. Not thread-safe: one integrator, one thread. Another DE
/// file makes it start anew.
///
/// Accuracy of the method over 1000 revolutions of two bodies, eccentricities up to 0.99:
/// energy 1e-13, position 2e-8 of the semi-major axis.
class SOLSYS_API IntegRA15 : public Integrator {
  public:
    /// The force at `t` days after the start: `x` and, of second order, `v` (else null) to `f`.
    /// False where there is none: the integration ends there.
    using ForceFn = bool (*)(double t, const double* x, const double* v, double* f,
                             void* context);
    /// Told every 64 steps what part of the span asked for is done, 0 to 1; false ends the
    /// integration (`INTEGR_STOPPED`; the next call takes it up again).
    using ProgressFn = bool (*)(double done, void* context);

    /// Calls `ET_UT::Init`; `ET_UT::Finish` when it goes.
    IntegRA15();
    /// Shares what is known of the perturbing bodies' places (the library's own use).
    explicit IntegRA15(std::shared_ptr<solsys::Perturbers> perturbers);
    ~IntegRA15() override;

    /// Sizes the system, and forgets any start.
    /// \param equations    doubles of work: at least twice coordinates times order, the state
    /// and
    ///                     what its rounding took
    /// \param coordinates  1 to 3000; those of the bodies in threes have their step judged body
    ///                     by body
    /// \param order        1: y' = f(t, y); 2: y'' = f(t, y, y')
    /// \return false, and nothing changed, for other sizes
    bool Init(int equations = 12, short coordinates = 3, short order = 2);
    /// The system to integrate; null: the built-in forces of one or more bodies without mass
    /// (order 2, coordinates a multiple of 3). Forgets any start.
    void SetForce(ForceFn force, void* context);
    /// Adds forces to the built-in ones. Forgets any start.
    void SetForces(const SmallForces& forces);
    /// The largest last term of a step in units of the force: 1e-8 unless set; 1e-12 to 1e-3.
    void SetTolerance(double tolerance);
    /// Calls a function every 64 steps; null for none. Its false ends the integration
    /// (INTEGR_STOPPED).
    void SetCallBack(ProgressFn progress, void* context);

    /// Takes the start: positions first, then (second order) velocities; for one body about the
    /// Sun as `Integrator::Start` has it.
    bool Start(int day, double fraction, const double* state) override;
    /// Integrates to an instant. The steps are the first ones tried [day]: `step1` in the
    /// direction asked for first, `step2` in the other; neither is a least step. They count
    /// when that direction is first taken. \return whether it got there; `Status` tells why
    /// not. Zero or other than finite steps: false.
    bool RA15(int day, double fraction, double step1 = 1.0, double step2 = 0.015);
    /// The state that `RA15` came to last. False before its first success.
    bool GetState(double* state) const;
    /// `RA15` with its default steps, or those of `SetSteps`, and `GetState`.
    bool IntegrateTo(int day, double fraction, double* state) override;
    /// The first trial steps of `IntegrateTo` [day], as `RA15` takes them.
    void SetSteps(double step1, double step2);

    /// An IntegrStatus: how the last call ended.
    int Status() const;
    /// Steps made since the start.
    int StepCount() const;

  private:
    struct SOLSYS_LOCAL Work;
    std::unique_ptr<Work> work_;
};
