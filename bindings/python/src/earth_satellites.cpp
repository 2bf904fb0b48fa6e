// Satellites of the Earth by element sets: their passes over a site, and where they stand.
#include "bindings.h"
#include "shared_model.h"
#include "table.h"

namespace solsys::python {
namespace {

using sky::Pass;
using sky::Satellite;
using sky::SatellitePlace;
using Satellites = std::vector<Satellite>;
using MaybePlace = std::optional<SatellitePlace>;

const char* name_of(sky::Light light) {
    switch (light) {
        case sky::Light::sunlit:
            return "sunlit";
        case sky::Light::penumbra:
            return "penumbra";
        default:
            return "umbra";
    }
}

// A figure of one of the places of a pass; without the place none.
template <class Value>
auto at(std::optional<SatellitePlace> Pass::*place, Value SatellitePlace::*member) {
    return [=](const Pass& p) {
        return p.*place ? std::optional(*(p.*place).*member) : std::nullopt;
    };
}
template <class Value>
auto highest(Value SatellitePlace::*member) {
    return [=](const Pass& p) { return p.culmination.*member; };
}

std::optional<double> best_magnitude(const Pass& p) {
    return p.best ? p.best->magnitude : std::nullopt;
}

// Of the first change into the light named; empty: none in the pass.
auto begins(sky::Light light) {
    return [light](const Pass& p) -> std::optional<sky::Instant> {
        for (const sky::LightChange& change : p.light_changes)
            if (change.place.light == light) return change.place.at;
        return std::nullopt;
    };
}

py::dict passes(SharedModel& shared, const Satellite& satellite, const JulianPairs& span,
                const sky::Site& site, double horizon_deg, double culmination_deg,
                const py::object& progress) {
    const sky::Span when = span_of(span);
    const auto rows = shared.search({}, progress, [&](sky::Model& model, Watch& watch) {
        return sky::passes(model, site, satellite, when, {horizon_deg, culmination_deg},
                           watch.control());
    });
    return Table(rows)
        .column("rise", at(&Pass::rise, &SatellitePlace::at))
        .column("culmination", highest(&SatellitePlace::at))
        .column("set", at(&Pass::set, &SatellitePlace::at))
        .column("rise_azimuth_deg", at(&Pass::rise, &SatellitePlace::azimuth_deg))
        .column("culmination_azimuth_deg", highest(&SatellitePlace::azimuth_deg))
        .column("culmination_altitude_deg", highest(&SatellitePlace::altitude_deg))
        .column("culmination_range_km", highest(&SatellitePlace::range_km))
        .column("set_azimuth_deg", at(&Pass::set, &SatellitePlace::azimuth_deg))
        .column("into_shadow", begins(sky::Light::umbra))
        .column("into_light", begins(sky::Light::sunlit))
        .column("best", at(&Pass::best, &SatellitePlace::at))
        .column("best_azimuth_deg", at(&Pass::best, &SatellitePlace::azimuth_deg))
        .column("best_altitude_deg", at(&Pass::best, &SatellitePlace::altitude_deg))
        .column("best_magnitude", &best_magnitude)
        .dict();
}

// Without a state: a row of NaN.
py::dict satellite_places(SharedModel& shared, const Satellite& satellite,
                          const JulianPairs& times, const sky::Site& site) {
    const auto instants = instants_of(times);
    const auto rows = shared.search({}, py::none(), [&](sky::Model& model, Watch& watch) {
        std::vector<std::pair<sky::Instant, MaybePlace>> out;
        for (const sky::Instant& t : instants) {
            out.emplace_back(t, sky::satellite_place(model, site, satellite, t));
            if (!watch.tell(static_cast<double>(out.size()) /
                            static_cast<double>(instants.size())))
                break;
        }
        return out;
    });
    using Row = std::pair<sky::Instant, MaybePlace>;
    const auto of = [](auto SatellitePlace::*member) {
        return [=](const Row& row) {
            return row.second ? std::optional<double>(*row.second.*member) : std::nullopt;
        };
    };
    return Table(rows)
        .column("time", &Row::first)
        .column("azimuth_deg", of(&SatellitePlace::azimuth_deg))
        .column("altitude_deg", of(&SatellitePlace::altitude_deg))
        .column("range_km", of(&SatellitePlace::range_km))
        .column("height_km", of(&SatellitePlace::height_km))
        .column("light",
                [](const Row& row) { return row.second ? name_of(row.second->light) : ""; })
        .column("sun_visible", of(&SatellitePlace::sun_visible))
        .column("sun_altitude_deg", of(&SatellitePlace::sun_altitude_deg))
        .column(
            "magnitude",
            [](const Row& row) { return row.second ? row.second->magnitude : std::nullopt; })
        .dict();
}

// Satellites, and what was refused of the text.
std::pair<Satellites, std::vector<std::string>> in_two(sky::SatelliteList list) {
    return {std::move(list.satellites), std::move(list.problems)};
}

}  // namespace

void bind_earth_satellites(py::module_& module) {
    py::class_<Satellite>(module, "Satellite", R"(An Earth satellite by its element set.

epoch_jd_utc is that of the elements, period_minutes that of a revolution; standard_magnitude, that at 1000 km half lit, may be set
and is None where it is not known: passes tell no magnitudes then.)")
        .def_readonly("name", &Satellite::name)
        .def_property_readonly("number", [](const Satellite& s) { return s.elements.number; })
        .def_property_readonly("period_minutes", &Satellite::period_minutes)
        .def_readwrite("standard_magnitude", &Satellite::standard_magnitude)
        .def_property_readonly(
            "epoch_jd_utc",
            [](const Satellite& s) { return s.elements.epochDay + s.elements.epochFraction; })
        .def("__repr__", [](const Satellite& s) { return "<Satellite " + s.name + ">"; });
    module.def("parse_satellites",
               [](const std::string& text) { return in_two(sky::parse_satellites(text)); });
    module.def("read_satellites", [](const std::string& path) {
        return in_two(value_of(sky::read_satellites(path), "path"));
    });
    module.def("find_satellite", [](const Satellites& list, const std::string& name,
                                    const JulianPairs& near) {
        return value_of(sky::find_satellite(list, name, instants_of(near).at(0)), "name");
    });
    module.def("passes", &passes);
    module.def("satellite_places", &satellite_places);
}

}  // namespace solsys::python
