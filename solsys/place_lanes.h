// Apparent places by the modern reduction, eight instants side by side, of bodies that the DE
// file holds. The numbers are those of apparent_modern to rounding.
#pragma once

#include <optional>
#include <span>

#include "core/instant.h"
#include "core/linalg.h"
#include "ephemeris/de/state_batch.h"
#include "solsys/observer_state.h"
#include "solsys/place_kernel.h"
#include "solsys/states.h"

namespace solsys {

// A body whose states come from the open file and nowhere else.
class FileBody {
  public:
    // Empty under the classic reduction, without a file, and for bodies that are not in it or
    // are integrated. Good until the file is changed.
    static std::optional<FileBody> of(const Bodies& bodies, const StateSource& source);

    // Heliocentric states at up to eight instants, TDB; NaN where the file does not reach, and
    // beyond the last instant.
    void states(std::span<const Instant> tdb, SeriesSums& out) const;
    // Its Deflector, -1 for none.
    [[nodiscard]] int deflector() const { return deflector_; }

  private:
    std::optional<DeSeries> series_;  // none: the Sun itself
    int deflector_ = -1;
};

// The frame that places are asked for in.
void put_observer(const ObserverPlace& place, const Mat3& frame_from_j2000, std::size_t lane,
                  ObserverLanes& out);

// Where the light left that arrives at `tdb`. `out.tau` holds first guesses [day], zeros for
// none. It is then right for places by `see`, for these observers and for others who are not
// farther from them than some thousand kilometres; NaN where the file does not reach.
void find_emission(const FileBody& body, const ObserverLanes& observers,
                   std::span<const Instant> tdb, LightLanes& out);

void see(const FileBody& body, const ObserverLanes& observers, const LightLanes& light,
         SeenLanes& out);

}  // namespace solsys
