// Minor planets by the million: those in a field, those that come near the Earth.
#include "bindings.h"
#include "shared_model.h"
#include "table.h"

namespace solsys::python {
namespace {

using sky::MinorPlanetSurvey;
using sky::SurveyApproach;
using sky::SurveyFind;

MinorPlanetSurvey read_file(const std::string& path) {
    const py::gil_scoped_release released;
    auto survey = MinorPlanetSurvey::read(path);
    const py::gil_scoped_acquire acquired;
    return value_of(std::move(survey), "path");
}

py::dict in_field(SharedModel& shared, const MinorPlanetSurvey& survey, const JulianPairs& time,
                  const sky::SurveyField& field, bool two_body,
                  const std::optional<sky::Site>& site, const py::object& progress) {
    const sky::Instant t = instants_of(time).at(0);
    const auto rows = shared.search(site, progress, [&](sky::Model& model, Watch& watch) {
        sky::SurveyOptions options;
        options.two_body = two_body;
        options.control = watch.control();
        return model.move_to(t) ? survey.in_field(model, field, options)
                                : std::vector<SurveyFind>();
    });
    return Table(rows)
        .column("body", &SurveyFind::body)
        .column("ra_deg", &SurveyFind::ra_deg)
        .column("dec_deg", &SurveyFind::dec_deg)
        .column("distance_au", &SurveyFind::distance_au)
        .column("separation_deg", &SurveyFind::separation_deg)
        .column("magnitude", &SurveyFind::magnitude)
        .dict();
}

py::dict near_earth(SharedModel& shared, const MinorPlanetSurvey& survey,
                    const JulianPairs& span, double within_au, bool two_body,
                    const py::object& progress) {
    const sky::Span when = span_of(span);
    const auto rows = shared.search({}, progress, [&](sky::Model& model, Watch& watch) {
        sky::SurveyOptions options;
        options.two_body = two_body;
        options.control = watch.control();
        return survey.near_earth(model, when, within_au, options);
    });
    return Table(rows)
        .column("time", [](const SurveyApproach& a) { return a.approach.time; })
        .column("body", &SurveyApproach::body)
        .column("distance_au", [](const SurveyApproach& a) { return a.approach.distance_au; })
        .column("speed_km_s", [](const SurveyApproach& a) { return a.approach.speed_km_s; })
        .dict();
}

}  // namespace

void bind_survey(py::module_& module) {
    py::class_<MinorPlanetSurvey>(module, "Survey")
        .def(py::init(&read_file))
        .def("__len__", &MinorPlanetSurvey::size)
        .def(
            "in_field",
            [](const MinorPlanetSurvey& survey, SharedModel& model, const JulianPairs& time,
               double ra_deg, double dec_deg, double radius_deg, double faintest, bool two_body,
               const std::optional<sky::Site>& site, const py::object& progress) {
                return in_field(model, survey, time, {ra_deg, dec_deg, radius_deg, faintest},
                                two_body, site, progress);
            })
        .def("near_earth",
             [](const MinorPlanetSurvey& survey, SharedModel& model, const JulianPairs& span,
                double within_au, bool two_body, const py::object& progress) {
                 return near_earth(model, survey, span, within_au, two_body, progress);
             });
}

}  // namespace solsys::python
