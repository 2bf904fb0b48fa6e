// solsys occultations: stars and planets covered by the Moon.
#include <fmt/format.h>

#include <memory>

#include "apps/solsys/commands.h"
#include "apps/solsys/failure.h"
#include "apps/solsys/long_search.h"
#include "apps/solsys/options.h"
#include "solsys/sky/occultations.h"

namespace app {
namespace {

struct OccultationsRequest {
    Options options;
    double faintest = 5;
    bool all = false;
};

using OccultationRow = sky::LunarOccultation;

std::vector<Column<OccultationRow>> occultation_columns(const Setting& setting) {
    const auto number = [](const char* name, const char* title, int decimals,
                           double OccultationRow::*member) {
        return Column<OccultationRow>{
            name, title, fixed(decimals),
            [member](const OccultationRow& row) { return row.*member; }};
    };
    std::vector<Column<OccultationRow>> columns{
        {"id", "", nullptr,
         [](const OccultationRow& r) { return Cell(sky::code_of(r.body.id)); }},
        {"name", "Body", nullptr, [](const OccultationRow& r) { return Cell(r.body.name); }},
        {"magnitude", "Mag", fixed(1),
         [](const OccultationRow& r) { return r.magnitude < 90 ? Cell(r.magnitude) : Cell(); }},
        {"contact", "Contact", nullptr,
         [](const OccultationRow& r) { return Cell(std::string(sky::to_string(r.contact))); }}};
    add_time_columns(columns, setting, fmt::format("Time ({})", setting.zone.name()));
    const std::vector<Column<OccultationRow>> more{
        {"delta_t_s", "", nullptr,
         [](const OccultationRow& r) { return r.at.delta_t_seconds(); }},
        number("position_angle_deg", "PA", 0, &OccultationRow::position_angle_deg),
        {"", "Cusp", nullptr,
         [](const OccultationRow& r) {
             return Cell(fmt::format("{:.0f} {}", r.cusp_angle_deg, r.north_cusp ? 'N' : 'S'));
         }},
        number("cusp_angle_deg", "", 0, &OccultationRow::cusp_angle_deg),
        {"cusp", "", nullptr,
         [](const OccultationRow& r) { return Cell(std::string(r.north_cusp ? "N" : "S")); }},
        {"limb", "Limb", nullptr,
         [](const OccultationRow& r) {
             return Cell(std::string(r.dark_limb ? "dark" : "bright"));
         }},
        {"", "Graze", nullptr,
         [](const OccultationRow& r) { return text_cell(r.graze ? "yes" : ""); }},
        {"graze", "", nullptr, [](const OccultationRow& r) { return r.graze; }},
        number("moon_altitude_deg", "Moon alt", 1, &OccultationRow::moon_altitude_deg),
        number("moon_azimuth_deg", "", 0, &OccultationRow::moon_azimuth_deg),
        number("sun_altitude_deg", "Sun alt", 0, &OccultationRow::sun_altitude_deg),
        number("moon_illuminated", "Lit", 2, &OccultationRow::moon_illuminated)};
    columns.insert(columns.end(), more.begin(), more.end());
    return columns;
}

void run(const OccultationsRequest& request) {
    const Setting setting = setting_with_site(request.options);
    const sky::Span span = span_of(request.options, setting, 31);
    sky::Model model = model_of(request.options, setting);
    sky::OccultationOptions options;
    options.faintest_star = request.faintest;
    options.observable_only = !request.all;

    LongSearch search;
    const auto found = sky::lunar_occultations(model, span, options, search.control());
    Table<OccultationRow> table(setting.format, occultation_columns(setting),
                                setting.context(model));
    for (const OccultationRow& row : found) table.add(row);
    if (setting.format == Format::kTable && !found.empty())
        fmt::print("Occultations by the Moon at {}\n\n", setting.site->name);
    table.finish("no occultation in that span" +
                 std::string(request.all ? "" : " that can be seen (--all: also by day)"));
}

}  // namespace

void add_occultations(CommandLine& main) {
    auto request = std::make_shared<OccultationsRequest>();
    Command command =
        main.add("occultations", "Stars and planets that the Moon covers for a site");
    command.number("--faintest", request->faintest, {-2.0, 5.0},
                   "Stars down to this magnitude (to 5.0)");
    command.flag("--all", request->all, "By day and below the horizon, too");
    add_span_options(command, request->options, "31 days on");
    add_site_options(command, request->options);
    add_rotation_options(command, request->options);
    add_model_options(command, request->options);
    add_output_options(command, request->options);
    command.footer(
        "Position angles count on the Moon's limb from north through east, cusp angles from\n"
        "the nearer cusp into the dark side.\n"
        "Examples:\n"
        "  solsys occultations --city London --from 2026-01-01\n"
        "  solsys occultations --site 51.48,0 --from 2015 --to 2018 --faintest 1.5");
    command.run([request] { run(*request); });
}

}  // namespace app
