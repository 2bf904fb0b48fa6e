// Searches: phases, conjunctions, gatherings, the diary, occultations, approaches.
#include "bindings.h"
#include "shared_model.h"
#include "table.h"

namespace solsys::python {
namespace {

using sky::Body;
using sky::DiaryEvent;
using sky::Instant;
using Site = std::optional<sky::Site>;

py::dict phases(SharedModel& shared, const JulianPairs& span) {
    const sky::Span when = span_of(span);
    const auto rows =
        shared.ask({}, [&](sky::Model& model) { return sky::principal_phases(model, when); });
    return Table(rows)
        .column("time", &sky::PhaseEvent::at)
        .column("phase", [](const sky::PhaseEvent& e) { return to_string(e.phase); })
        .dict();
}

py::dict conjunctions(SharedModel& shared, const Body& first, const Body& second,
                      const JulianPairs& span, sky::ConjunctionWay way, double within_deg,
                      const py::object& progress) {
    const sky::Span when = span_of(span);
    const auto rows = shared.search({}, progress, [&](sky::Model& model, Watch& watch) {
        return sky::conjunctions(model, first, second, when, way, within_deg, watch.control());
    });
    return Table(rows)
        .column("time", &sky::Conjunction::at)
        .column("separation_deg", &sky::Conjunction::separation_deg)
        .column("position_angle_deg", &sky::Conjunction::position_angle_deg)
        .column("elongation_deg", &sky::Conjunction::elongation_deg)
        .dict();
}

py::dict gatherings(SharedModel& shared, const std::vector<Body>& bodies,
                    const JulianPairs& span, double within_deg, const py::object& progress) {
    const sky::Span when = span_of(span);
    const auto rows = shared.search({}, progress, [&](sky::Model& model, Watch& watch) {
        return sky::gatherings(model, bodies, when, within_deg, watch.control());
    });
    return Table(rows)
        .column("time", &sky::Gathering::at)
        .column("radius_deg", &sky::Gathering::radius_deg)
        .column("ra_deg", &sky::Gathering::ra_deg)
        .column("dec_deg", &sky::Gathering::dec_deg)
        .column("start", [](const sky::Gathering& g) { return g.within.from; })
        .column("end", [](const sky::Gathering& g) { return g.within.to; })
        .column("elongation_deg", &sky::Gathering::elongation_deg)
        .dict();
}

std::string name_or_empty(const std::optional<Body>& body) { return body ? body->name : ""; }

py::dict table_of(const std::vector<DiaryEvent>& rows) {
    return Table(rows)
        .column("time", &DiaryEvent::at)
        .column("kind",
                [](const DiaryEvent& e) { return std::string(sky::name_of_kind(e.kind)); })
        .column("text", &DiaryEvent::text)
        .column("first", [](const DiaryEvent& e) { return name_or_empty(e.first); })
        .column("second", [](const DiaryEvent& e) { return name_or_empty(e.second); })
        .column("separation_deg", &DiaryEvent::separation_deg)
        .column("position_angle_deg", &DiaryEvent::position_angle_deg)
        .column("elongation_deg", &DiaryEvent::elongation_deg)
        .column("magnitude", &DiaryEvent::magnitude)
        .column("distance_au", &DiaryEvent::distance_au)
        .column("zhr", &DiaryEvent::zhr)
        .column("moon_illuminated", &DiaryEvent::moon_illuminated)
        .column("azimuth_deg", &DiaryEvent::azimuth_deg)
        .column("altitude_deg", &DiaryEvent::altitude_deg)
        .dict();
}

py::dict diary(SharedModel& shared, const JulianPairs& span,
               const std::vector<std::string>& kinds, const Site& site, bool stars,
               double widest_deg, const py::object& progress) {
    const sky::Span when = span_of(span);
    sky::DiaryOptions options;
    for (const std::string& kind : kinds) {
        options.kinds.push_back(sky::find_kind(kind));
        if (options.kinds.back() == 0)
            throw py::value_error("kinds: there is no \"" + kind + "\"; see diary_kinds()");
    }
    options.stars = stars;
    options.widest_conjunction_deg = widest_deg;
    return table_of(shared.search(site, progress, [&](sky::Model& model, Watch& watch) {
        return sky::diary(model, when, options, watch.control());
    }));
}

std::vector<std::string> diary_kinds() {
    std::vector<std::string> names;
    for (int kind = 1; !sky::name_of_kind(kind).empty(); ++kind)
        names.emplace_back(sky::name_of_kind(kind));
    return names;
}

py::dict occultations(SharedModel& shared, const sky::Site& site, const JulianPairs& span,
                      double faintest, bool planets, bool observable_only,
                      const py::object& progress) {
    using sky::LunarOccultation;
    const sky::Span when = span_of(span);
    const sky::OccultationOptions options{faintest, planets, observable_only};
    const auto rows = shared.search(site, progress, [&](sky::Model& model, Watch& watch) {
        return sky::lunar_occultations(model, when, options, watch.control());
    });
    return Table(rows)
        .column("time", &LunarOccultation::at)
        .column("body", &LunarOccultation::body)
        .column("contact", [](const LunarOccultation& o) { return to_string(o.contact); })
        .column("magnitude", &LunarOccultation::magnitude)
        .column("position_angle_deg", &LunarOccultation::position_angle_deg)
        .column("cusp_angle_deg", &LunarOccultation::cusp_angle_deg)
        .column("dark_limb", &LunarOccultation::dark_limb)
        .column("graze", &LunarOccultation::graze)
        .column("moon_altitude_deg", &LunarOccultation::moon_altitude_deg)
        .column("sun_altitude_deg", &LunarOccultation::sun_altitude_deg)
        .column("moon_illuminated", &LunarOccultation::moon_illuminated)
        .dict();
}

py::dict approaches(SharedModel& shared, const Body& body, const JulianPairs& span,
                    double within_au, bool two_body, const py::object& progress) {
    const sky::Span when = span_of(span);
    const auto rows = shared.search({}, progress, [&](sky::Model& model, Watch& watch) {
        const sky::ApproachOptions options{within_au, two_body,
                                           [&](double f) { return watch.tell(f); }};
        return sky::find_approaches(model, body, when, options);
    });
    return Table(value_of(rows, "body"))
        .column("time", &sky::Approach::time)
        .column("planet", &sky::Approach::planet)
        .column("distance_au", &sky::Approach::distance_au)
        .column("speed_km_s", &sky::Approach::speed_km_s)
        .dict();
}

}  // namespace

void bind_events(py::module_& module) {
    py::enum_<sky::ConjunctionWay>(module, "ConjunctionWay")
        .value("right-ascension", sky::ConjunctionWay::kRightAscension)
        .value("longitude", sky::ConjunctionWay::kLongitude)
        .value("closest", sky::ConjunctionWay::kClosest);
    module.def("phases", &phases);
    module.def("conjunctions", &conjunctions);
    module.def("gatherings", &gatherings);
    module.def("diary", &diary);
    module.def("diary_kinds", &diary_kinds);
    module.def("occultations", &occultations);
    module.def("approaches", &approaches);
}

}  // namespace solsys::python
