#include "sky/batch_in_file.h"

#include <algorithm>
#include <vector>

#include "sky/batch_lanes.h"
#include "sky/dynamical_time.h"
#include "solsys/model.h"
#include "solsys/reduction.h"

namespace solsys::sky {

void states_in_file(Model& model, std::span<const Body> bodies,
                    std::span<const Instant> instants, std::span<StateVector> out, Pulse& pulse,
                    PartOfBatch part) {
    const auto in_file = bodies_in_file(model, bodies);
    const auto all = static_cast<double>(instants.size());
    DynamicalTime dynamical;
    for (std::size_t first = 0; first < instants.size(); first += kGroup) {
        if (!pulse.goes_on(part.of_whole(static_cast<double>(first) / all))) return;
        const std::size_t count = std::min(kGroup, instants.size() - first);
        solsys::Instant tdb[kGroup];
        for (std::size_t i = 0; i < count; ++i)
            tdb[i] =
                model.classic().Inside().reduction->dynamical(dynamical(instants[first + i]));
        for (std::size_t b = 0; b < bodies.size(); ++b) {
            SeriesSums sums;
            if (!in_file[b]) continue;
            in_file[b]->states({tdb, count}, sums);
            copy_states(sums, out.subspan(b * instants.size() + first, count));
        }
    }
}

void horizontals_in_file(Model& model, std::span<const Site> sites,
                         std::span<const Body> bodies, std::span<const Instant> instants,
                         std::span<Horizontal> out, Pulse& pulse, PartOfBatch part) {
    const OBSERVER centre = earth_centre();
    model.classic().SetObserver(&centre);
    const auto in_file = bodies_in_file(model, bodies);
    std::vector<std::size_t> rows;
    for (std::size_t b = 0; b < bodies.size(); ++b)
        if (in_file[b]) rows.push_back(b);
    if (rows.empty()) return;

    std::vector<LightLanes> light(rows.size());
    PlaceGroup group;
    Walk walk(model, instants, pulse, part);
    const auto finish = [&] {
        for (std::size_t k = 0; k < rows.size(); ++k)
            group.find_emission(*in_file[rows[k]], light[k]);
        const std::size_t last = group.indices().back();
        for (std::size_t s = 0; s < sites.size() && walk.goes_on(last); ++s) {
            ObserverLanes observers{};
            group.stand_on(model, sites[s].observer(), observers);
            for (std::size_t k = 0; k < rows.size(); ++k)
                group.horizontals(*in_file[rows[k]], observers, light[k],
                                  out.subspan((s * bodies.size() + rows[k]) * instants.size(),
                                              instants.size()));
        }
        group.clear();
    };
    walk([&](std::size_t i) {
        group.add(model, i);
        if (group.full()) finish();
    });
    if (!group.empty()) finish();
}

}  // namespace solsys::sky
