// What the sources of the extension share: instants and bodies from Python's arguments, and the
// parts of the module.
//
// The package's Python files check and convert what users hand over; what arrives here is
// already an array of Julian dates in UTC, a Body, a Site.
#pragma once

#include <pybind11/numpy.h>
#include <pybind11/pybind11.h>
#include <pybind11/stl.h>

#include <string>
#include <vector>

#include "solsys/sky/sky.h"

namespace solsys::python {

namespace py = pybind11;

// Julian dates in UTC, a row for each instant: a day and a fraction to be added to it.
using JulianPairs = py::array_t<double, py::array::c_style | py::array::forcecast>;

std::vector<sky::Instant> instants_of(const JulianPairs& pairs);
// Of two rows.
sky::Span span_of(const JulianPairs& pairs);

// The value, or a ValueError with the message behind the argument's name.
template <class T>
T value_of(sky::Result<T> result, const char* argument) {
    if (!result) throw py::value_error(std::string(argument) + ": " + result.message());
    return std::move(*result);
}

void bind_values(py::module_& module);
void bind_places(py::module_& module);
void bind_risings(py::module_& module);
void bind_events(py::module_& module);
void bind_eclipses(py::module_& module);
void bind_satellites(py::module_& module);
void bind_earth_satellites(py::module_& module);
void bind_survey(py::module_& module);
void bind_pictures(py::module_& module);

}  // namespace solsys::python
