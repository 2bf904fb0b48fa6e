// The inside of CSWSolSys: plain components, each with free functions of its own.
#pragma once

#include <array>
#include <memory>
#include <vector>

#include "core/instant.h"
#include "core/linalg.h"
#include "frames/frame_set.h"
#include "solsys/de_ephemeris.h"
#include "solsys/element_records.h"
#include "solsys/object_table.h"
#include "solsys/satellite_theory.h"
#include "solsys/solar_system.h"

namespace solsys {

// Everything derived from the observer's record at the model's instant.
struct ObserverState {
    OBSERVER record;
    State relative{};                    // to the centre of its body, J2000 equator
    State heliocentric{};                // J2000 equator
    Vec3 velocity_c{};                   // heliocentric velocity in units of light's
    double lorentz_reciprocal = 1.0;     // sqrt(1 - |velocity_c|^2)
    Mat3 cur_from_body = kIdentity;      // body-fixed frame to the equator of date
    Mat3 body_from_j2000 = kIdentity;    // J2000 equator to the observer body's frame
    Mat3 j2000_from_body = kIdentity;    // its transpose, as GetMtrxEq2K_PlEq gives it
    Mat3 body_from_horizon = kIdentity;  // columns north, west, zenith
    Mat3 orbit_from_j2000 = kIdentity;   // rows: to the centre, backwards, the normal
};

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

// The rotation that a host registered for a body, or for all bodies of its type (number -1);
// null when there is neither.
const BodyRotationParams* registered_rotation(const SSO_ID& body);
// Equator of J2000 from the body-fixed frame at an instant by such an entry.
Mat3 j2000_from_registered(const BodyRotationParams& rotation, Instant t);

struct SpacecraftTrack {
    std::vector<SpacecraftRecord> records;  // ascending epochs
};

// Elements of a host's bodies.
struct ElementTables {
    FlatTable<AsteroidRecord> asteroids;
    FlatTable<CometRecord> comets;
    FlatTable<SpacecraftTrack> spacecraft;
    FlatTable<UserObjectRecord> user_objects;
    std::unique_ptr<tagAster_SPH_5> held_asteroid;
    std::unique_ptr<tagComet_SPH_5> held_comet;
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

}  // namespace solsys

struct CSWSolSys::Model {
    // Read-only after construction.
    solsys::Mat3 ecl2k_from_j2000 = solsys::kIdentity;  // J2000 equator to J2000 ecliptic
    solsys::Mat3 b1850_from_j2000 = solsys::kIdentity;  // precession to B1850.0
    double jd_b1850 = 0;

    solsys::ModelInstant current;
    solsys::ModelInstant saved;
    bool has_saved = false;
    solsys::VisibleMatrices visible{};

    PrecessionFn precession = nullptr;
    NutationFn nutation = nullptr;

    std::unique_ptr<DE_EvalState> ephemeris;  // null: no file, the built-in theories serve
    solsys::SatelliteTheories theories;
    solsys::FlatTable<std::unique_ptr<SS_Object>> objects;
    SS_Object* observer_object = nullptr;  // not owned, as the three below
    SS_Object* sun = nullptr;
    SS_Object* earth = nullptr;
    SS_Object* moon = nullptr;

    solsys::ElementTables elements;
    Elements eros{};  // built in: (433) as a spacecraft's central body
    double eros_gm = 0;
    solsys::FlatTable<StarObject> stars;

    // Central body of the spacecraft or own object that was resolved last; type -1: none.
    SSO_ID resolved_centre{-1, -1};

    // The new Moons around the instant that PhaseElongation found last [JD]; 0: none yet.
    double new_moon_before = 0;
    double new_moon_after = 0;

    [[nodiscard]] SS_Object* find(const SSO_ID& id) const {
        const auto* object = objects.find(solsys::key_of(id));
        return object != nullptr ? object->get() : nullptr;
    }
    [[nodiscard]] SSO_ID observer_body() const {
        return {current.observer.record.body_type, current.observer.record.body_number};
    }
    [[nodiscard]] bool observer_on_earth() const {
        return current.observer.record.body_type == SSO_PLNT &&
               current.observer.record.body_number == 3;
    }

    // Makes the frames belong to the current instant and the observer's body.
    void update_frames();
    // Has the frames computed anew, those of a restored instant too.
    void forget_frames();
    // Copies the matrices that hosts look at.
    void refresh_visible();
};
