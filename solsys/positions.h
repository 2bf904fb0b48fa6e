// Where the states of a model's objects come from. Everything here takes its instant as an
// argument, so that the light-time iteration moves nothing, and a looked-up source, so that it
// searches no table twice.
#pragma once

#include "core/instant.h"
#include "core/linalg.h"
#include "solsys/model.h"

namespace solsys {

// An identifier looked up: at most one of the pointers is set, by its type; none: not found.
// They lead into the model's tables.
struct StateSource {
    std::int32_t type = -1;
    std::int32_t number = -1;
    SS_Object* object = nullptr;                    // plnt, moon
    const Elements* elements = nullptr;             // astr, comt
    const tagAster_SPH_5* held_asteroid = nullptr;  // astr
    const tagComet_SPH_5* held_comet = nullptr;     // comt
    const SpacecraftTrack* track = nullptr;         // scft
    const UserObjectRecord* user_object = nullptr;  // uSCO
};

// What an observer sees, on the J2000 equator: a direction (beyond the reach of the light-time
// iteration: the geometric vector), the distance the light came, and the vector it came along,
// aberration left out.
struct ApparentPlace {
    Vec3 direction{};
    double distance = 0;
    Vec3 path{};
};

// The kinds of objects that have states; all others are stars and labels of the host.
bool has_states(std::int32_t type);

}  // namespace solsys

class CSWSolSys::Positions {
  public:
    explicit Positions(CSWSolSys& system) : system_(system), model_(*system.model_) {}

    [[nodiscard]] solsys::StateSource find(std::int32_t type, std::int32_t number) const;
    [[nodiscard]] solsys::StateSource find(const SSO_ID& id) const {
        return find(id.type, id.number);
    }

    // States on the J2000 equator; without `velocity` out.v is zero. False with zeros (or with
    // the last iterate of an orbit that did not converge) when there is no state. `depth`
    // counts the centres of centres: a ring of objects going round each other ends there.
    bool heliocentric(const solsys::StateSource& source, solsys::Instant t, bool velocity,
                      solsys::State& out, int depth = 0);
    bool about_centre(const solsys::StateSource& source, solsys::Instant t, bool velocity,
                      solsys::State& out);
    // Heliocentric about a single centre, without the blending between spacecraft records.
    bool on_one_centre(const solsys::StateSource& source, solsys::Instant t, bool velocity,
                       solsys::State& out) {
        return about_centre(source, t, velocity, out) && add_centre(t, velocity, out, 0);
    }
    // Relative to the observer, geometric.
    bool from_observer(const solsys::StateSource& source, solsys::Instant t, bool velocity,
                       solsys::State& out);

    // The model's instant as the observer sees it. When the source fails at the time the light
    // left it, the model's instant stays there.
    bool apparent(const solsys::StateSource& source, double light_time,
                  solsys::ApparentPlace& out);

    [[nodiscard]] solsys::Instant now() const { return model_.current.now; }

  private:
    bool spacecraft(const SpacecraftRecord& record, const Elements& elements, solsys::Instant t,
                    bool velocity, solsys::State& out);
    bool spacecraft_heliocentric(const solsys::SpacecraftTrack& track, solsys::Instant t,
                                 bool velocity, solsys::State& out, int depth);
    bool user_object(const UserObjectRecord& record, solsys::Instant t, bool velocity,
                     solsys::State& out);
    bool add_centre(solsys::Instant t, bool velocity, solsys::State& out, int depth);
    bool by_elements(const Elements& elements, double mu, solsys::Instant t, bool velocity,
                     solsys::State& out) const;
    bool apparent_in_line(const solsys::StateSource& source, solsys::ApparentPlace& out);
    void record_centre(std::int32_t type, std::int32_t number) {
        model_.resolved_centre.type = type;
        model_.resolved_centre.number = number;
    }

    CSWSolSys& system_;
    Model& model_;
};
