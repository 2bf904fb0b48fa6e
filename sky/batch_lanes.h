// The part of a batch that goes through the DE file eight instants at a time.
#pragma once

#include <optional>
#include <span>
#include <vector>

#include "frames/frame_set.h"
#include "solsys/observer_state.h"
#include "solsys/place_lanes.h"
#include "solsys/sky/batch.h"

namespace solsys::sky {

constexpr std::size_t kGroup = kPlaceLanes;

// On the true equator of date, or on that of J2000 without aberration and deflection.
enum class PlaceKind { kApparent, kAstrometric };

// What the light times of two neighbours before an instant lead to.
class ExpectedLightTime {
  public:
    // Neighbours before the instant with the number `first`; none for the first two.
    ExpectedLightTime(std::span<const Instant> instants, std::span<const Place> row,
                      std::size_t first);
    // [day]; 0, none, for instants farther than `reach` days from the neighbour.
    [[nodiscard]] double at(const Instant& t, double reach) const;

  private:
    Instant from_;
    double last_ = 0, slope_ = 0;
};

// Which of the bodies can be computed so, seen from the model's observer or from its body;
// empty for the others.
std::vector<std::optional<FileBody>> bodies_in_file(Model& model, std::span<const Body> bodies);

void copy_states(const SeriesSums& sums, std::span<StateVector> out);

// Up to eight instants that a model was moved to, and what places take from it there.
class PlaceGroup {
  public:
    [[nodiscard]] bool empty() const { return count_ == 0; }
    [[nodiscard]] bool full() const { return count_ == kGroup; }
    void clear() { count_ = 0; }
    // The model's instant, the caller's number `index`.
    void add(const Model& model, std::size_t index);
    [[nodiscard]] std::span<const std::size_t> indices() const { return {index_, count_}; }

    // The places of a body into the row that it has one for every instant in; NaN where this is
    // not the way to it.
    void places(const FileBody& body, PlaceKind kind, std::span<const Instant> instants,
                std::span<Place> row) const;

    // Where the light of a body left, for all sites.
    void find_emission(const FileBody& body, LightLanes& out) const;
    // The observers of the group, but on the ground, and what they see over their horizon. The
    // model's observer is the Earth's centre.
    void stand_on(const Model& model, const OBSERVER& site, ObserverLanes& out) const;
    void horizontals(const FileBody& body, const ObserverLanes& observers,
                     const LightLanes& light, std::span<Horizontal> row) const;

  private:
    std::size_t count_ = 0;
    std::size_t index_[kGroup] = {};
    solsys::Instant tdb_[kGroup] = {};
    FrameSet frames_[kGroup];
    ObserverState observer_[kGroup];
    ObserverLanes lanes_{};
};

}  // namespace solsys::sky
