// Eclipses for the Earth, for a site, and on the map.
#include "bindings.h"
#include "draw/eclipse_map.h"
#include "draw/eclipse_pictures.h"
#include "shared_model.h"
#include "table.h"

namespace solsys::python {
namespace {

using sky::Eclipse;
using sky::EclipseKind;
using sky::EclipseMoment;
using sky::LocalEclipse;
using Moment = std::optional<EclipseMoment>;

struct Seen {
    Eclipse eclipse;
    LocalEclipse local;
};

EclipseKind kind_of(bool solar) { return solar ? EclipseKind::kSolar : EclipseKind::kLunar; }

std::vector<Eclipse> find(sky::Model& model, bool solar, const sky::Span& span, Watch& watch) {
    sky::EclipseOptions options;
    options.progress = [&](double fraction) { return watch.tell(fraction); };
    return sky::find_eclipses(model, kind_of(solar), span, options);
}

py::dict eclipses(SharedModel& shared, bool solar, const JulianPairs& span,
                  const py::object& progress) {
    const sky::Span when = span_of(span);
    const auto rows = shared.search({}, progress, [&](sky::Model& model, Watch& watch) {
        return find(model, solar, when, watch);
    });
    return Table(rows)
        .column("greatest", &Eclipse::greatest)
        .column("kind", [](const Eclipse& e) { return to_string(e.kind); })
        .column("type", &Eclipse::type)
        .column("magnitude", &Eclipse::magnitude)
        .column("gamma", &Eclipse::gamma)
        .column("saros", &Eclipse::saros)
        .column("lunation", &Eclipse::lunation)
        .column("begin", &Eclipse::begin)
        .column("end", &Eclipse::end)
        .column("latitude_deg", [](const Eclipse& e) { return e.nearest.latitude_deg; })
        .column("longitude_deg", [](const Eclipse& e) { return e.nearest.longitude_deg; })
        .column("path_width_km", &Eclipse::path_width_km)
        .column("duration_s", &Eclipse::duration_s)
        .dict();
}

auto time_of(Moment LocalEclipse::*moment) {
    return [=](const Seen& seen) -> std::optional<sky::Instant> {
        const Moment& m = seen.local.*moment;
        return m ? std::optional(m->at) : std::nullopt;
    };
}
auto number_of(Moment LocalEclipse::*moment, double EclipseMoment::*member) {
    return [=](const Seen& seen) -> std::optional<double> {
        const Moment& m = seen.local.*moment;
        return m ? std::optional((*m).*member) : std::nullopt;
    };
}
template <class Value>
auto local(Value LocalEclipse::*member) {
    return [=](const Seen& seen) { return seen.local.*member; };
}

py::dict local_eclipses(SharedModel& shared, bool solar, const JulianPairs& span,
                        const sky::Site& site, bool visible_only, const py::object& progress) {
    const sky::Span when = span_of(span);
    const auto rows = shared.search({}, progress, [&](sky::Model& model, Watch& watch) {
        std::vector<Seen> out;
        for (Eclipse& eclipse : find(model, solar, when, watch))
            if (auto seen = sky::eclipse_at(model, eclipse, site);
                seen && (seen->visible || !visible_only))
                out.push_back({std::move(eclipse), std::move(*seen)});
        return out;
    });
    return Table(rows)
        .column("greatest", [](const Seen& s) { return s.eclipse.greatest; })
        .column("kind", [](const Seen& s) { return to_string(s.eclipse.kind); })
        .column("type", local(&LocalEclipse::type))
        .column("visible", local(&LocalEclipse::visible))
        .column("magnitude", local(&LocalEclipse::magnitude))
        .column("obscuration", local(&LocalEclipse::obscuration))
        .column("first", time_of(&LocalEclipse::first))
        .column("second", time_of(&LocalEclipse::second))
        .column("maximum", time_of(&LocalEclipse::maximum))
        .column("third", time_of(&LocalEclipse::third))
        .column("fourth", time_of(&LocalEclipse::fourth))
        .column("rise", local(&LocalEclipse::rise))
        .column("set", local(&LocalEclipse::set))
        .column("altitude_deg", number_of(&LocalEclipse::maximum, &EclipseMoment::altitude_deg))
        .column("azimuth_deg", number_of(&LocalEclipse::maximum, &EclipseMoment::azimuth_deg))
        .dict();
}

// The one whose greatest moment is near; false: there is none.
template <class Use>
std::string with_eclipse(SharedModel& shared, bool solar, const JulianPairs& greatest,
                         Use use) {
    const sky::Instant t = instants_of(greatest).at(0);
    const auto answer = shared.ask({}, [&](sky::Model& model) -> sky::Result<std::string> {
        const auto found =
            sky::find_eclipses(model, kind_of(solar), {t.plus_days(-1), t.plus_days(1)});
        if (found.empty()) return sky::Failure{"no such eclipse within a day of " + t.iso(0)};
        return use(model, found.front());
    });
    return value_of(answer, "eclipse");
}

std::string eclipse_map(SharedModel& shared, bool solar, const JulianPairs& greatest,
                        const std::string& format, bool light) {
    return with_eclipse(shared, solar, greatest, [&](sky::Model& model, const Eclipse& e) {
        const auto map = sky::eclipse_map(model, e);
        if (format == "geojson") return draw::eclipse_map_geojson(map);
        if (format == "kml") return draw::eclipse_map_kml(map);
        return draw::eclipse_map_svg(map, light);
    });
}

std::string eclipse_picture(SharedModel& shared, bool solar, const JulianPairs& greatest,
                            const std::optional<sky::Site>& site, bool light) {
    return with_eclipse(shared, solar, greatest,
                        [&](sky::Model& model, const Eclipse& e) -> sky::Result<std::string> {
                            if (!solar)
                                return draw::moon_in_shadow_svg(model, e, sky::Zone(), light);
                            const auto zone = sky::Zone::find(site ? site->zone : "UTC");
                            if (!zone) return sky::Failure{zone.message()};
                            if (!site) return sky::Failure{"the Sun's disk needs a site"};
                            const auto seen = sky::eclipse_at(model, e, *site);
                            if (!seen) return sky::Failure{"not to be seen from the site"};
                            return draw::eclipsed_sun_svg(model, e, *seen, *site, *zone, light);
                        });
}

}  // namespace

void bind_eclipses(py::module_& module) {
    module.def("eclipses", &eclipses);
    module.def("local_eclipses", &local_eclipses);
    module.def("eclipse_map", &eclipse_map);
    module.def("eclipse_picture", &eclipse_picture);
}

}  // namespace solsys::python
