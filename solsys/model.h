// The inside of CSWSolSys: plain components, each with free functions of its own.
#pragma once

#include <array>
#include <memory>

#include "core/instant.h"
#include "core/linalg.h"
#include "frames/frame_set.h"
#include "frames/modern_frame_set.h"
#include "solsys/bodies.h"
#include "solsys/de_ephemeris.h"
#include "solsys/observer_state.h"
#include "solsys/reduction.h"
#include "solsys/satellite_theory.h"
#include "solsys/solar_system.h"

namespace solsys {

// What SaveT3Data keeps: the instant and all that follows from it and from the observer.
struct ModelInstant {
    Instant now{kJ2000Day, 0.0};
    bool has_frames = false;      // whether the frames have been computed yet
    double frame_time = -1.0;     // Julian date of the frames
    bool frames_on_earth = true;  // whether they hold nutation
    FrameSet frames;
    ObserverState observer;
};

// The matrices that hosts look at through pointers, as the plain doubles they see; refreshed
// whenever the frames or the observer change.
struct VisibleMatrices {
    using Plain = std::array<double, 9>;
    Plain cur_from_j2000, ecl_from_j2000, ecl_from_cur, precession, nutation, horizon, ecl2k;
};

struct SatelliteTheories {
    std::unique_ptr<MartianSat> mars;
    std::unique_ptr<JupiterSat> jupiter;
    std::unique_ptr<SaturnSat> saturn;
    std::unique_ptr<UraSat> uranus;
    std::unique_ptr<NepSat> neptune;
    std::unique_ptr<PlutoSat> pluto;
    std::unique_ptr<ErisSat> eris;
    std::unique_ptr<HaumeaSat> haumea;
};

// The new Moons around the instant whose age of the Moon was asked last, and the count of
// changes of source they belong to.
struct KeptLunation {
    double before = 0;  // JD; 0: none yet
    double after = 0;
    std::uint32_t source = 0;
};

}  // namespace solsys

struct CSWSolSys::Model {
    // Read-only after construction.
    solsys::Mat3 b1850_from_j2000 = solsys::kIdentity;  // precession to B1850.0

    solsys::Mat3 b1875_from_gcrs = solsys::b1875_from_gcrs();  // of the modern reduction

    solsys::ModelInstant current;
    solsys::ModelInstant saved;
    bool has_saved = false;
    bool saved_is_stale = false;  // what the slot derived follows from another reduction
    solsys::VisibleMatrices visible{};

    std::unique_ptr<solsys::Reduction> reduction = std::make_unique<solsys::Reduction>();
    PrecessionFn precession = nullptr;
    NutationFn nutation = nullptr;

    bool wants_file = true;                   // false: the built-in theories, whatever is open
    std::unique_ptr<DE_EvalState> ephemeris;  // null: the built-in theories serve
    solsys::SatelliteTheories theories;
    solsys::Bodies bodies;
    solsys::FlatTable<StarObject> stars;
    solsys::KeptLunation lunation;

    // The frames of an instant: the one place where a reduction is chosen.
    [[nodiscard]] solsys::FrameSet frames_for(solsys::Instant t, bool on_earth) const;
    // After a change of what frames and observer follow from.
    void reduction_changed();
    void derive_anew();
    // Makes the frames belong to the current instant and the observer's body.
    void update_frames();
    // Has the frames computed anew, those of a restored instant too.
    void forget_frames();
    // Copies the matrices that hosts look at.
    void refresh_visible();
    // All that follows from the observer's record at the current instant.
    void derive_observer();
    // Hands the evaluation state, or none, to the objects that read the file.
    void serve_ephemeris(bool serve);  // from the file, or from the theories
    void hand_over_ephemeris();
};
