/// \file
/// What an object of the model asks of a numerical integrator that moves it.
#pragma once

#include "solsys/export.h"

/// A numerical integrator of the motion of one body about the Sun. An object that it is
/// attached to (`SS_Object::AttachIntegrator`) starts it once and then asks it for states.
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
    /// The state at an instant, forwards or backwards from the last one.
    /// \param[out] state  6 values as in `Start`; left alone on failure
    /// \return false when the integration does not reach the instant
    virtual bool IntegrateTo(int day, double fraction, double* state) = 0;
};
