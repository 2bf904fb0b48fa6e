// The part of a batch that is computed of the DE file alone, under the modern reduction, and
// what remains NaN for bodies or instants that are not in it.
#pragma once

#include <span>

#include "sky/batch_walk.h"
#include "solsys/sky/batch.h"

namespace solsys::sky {

// The model need not be moved for these two.
void states_in_file(Model& model, std::span<const Body> bodies,
                    std::span<const Instant> instants, std::span<StateVector> out, Pulse& pulse,
                    PartOfBatch part);

// Seen from the Earth's centre; for other observers nothing.
void magnitudes_in_file(Model& model, std::span<const Body> bodies,
                        std::span<const Instant> instants, std::span<double> out, Pulse& pulse,
                        PartOfBatch part);

// The light of a body leaves for all sites at once. Moves the model's observer.
void horizontals_in_file(Model& model, std::span<const Site> sites,
                         std::span<const Body> bodies, std::span<const Instant> instants,
                         std::span<Horizontal> out, Pulse& pulse, PartOfBatch part);

}  // namespace solsys::sky
