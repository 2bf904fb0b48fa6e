// solsys constellation: which constellation holds a direction or a body.
#include <fmt/format.h>

#include <memory>

#include "apps/solsys/angles.h"
#include "apps/solsys/columns.h"
#include "apps/solsys/commands.h"
#include "apps/solsys/failure.h"
#include "apps/solsys/options.h"
#include "solsys/sky/appearance.h"

namespace app {
namespace {

struct ConstellationRequest {
    Options options;
    std::string first;
    std::optional<std::string> second;
};

struct ConstellationRow {
    sky::Place place;  // as given, or of date for a body
    std::string equinox;
    sky::Constellation found;
};

// Two angles are a direction, one word is a body.
ConstellationRow row_of(sky::Model& model, const ConstellationRequest& request) {
    ConstellationRow row;
    const bool of_date = request.options.time.has_value() || !request.second;
    row.equinox = of_date ? "of date" : "J2000";
    sky::Place place;
    if (request.second) {
        place.ra_deg = parse_right_ascension(request.first);
        place.dec_deg = parse_declination(*request.second);
    } else {
        const sky::Body body = need(sky::find_body(request.first, model.instant()));
        make_known(model, body);
        const auto seen = sky::apparent_place(model, body);
        if (!seen) throw BadInput(fmt::format("{} cannot be computed then", body.name));
        place = *seen;
    }
    row.place = place;
    const sky::Place date = of_date ? place : sky::of_date(model, place);
    row.found = sky::constellation_at(model, date.ra_deg, date.dec_deg);
    return row;
}

void run(const ConstellationRequest& request) {
    const Setting setting = setting_of(request.options);
    sky::Model model = model_of(request.options, setting);
    // A direction without a date is on the equator of J2000, and asked for then.
    const bool at_j2000 = request.second && !request.options.time;
    move_to(model,
            at_j2000 ? sky::Instant::from_tt(2451545.0) : instant_of(request.options, setting));
    Table<ConstellationRow> table(
        setting.format,
        {{"ra_deg", "RA", shown_hours,
          [](const ConstellationRow& r) { return r.place.ra_deg; }},
         {"dec_deg", "Dec", shown_degrees,
          [](const ConstellationRow& r) { return r.place.dec_deg; }},
         {"equinox", "Equinox", nullptr,
          [](const ConstellationRow& r) { return Cell(r.equinox); }},
         {"constellation", "Con", nullptr,
          [](const ConstellationRow& r) { return text_cell(r.found.abbreviation); }},
         {"constellation_name", "Constellation", nullptr,
          [](const ConstellationRow& r) { return text_cell(r.found.name); }}});
    table.add(row_of(model, request));
    table.finish();
}

}  // namespace

void add_constellation(CommandLine& main) {
    auto request = std::make_shared<ConstellationRequest>();
    Command command =
        main.add("constellation", "Which constellation holds a direction, or a body");
    command.word("ra", request->first,
                 "Right ascension (degrees, 5h35m17s or 5:35:17 hours), or a body's name");
    command.text("dec", request->second, "Declination: degrees, -5d23m28s or -5:23:28");
    add_instant_option(command, request->options);
    add_zone_option(command, request->options);
    add_output_options(command, request->options);
    command.footer(
        "A direction is on the mean equator of J2000, or with --time on the true one of date.\n"
        "Boundaries are those of Delporte (1930).\n"
        "Examples:\n"
        "  solsys constellation 83.82 -5.39\n"
        "  solsys constellation 5h35m17s -5d23m28s\n"
        "  solsys constellation 18:36:56 +38:47 --time 2026-12-01\n"
        "  solsys constellation sirius");
    command.run([request] { run(*request); });
}

}  // namespace app
