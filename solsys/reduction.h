// The modern reduction: the host's data of the Earth's rotation, and what follows from the
// instant for every object.
#pragma once

#include <optional>

#include "core/instant.h"
#include "core/linalg.h"
#include "frames/earth_rotation.h"
#include "frames/frame_set.h"
#include "frames/leap_seconds.h"
#include "frames/modern_frame_set.h"
#include "frames/orientation_table.h"
#include "frames/pole_nodes.h"
#include "solsys/de_ephemeris.h"
#include "solsys/deflection.h"
#include "solsys/earth_rotation.h"
#include "solsys/states.h"

namespace solsys {

// What a host has told about the Earth's rotation.
struct EarthInputs {
    LeapSeconds leap_seconds;
    OrientationTable table;
    std::optional<double> ut1_minus_utc;  // [s]
    std::optional<PolarMotion> pole;
};

// UT1 and the pole of an instant, and where they come from.
struct EarthTurn {
    Instant ut1;
    PolarMotion pole;
    double ut1_minus_utc = 0;  // [s]; 0 when nothing is known
    EarthOrientationSource source = EARTH_ORIENTATION_NONE;
};
EarthTurn earth_turn_at(const EarthInputs& inputs, Instant tt);

// Terrestrial axes to the true equator and equinox of date: R3(-gst) W^T.
Mat3 tod_from_itrs(const EarthTurn& turn, Instant tt, double equation_of_origins);

// What the modern reduction keeps beside the model's own quantities; no save slot holds it.
struct Reduction {
    EarthInputs earth;
    PoleNodes nodes;
    DE_EvalState* file = nullptr;  // not owned; null: the built-in theories
    Mat3 ecl2k_from_gcrs = solsys::ecl2k_from_gcrs();

    // The instant on the scale of the ephemerides, TDB.
    Instant dynamical(Instant tt);
    // What the Earth's rotation needs of the frames in force.
    void take_frames(const FrameSet& frames, bool on_earth);
    // Earth-fixed axes to the equator of date.
    [[nodiscard]] Mat3 cur_from_earth(Instant tt) const;

  private:
    double equation_of_origins_ = 0;
    Mat3 cur_from_tod_ = kIdentity;
    // The day for which TDB - TT was summed last, and its value and slope [day, day per day].
    int day_ = -1;
    double offset_ = 0, slope_ = 0;
};

// J2000 equator to the J2000 ecliptic that hosts see; orbits by elements keep their own.
Mat3 ecliptic_of(const Bodies& bodies);

// A planet (1 to 9) or the Moon straight from the file, to the last digit of the instant; false
// for all others and where the file does not reach.
bool exact_state(const Reduction& reduction, const StateSource& source, Instant tdb,
                 State& out);

// Day and fraction are not added to one double, whose rounding costs 0.3 mas of the Moon:
// planets 1 to 9 and the Moon (301), heliocentric. False where the open file does not reach.
bool exact_state_in_file(DE_EvalState& file, int body, Instant t, State& out);
// The Sun from the barycentre of the solar system, by the file or the built-in series; zero
// where neither reaches.
State barycentric_sun(DE_EvalState* file, Instant t);

// Sorts the deflecting bodies for an observer; all heliocentric [au, au/day].
DeflectingBodies bodies_around(const State& observer, const State& jupiter, const State& saturn,
                               bool on_earth);

}  // namespace solsys
