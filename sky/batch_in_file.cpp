#include "sky/batch_in_file.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>
#include <vector>

#include "sky/batch_lanes.h"
#include "sky/dynamical_time.h"
#include "sky/shown_magnitude.h"
#include "solsys/body_magnitude.h"
#include "solsys/model.h"
#include "solsys/reduction.h"

namespace solsys::sky {

namespace {

constexpr double kNoPlace = std::numeric_limits<double>::quiet_NaN();

// Instants of a batch from the number `first` on, up to eight: as the model would take them,
// and as the file does.
struct TimesOfGroup {
    std::size_t first = 0, count = 0;
    solsys::Instant now[kGroup], tdb[kGroup];

    [[nodiscard]] std::span<const solsys::Instant> in_file() const { return {tdb, count}; }
};

// `use(times)` for all instants of a batch, until it is stopped.
template <class Use>
void in_groups(Model& model, std::span<const Instant> instants, Pulse& pulse, PartOfBatch part,
               Use&& use) {
    const auto all = static_cast<double>(instants.size());
    DynamicalTime dynamical;
    TimesOfGroup times;
    for (std::size_t first = 0; first < instants.size(); first += kGroup) {
        if (!pulse.goes_on(part.of_whole(static_cast<double>(first) / all))) return;
        times.first = first;
        times.count = std::min(kGroup, instants.size() - first);
        for (std::size_t i = 0; i < times.count; ++i) {
            times.now[i] = dynamical(instants[first + i]);
            times.tdb[i] = model.classic().Inside().reduction->dynamical(times.now[i]);
        }
        use(times);
    }
}

bool is_earth_centre(const OBSERVER& observer) {
    const OBSERVER centre = earth_centre();
    return observer.body_type == centre.body_type &&
           observer.body_number == centre.body_number && observer.kind == centre.kind &&
           std::equal(std::begin(observer.location), std::end(observer.location),
                      std::begin(centre.location));
}

Vec3 position(const SeriesSums& sums, std::size_t i) {
    return {sums.value[0][i], sums.value[1][i], sums.value[2][i]};
}

}  // namespace

void states_in_file(Model& model, std::span<const Body> bodies,
                    std::span<const Instant> instants, std::span<StateVector> out, Pulse& pulse,
                    PartOfBatch part) {
    const auto in_file = bodies_in_file(model, bodies);
    in_groups(model, instants, pulse, part, [&](const TimesOfGroup& times) {
        for (std::size_t b = 0; b < bodies.size(); ++b) {
            SeriesSums sums;
            if (!in_file[b]) continue;
            in_file[b]->states(times.in_file(), sums);
            copy_states(sums, out.subspan(b * instants.size() + times.first, times.count));
        }
    });
}

void magnitudes_in_file(Model& model, std::span<const Body> bodies,
                        std::span<const Instant> instants, std::span<double> out, Pulse& pulse,
                        PartOfBatch part) {
    const CSWSolSys::Model& m = model.classic().Inside();
    const auto earth = FileBody::of(m.bodies, find_source(m.bodies, SSO_ID(SSO_PLNT, 3)));
    if (!earth || !is_earth_centre(m.current.observer.record)) return;
    const auto in_file = bodies_in_file(model, bodies);
    in_groups(model, instants, pulse, part, [&](const TimesOfGroup& times) {
        SeriesSums here, there;
        earth->states(times.in_file(), here);
        for (std::size_t b = 0; b < bodies.size(); ++b) {
            if (!in_file[b]) continue;
            in_file[b]->states(times.in_file(), there);
            const StateSource source = find_source(m.bodies, bodies[b].id);
            for (std::size_t i = 0; i < times.count; ++i) {
                const Vec3 observer = position(here, i), body = position(there, i);
                float magnitude = 0;
                if (std::isfinite(observer.x) &&
                    magnitude_by_law(m.bodies, source, body, observer, times.now[i], magnitude))
                    out[b * instants.size() + times.first + i] =
                        shown_magnitude(magnitude).value_or(kNoPlace);
            }
        }
    });
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
