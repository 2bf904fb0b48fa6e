// Risings, settings, twilights and passages through altitudes, at many sites.
#include "bindings.h"
#include "shared_model.h"
#include "table.h"

namespace solsys::python {
namespace {

using sky::Passage;
using sky::Rising;
using Sites = std::vector<sky::Site>;

struct SiteRising {
    int site;
    Rising what;
};
struct SitePassage {
    int site;
    Passage what;
};

// `find(model, site, control)` at every site in turn, until the search is to end.
template <class Row, class Find>
std::vector<Row> at_sites(SharedModel& shared, const Sites& sites, const py::object& progress,
                          Find find) {
    return shared.search({}, progress, [&](sky::Model& model, Watch& watch) {
        std::vector<Row> rows;
        for (std::size_t i = 0; i < sites.size(); ++i) {
            watch.part(i, sites.size());
            for (auto& what : find(model, sites[i], watch.control()))
                rows.push_back({static_cast<int>(i), std::move(what)});
            if (watch.control()->stopped()) break;
        }
        return rows;
    });
}

sky::Altitude horizon(const sky::Site& site, const sky::Body& body,
                      const std::optional<double>& degrees) {
    return degrees ? sky::Altitude{*degrees, false} : sky::horizon_of(site, body);
}

template <class Value>
auto of(Value Rising::*member) {
    return [=](const SiteRising& row) { return row.what.*member; };
}
// An angle that goes with an instant.
auto of(double Rising::*angle, std::optional<sky::Instant> Rising::*with) {
    return [=](const SiteRising& row) {
        return row.what.*with ? std::optional<double>(row.what.*angle) : std::nullopt;
    };
}

py::dict risings(SharedModel& shared, const sky::Body& body, const JulianPairs& span,
                 const Sites& sites, const std::optional<double>& horizon_deg,
                 const py::object& progress) {
    const sky::Span when = span_of(span);
    const auto rows = at_sites<SiteRising>(
        shared, sites, progress,
        [&](sky::Model& model, const sky::Site& site, sky::SearchControl* control) {
            return sky::risings(model, site, body, when, horizon(site, body, horizon_deg),
                                control)
                .rows;
        });
    Table<SiteRising> table(rows);
    return table.column("site", &SiteRising::site)
        .column("rise", of(&Rising::rise))
        .column("transit", of(&Rising::transit))
        .column("set", of(&Rising::set))
        .column("rise_azimuth_deg", of(&Rising::rise_azimuth_deg, &Rising::rise))
        .column("transit_altitude_deg", of(&Rising::transit_altitude_deg, &Rising::transit))
        .column("set_azimuth_deg", of(&Rising::set_azimuth_deg, &Rising::set))
        .column("astronomical_dawn", of(&Rising::astronomical_dawn))
        .column("nautical_dawn", of(&Rising::nautical_dawn))
        .column("civil_dawn", of(&Rising::civil_dawn))
        .column("civil_dusk", of(&Rising::civil_dusk))
        .column("nautical_dusk", of(&Rising::nautical_dusk))
        .column("astronomical_dusk", of(&Rising::astronomical_dusk))
        .dict();
}

// Without altitudes: through the horizon of each site.
py::dict passages(SharedModel& shared, const sky::Body& body,
                  const std::vector<double>& altitudes_deg, const JulianPairs& span,
                  const Sites& sites, const py::object& progress) {
    const sky::Span when = span_of(span);
    const auto rows = at_sites<SitePassage>(
        shared, sites, progress,
        [&](sky::Model& model, const sky::Site& site, sky::SearchControl* control) {
            std::vector<sky::Altitude> levels;
            for (const double degrees : altitudes_deg) levels.push_back({degrees, false});
            if (levels.empty()) levels.push_back(sky::horizon_of(site, body));
            return sky::passages(model, site, body, levels, when, control);
        });
    Table<SitePassage> table(rows);
    return table.column("site", &SitePassage::site)
        .column("time", [](const SitePassage& row) { return row.what.at; })
        .column("rising", [](const SitePassage& row) { return row.what.rising; })
        .column("azimuth_deg", [](const SitePassage& row) { return row.what.azimuth_deg; })
        .column("altitude_deg",
                [&](const SitePassage& row) {
                    return altitudes_deg.empty()
                               ? sky::horizon_of(sites[static_cast<std::size_t>(row.site)],
                                                 body)
                                     .degrees
                               : altitudes_deg[row.what.which];
                })
        .dict();
}

}  // namespace

void bind_risings(py::module_& module) {
    module.def("risings", &risings);
    module.def("passages", &passages);
}

}  // namespace solsys::python
