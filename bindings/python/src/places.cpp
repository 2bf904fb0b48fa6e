// Places, states and looks of bodies at many instants.
#include <cstdint>

#include "bindings.h"
#include "shared_model.h"
#include "table.h"

namespace solsys::python {
namespace {

using sky::Body;
using sky::Instant;
using sky::Place;
using Bodies = std::vector<Body>;
using MaybeSite = std::optional<sky::Site>;

py::ssize_t length(std::size_t n) { return static_cast<py::ssize_t>(n); }

template <class T, int kFlags>
std::span<T> span_over(py::array_t<T, kFlags>& array) {
    return {array.mutable_data(), static_cast<std::size_t>(array.size())};
}

// What a batch of the typed layer fills: an array of a row for each body.
template <class T, class Batch>
py::array_t<T> fill(SharedModel& shared, const Bodies& bodies, const JulianPairs& times,
                    const MaybeSite& site, Batch batch) {
    const auto instants = instants_of(times);
    py::array_t<T> out({length(bodies.size()), length(instants.size())});
    const std::span<T> values = span_over(out);
    const auto done = shared.search(site, py::none(), [&](sky::Model& model, Watch& watch) {
        return batch(model, bodies, instants, values, watch.control());
    });
    value_of(done, "bodies");
    return out;
}

py::array_t<Place> apparent(SharedModel& shared, const Bodies& bodies, const JulianPairs& times,
                            const MaybeSite& site) {
    return fill<Place>(shared, bodies, times, site, &sky::apparent_places);
}

py::array_t<Place> astrometric(SharedModel& shared, const Bodies& bodies,
                               const JulianPairs& times, const MaybeSite& site) {
    return fill<Place>(shared, bodies, times, site, &sky::astrometric_places);
}

py::array_t<double> magnitudes(SharedModel& shared, const Bodies& bodies,
                               const JulianPairs& times, const MaybeSite& site) {
    return fill<double>(shared, bodies, times, site, &sky::magnitudes);
}

py::array_t<std::int8_t> constellations(SharedModel& shared, const Bodies& bodies,
                                        const JulianPairs& times, const MaybeSite& site) {
    std::vector<Place> places(bodies.size() * static_cast<std::size_t>(times.shape(0)));
    return fill<std::int8_t>(
        shared, bodies, times, site,
        [&](sky::Model& model, const Bodies& all, const std::vector<Instant>& instants,
            std::span<std::int8_t> out, sky::SearchControl* control) {
            const auto placed = sky::apparent_places(model, all, instants, places, control);
            return placed ? sky::constellations(model, instants, places, out, control) : placed;
        });
}

py::array_t<double> states(SharedModel& shared, const Bodies& bodies,
                           const JulianPairs& times) {
    const auto instants = instants_of(times);
    py::array_t<double> out({length(bodies.size()), length(instants.size()), length(6)});
    auto* rows = reinterpret_cast<sky::StateVector*>(out.mutable_data());
    const std::span<sky::StateVector> values(rows, bodies.size() * instants.size());
    const auto done = shared.search({}, py::none(), [&](sky::Model& model, Watch& watch) {
        return sky::heliocentric_states(model, bodies, instants, values, watch.control());
    });
    value_of(done, "bodies");
    return out;
}

py::array_t<sky::Horizontal> horizontal(SharedModel& shared, const Bodies& bodies,
                                        const JulianPairs& times,
                                        const std::vector<sky::Site>& sites) {
    const auto instants = instants_of(times);
    py::array_t<sky::Horizontal> out(
        {length(sites.size()), length(bodies.size()), length(instants.size())});
    const auto values = span_over(out);
    const auto done = shared.search({}, py::none(), [&](sky::Model& model, Watch& watch) {
        return sky::horizontals(model, sites, bodies, instants, values, watch.control());
    });
    value_of(done, "bodies");
    return out;
}

// By their numbers.
std::vector<std::string> constellation_abbreviations() {
    std::vector<std::string> all;
    for (int i = 0; sky::constellation_number(i).index == i; ++i)
        all.emplace_back(sky::constellation_number(i).abbreviation);
    return all;
}

using Places = py::array_t<Place, py::array::c_style>;

py::array_t<double> separation(Places first, Places second) {
    py::array_t<double> out(std::max(first.size(), second.size()));
    value_of(sky::separations(span_over(first), span_over(second), span_over(out)), "first");
    return out;
}

// A line of an ephemeris: the body at an instant, and how it looks.
struct Line {
    std::string body;
    Instant at;
    std::optional<Place> place;
    sky::Appearance looks;
    std::optional<sky::Horizontal> over;
};

Line line_of(sky::Model& model, const Body& body, const Instant& t) {
    Line line{body.name, t, {}, {}, {}};
    if (!model.move_to(t)) return line;
    line.place = sky::apparent_place(model, body);
    if (!line.place) return line;
    line.looks = sky::appearance_of(model, body, *line.place);
    if (model.site()) line.over = sky::horizontal_of(model, *line.place);
    return line;
}

template <class Part, class Value>
auto of_part(std::optional<Part> Line::*part, Value Part::*member) {
    return [=](const Line& line) {
        return line.*part ? std::optional<double>((*(line.*part)).*member) : std::nullopt;
    };
}

template <class Value>
auto of_looks(Value sky::Appearance::*member) {
    return [=](const Line& line) { return line.looks.*member; };
}

py::dict table_of(const std::vector<Line>& lines, bool over_horizon) {
    Table<Line> table(lines);
    table.column("body", &Line::body)
        .column("time", &Line::at)
        .column("ra_deg", of_part(&Line::place, &Place::ra_deg))
        .column("dec_deg", of_part(&Line::place, &Place::dec_deg))
        .column("distance_au", of_part(&Line::place, &Place::distance_au));
    if (over_horizon)
        table.column("azimuth_deg", of_part(&Line::over, &sky::Horizontal::azimuth_deg))
            .column("altitude_deg", of_part(&Line::over, &sky::Horizontal::altitude_deg));
    table.column("magnitude", of_looks(&sky::Appearance::magnitude))
        .column("elongation_deg", of_looks(&sky::Appearance::elongation_deg))
        .column("phase_angle_deg", of_looks(&sky::Appearance::phase_angle_deg))
        .column("illuminated", of_looks(&sky::Appearance::illuminated_fraction))
        .column("diameter_arcsec", of_looks(&sky::Appearance::angular_diameter_arcsec))
        .column("constellation", of_looks(&sky::Appearance::constellation));
    return table.dict();
}

py::dict ephemeris(SharedModel& shared, const Bodies& bodies, const JulianPairs& times,
                   const MaybeSite& site, const py::object& progress) {
    const auto instants = instants_of(times);
    std::vector<Line> lines;
    const auto added = shared.search(site, progress, [&](sky::Model& model, Watch& watch) {
        lines.reserve(bodies.size() * instants.size());
        for (const Body& body : bodies) {
            if (const auto known = model.add(body); !known) return known;
            for (const Instant& t : instants) {
                lines.push_back(line_of(model, body, t));
                if (!watch.tell(static_cast<double>(lines.size()) /
                                static_cast<double>(bodies.size() * instants.size())))
                    return sky::Result<bool>(true);
            }
        }
        return sky::Result<bool>(true);
    });
    value_of(added, "bodies");
    return table_of(lines, site.has_value());
}

}  // namespace

void bind_places(py::module_& module) {
    PYBIND11_NUMPY_DTYPE(Place, ra_deg, dec_deg, distance_au, light_time_days);
    PYBIND11_NUMPY_DTYPE(sky::Horizontal, azimuth_deg, altitude_deg);
    py::class_<SharedModel>(module, "Model")
        .def(py::init<const std::string&, bool>())
        .def("apparent", &apparent)
        .def("astrometric", &astrometric)
        .def("magnitudes", &magnitudes)
        .def("constellations", &constellations)
        .def("states", &states)
        .def("horizontal", &horizontal)
        .def("ephemeris", &ephemeris);
    module.def("constellation_abbreviations", &constellation_abbreviations);
    module.def("separation", &separation);
}

}  // namespace solsys::python
