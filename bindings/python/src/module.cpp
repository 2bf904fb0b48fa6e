#include "bindings.h"

PYBIND11_MODULE(_core, module) {
    module.doc() = "The compiled part of solsys; use the names of the package itself.";
    solsys::python::bind_values(module);
    solsys::python::bind_places(module);
    solsys::python::bind_risings(module);
    solsys::python::bind_events(module);
    solsys::python::bind_eclipses(module);
    solsys::python::bind_satellites(module);
    solsys::python::bind_earth_satellites(module);
    solsys::python::bind_survey(module);
    solsys::python::bind_pictures(module);
}
