// Pictures as SVG, those of the command.
#include "bindings.h"
#include "draw/icalendar.h"
#include "draw/planet_chart.h"
#include "shared_model.h"

namespace solsys::python {
namespace {

std::string planet_chart(SharedModel& shared, const JulianPairs& span, const std::string& title,
                         bool light) {
    const sky::Span when = span_of(span);
    return shared.search({}, py::none(), [&](sky::Model& model, Watch& watch) {
        const auto curves = sky::elongation_curves(model, when);
        const auto events = sky::diary(model, when, {}, watch.control());
        return draw::planet_chart(curves, events, when, title, light).str();
    });
}

}  // namespace

void bind_pictures(py::module_& module) { module.def("planet_chart", &planet_chart); }

}  // namespace solsys::python
