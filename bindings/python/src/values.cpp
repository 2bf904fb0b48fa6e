// Instants, sites and bodies.
#include <pybind11/operators.h>

#include <cmath>
#include <cstring>
#include <type_traits>

#include "bindings.h"
#include "solsys/version.h"

namespace solsys::python {
namespace {

using sky::Body;
using sky::Instant;
using sky::JulianDate;
using sky::Site;

// Day and fraction may be any numbers; what is not finite was refused before.
JulianDate split(double a, double b) {
    const double day = std::floor(a);
    return {static_cast<int>(day), (a - day) + b};
}

// Refuses what is no row of two numbers, or beyond the calendar's reach.
const double* rows_of(const JulianPairs& pairs) {
    if (pairs.ndim() != 2 || pairs.shape(1) != 2)
        throw py::value_error("instants: wanted rows of a day and a fraction");
    const double* p = pairs.data();
    for (py::ssize_t i = 0; i < pairs.size(); ++i)
        if (!(std::fabs(p[i]) < 1e9)) throw py::value_error("instants: not a Julian date");
    return p;
}

std::vector<Instant> read(const JulianPairs& pairs, Instant (*from)(JulianDate)) {
    const double* p = rows_of(pairs);
    std::vector<Instant> out(static_cast<std::size_t>(pairs.shape(0)));
    for (std::size_t i = 0; i < out.size(); ++i) out[i] = from(split(p[2 * i], p[2 * i + 1]));
    return out;
}

JulianPairs pairs_of(const std::vector<JulianDate>& dates) {
    JulianPairs pairs({static_cast<py::ssize_t>(dates.size()), py::ssize_t{2}});
    double* p = pairs.mutable_data();
    for (const JulianDate& date : dates) {
        *p++ = date.day;
        *p++ = date.fraction;
    }
    return pairs;
}

JulianPairs utc_of_tt(const JulianPairs& tt) {
    std::vector<JulianDate> utc;
    for (const Instant& t : read(tt, &Instant::from_tt)) utc.push_back(t.utc());
    return pairs_of(utc);
}

JulianPairs tt_of_utc(const JulianPairs& utc) {
    std::vector<JulianDate> tt;
    for (const Instant& t : instants_of(utc)) tt.push_back(t.tt());
    return pairs_of(tt);
}

JulianPairs parse_instant(const std::string& text) {
    return pairs_of({value_of(sky::parse_time(text), "time").utc()});
}

Site make_site(double latitude, double longitude, double height, double above_horizon,
               std::string name, std::string zone) {
    if (!(std::fabs(latitude) <= 90))
        throw py::value_error("latitude_deg: must lie between -90 and 90");
    if (!(std::fabs(longitude) <= 360))
        throw py::value_error("longitude_deg: must lie between -360 and 360");
    if (!(std::fabs(height) <= 1e6))
        throw py::value_error("height_m: must lie within 1000 km of the sea");
    if (!(above_horizon >= 0 && above_horizon <= 1e5))
        throw py::value_error("above_horizon_m: must lie between 0 and 100 km");
    value_of(sky::Zone::find(zone), "zone");
    Site site;
    site.name = std::move(name);
    site.latitude_deg = latitude;
    site.longitude_deg = longitude;
    site.height_m = height;
    site.above_horizon_m = above_horizon;
    site.zone = std::move(zone);
    return site;
}

py::tuple parts_of(const Site& s) {
    return py::make_tuple(s.latitude_deg, s.longitude_deg, s.height_m, s.above_horizon_m,
                          s.name, s.zone, s.country);
}

Site site_from(const py::tuple& parts) {
    Site site = make_site(parts[0].cast<double>(), parts[1].cast<double>(),
                          parts[2].cast<double>(), parts[3].cast<double>(),
                          parts[4].cast<std::string>(), parts[5].cast<std::string>());
    site.country = parts[6].cast<std::string>();
    return site;
}

std::string describe(const Site& s) {
    return "<Site " + (s.name.empty() ? "" : s.name + " ") +
           sky::coordinate_text(s.latitude_deg, false) + " " +
           sky::coordinate_text(s.longitude_deg, true) + " " +
           std::to_string(std::lround(s.height_m)) + " m>";
}

void bind_site(py::module_& module) {
    py::class_<Site>(module, "Site", R"(A place on the Earth.

latitude_deg is geodetic (WGS 84), north positive; longitude_deg east positive; height_m above
the sea. above_horizon_m, the height above the surroundings as far as the horizon, lowers the
horizon: 0 in a valley or on a plateau. zone is an IANA name.)")
        .def(py::init(&make_site), py::arg("latitude_deg"), py::arg("longitude_deg"),
             py::arg("height_m") = 0.0, py::kw_only(), py::arg("above_horizon_m") = 0.0,
             py::arg("name") = "", py::arg("zone") = "UTC")
        .def_readonly("latitude_deg", &Site::latitude_deg)
        .def_readonly("longitude_deg", &Site::longitude_deg)
        .def_readonly("height_m", &Site::height_m)
        .def_readonly("above_horizon_m", &Site::above_horizon_m)
        .def_readonly("name", &Site::name)
        .def_readonly("zone", &Site::zone)
        .def_readonly("country", &Site::country)
        .def("__repr__", &describe)
        .def(
            "__eq__",
            [](const Site& a, const Site& b) { return parts_of(a).equal(parts_of(b)); },
            py::is_operator())
        .def("__hash__", [](const Site& s) { return py::hash(parts_of(s)); })
        .def(py::pickle(&parts_of, &site_from));
    module.def("find_city",
               [](const std::string& name) { return value_of(sky::find_city(name), "name"); });
    module.def("parse_site",
               [](const std::string& text) { return value_of(sky::parse_site(text), "site"); });
    module.def("cities_called", &sky::cities_called);
}

template <class T>
py::bytes bytes_of(const T& value) {
    static_assert(std::is_trivially_copyable_v<T>);
    return {reinterpret_cast<const char*>(&value), sizeof value};
}

template <class T>
T from_bytes(const py::object& bytes) {
    const auto raw = bytes.cast<std::string>();
    T value{};
    if (raw.size() != sizeof value)
        throw py::value_error("a Body pickled by another version of the library");
    std::memcpy(&value, raw.data(), sizeof value);
    return value;
}

py::tuple state_of(const Body& b) {
    const py::bytes record = std::visit([](const auto& r) { return bytes_of(r); }, b.record);
    return py::make_tuple(b.id.type, b.id.number, b.id.name, b.name, b.record.index(), record,
                          b.elements_epoch);
}

template <std::size_t kKind = 0>
Body::Record record_from(std::size_t kind, const py::object& bytes) {
    if constexpr (kKind < std::variant_size_v<Body::Record>) {
        if (kind != kKind) return record_from<kKind + 1>(kind, bytes);
        return from_bytes<std::variant_alternative_t<kKind, Body::Record>>(bytes);
    } else {
        throw py::value_error("a Body pickled by another version of the library");
    }
}

Body body_from(const py::tuple& state) {
    SSO_ID id(state[0].cast<std::int32_t>(), state[1].cast<std::int32_t>());
    const auto name = state[2].cast<std::string>();
    name.copy(id.name, sizeof id.name - 1);
    Body body(id, state[3].cast<std::string>(),
              record_from(state[4].cast<std::size_t>(), state[5]));
    body.elements_epoch = state[6].cast<double>();
    return body;
}

void bind_body(py::module_& module) {
    py::class_<Body>(module, "Body", R"(A body that places can be asked of; see find_body.

code is "plnt:5", "moon:501", "hip:32349" ...; elements_jd_tt is the epoch of orbital elements,
NaN for bodies without.)")
        .def_readonly("name", &Body::name)
        .def_property_readonly("code", [](const Body& b) { return sky::code_of(b.id); })
        .def_property_readonly("is_star", &Body::is_star)
        .def_property_readonly(
            "elements_jd_tt",
            [](const Body& b) { return b.has_elements() ? b.elements_epoch : std::nan(""); })
        .def("__repr__", [](const Body& b) { return "<Body " + b.name + ">"; })
        .def(py::pickle(&state_of, &body_from));
    module.def("find_bodies", [](const std::string& name) {
        return value_of(sky::find_bodies(name), "bodies");
    });
    module.def("find_small_body", [](const std::string& name) {
        return value_of(sky::find_small_body(name), "name");
    });
    module.def("parse_elements", [](const std::string& text) {
        return value_of(sky::parse_elements(text), "elements");
    });
    module.def("find_in_file", [](const std::string& path, const std::string& object) {
        return value_of(sky::find_in_file(path, object, Instant()), "path");
    });
}

}  // namespace

std::vector<Instant> instants_of(const JulianPairs& pairs) {
    return read(pairs, &Instant::from_utc);
}

sky::Span span_of(const JulianPairs& pairs) {
    const auto ends = instants_of(pairs);
    if (ends.size() != 2) throw py::value_error("span: wanted a start and an end");
    return {ends[0], ends[1]};
}

void bind_values(py::module_& module) {
    module.attr("__version__") = SOLSYS_VERSION;
    module.def("utc_of_tt", &utc_of_tt);
    module.def("tt_of_utc", &tt_of_utc);
    module.def("parse_instant", &parse_instant);
    bind_site(module);
    bind_body(module);
}

}  // namespace solsys::python
