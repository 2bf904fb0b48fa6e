// Planets with their satellites.
#include "bindings.h"
#include "shared_model.h"
#include "table.h"

namespace solsys::python {
namespace {

using sky::Body;
using sky::SatellitePhenomenon;
using sky::SatelliteView;

struct Beside {
    sky::Instant at;
    SatelliteView view;
};

template <class Value>
auto of(Value SatelliteView::*member) {
    return [=](const Beside& row) { return row.view.*member; };
}

py::dict satellites(SharedModel& shared, const Body& planet, const JulianPairs& times,
                    const std::optional<sky::Site>& site, bool all,
                    const py::object& progress) {
    const auto instants = instants_of(times);
    const auto rows = shared.search(site, progress, [&](sky::Model& model, Watch& watch) {
        std::vector<Beside> out;
        const auto moons = sky::moons_of(model, planet, all);
        for (std::size_t i = 0; i < instants.size(); ++i) {
            if (!watch.tell(static_cast<double>(i) / static_cast<double>(instants.size())))
                break;
            if (!model.move_to(instants[i])) continue;
            const auto disk = sky::view_planet(model, planet);
            if (!disk) continue;
            for (const Body& moon : moons)
                if (const auto view = sky::view_satellite(model, *disk, moon))
                    out.push_back({instants[i], *view});
        }
        return out;
    });
    return Table(rows)
        .column("time", &Beside::at)
        .column("moon", of(&SatelliteView::moon))
        .column("x_radii", of(&SatelliteView::x_radii))
        .column("y_radii", of(&SatelliteView::y_radii))
        .column("east_arcsec", of(&SatelliteView::east_arcsec))
        .column("north_arcsec", of(&SatelliteView::north_arcsec))
        .column("separation_radii", of(&SatelliteView::separation_radii))
        .column("distance_au", of(&SatelliteView::distance_au))
        .column("in_front", of(&SatelliteView::in_front))
        .column("phenomenon", [](const Beside& row) { return row.view.phenomenon(); })
        .dict();
}

py::dict phenomena(SharedModel& shared, const Body& planet, const JulianPairs& span,
                   bool mutual, const py::object& progress) {
    const sky::Span when = span_of(span);
    const auto rows = shared.search({}, progress, [&](sky::Model& model, Watch& watch) {
        return sky::satellite_phenomena(model, planet, when, mutual, watch.control());
    });
    return Table(rows)
        .column("time", &SatellitePhenomenon::at)
        .column("moon", &SatellitePhenomenon::moon)
        .column("kind", [](const SatellitePhenomenon& p) { return to_string(p.kind); })
        .column("begins", &SatellitePhenomenon::begins)
        .column("hidden", &SatellitePhenomenon::hidden)
        .column("other", &SatellitePhenomenon::other)
        .dict();
}

}  // namespace

void bind_satellites(py::module_& module) {
    module.def("satellites", &satellites);
    module.def("satellite_phenomena", &phenomena);
}

}  // namespace solsys::python
