#include "apps/solsys/moon_events.h"

#include <fmt/format.h>

#include "apps/solsys/failure.h"
#include "apps/solsys/typed_options.h"
#include "solsys/sky/phenomena.h"

namespace app {

namespace sky = solsys::sky;

void list_moon_events(const Options& options, const std::string& planet, bool mutual) {
    const Format format = options.format();
    const sky::Zone zone = typed_zone(options, typed_site(options));
    const sky::Span span = typed_span(options, zone, 7);
    const sky::Body body = typed_bodies({planet}, span.from).front();
    if (!(body.id == SSO_ID(SSO_PLNT, 5)) && !(body.id == SSO_ID(SSO_PLNT, 6)))
        throw BadInput("--events knows the satellites of Jupiter and Saturn");
    sky::Model model = open_sky_model(options);
    Report report({{"name", "Satellite", nullptr},
                   {"phenomenon", "Phenomenon", nullptr},
                   {"phase", "Phase", nullptr},
                   {"by", "By", nullptr},
                   {"time_utc", "", nullptr},
                   {"", fmt::format("Time ({})", zone.name()), nullptr},
                   {"delta_t_s", "", nullptr},
                   {"hidden", "", nullptr},
                   {"", "Seen", nullptr}});
    Interruptible search;
    for (const sky::SatellitePhenomenon& e :
         sky::satellite_phenomena(model, body, span, mutual, search.control())) {
        const std::string phase = e.begins ? "begins" : "ends";
        report.add({e.moon.name, std::string(sky::to_string(e.kind)), phase, e.other.name,
                    e.at.iso(0), zone.seconds(e.at), e.at.delta_t_seconds(), e.hidden,
                    std::string(e.hidden ? "hidden" : "")});
    }
    if (report.empty()) throw NothingFound("no phenomenon in that span");
    report.print(format);
}

}  // namespace app
