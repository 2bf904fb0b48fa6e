#include "apps/solsys/moon_events.h"

#include <fmt/format.h>

#include "apps/solsys/long_search.h"
#include "solsys/sky/phenomena.h"

namespace app {
namespace {

using MoonEventRow = sky::SatellitePhenomenon;

std::vector<Column<MoonEventRow>> moon_event_columns(const Setting& setting) {
    std::vector<Column<MoonEventRow>> columns{
        {"id", "", nullptr,
         [](const MoonEventRow& r) { return Cell(sky::code_of(r.moon.id)); }},
        {"name", "Satellite", nullptr, [](const MoonEventRow& r) { return Cell(r.moon.name); }},
        {"phenomenon", "Phenomenon", nullptr,
         [](const MoonEventRow& r) { return Cell(std::string(sky::to_string(r.kind))); }},
        {"phase", "Phase", nullptr,
         [](const MoonEventRow& r) { return Cell(std::string(r.begins ? "begins" : "ends")); }},
        {"by", "By", nullptr, [](const MoonEventRow& r) { return text_cell(r.other.name); }}};
    add_time_columns(columns, setting, fmt::format("Time ({})", setting.zone.name()));
    columns.push_back({"delta_t_s", "", nullptr,
                       [](const MoonEventRow& r) { return r.at.delta_t_seconds(); }});
    columns.push_back({"hidden", "", nullptr, [](const MoonEventRow& r) { return r.hidden; }});
    columns.push_back({"", "Seen", nullptr, [](const MoonEventRow& r) {
                           return text_cell(r.hidden ? "hidden" : "");
                       }});
    return columns;
}

}  // namespace

void list_moon_events(const Options& options, const Setting& setting, const sky::Body& planet,
                      bool mutual) {
    if (!(planet.id == SSO_ID(SSO_PLNT, 5)) && !(planet.id == SSO_ID(SSO_PLNT, 6)))
        throw BadInput("--events: of the satellites of Jupiter and Saturn alone");
    const sky::Span span = span_of(options, setting, 7);
    sky::Model model = model_of(options, setting);
    LongSearch search;
    Table<MoonEventRow> table(setting.format, moon_event_columns(setting),
                              setting.context(model));
    for (const MoonEventRow& row :
         sky::satellite_phenomena(model, planet, span, mutual, search.control()))
        table.add(row);
    table.finish("no phenomenon in that span");
}

}  // namespace app
