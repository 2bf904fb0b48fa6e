// solsys info: what is known of a body.
#include <fmt/format.h>

#include <cmath>
#include <memory>

#include "apps/solsys/columns.h"
#include "apps/solsys/commands.h"
#include "apps/solsys/failure.h"
#include "solsys/sky/facts.h"

namespace app {
namespace {

struct InfoRequest {
    Options options;
    std::vector<std::string> names;
};

struct InfoRow {
    sky::BodyFacts facts;
    sky::Instant at;
};

Shown general(int digits, const char* unit) {
    return
        [digits, unit](double value) { return fmt::format("{:.{}g} {}", value, digits, unit); };
}

// A length of time in the unit that people use for it; negative is retrograde.
std::string shown_days(double days) {
    const double length = std::fabs(days);
    if (length < 3) return fmt::format("{:.5g} h", days * 24);
    if (length < 1000) return fmt::format("{:.6g} d", days);
    return fmt::format("{:.6g} d ({:.4g} years)", days, days / 365.25);
}

std::vector<Column<InfoRow>> info_columns(const Setting& setting) {
    using Facts = sky::BodyFacts;
    const auto number = [](const char* name, const char* title, Shown shown,
                           std::optional<double> Facts::*member) {
        return Column<InfoRow>{name, title, std::move(shown), [member](const InfoRow& row) {
                                   return cell(row.facts.*member);
                               }};
    };
    std::vector<Column<InfoRow>> columns{
        {"id", "", nullptr,
         [](const InfoRow& r) { return Cell(sky::code_of(r.facts.body.id)); }},
        {"name", "Body", nullptr, [](const InfoRow& r) { return Cell(r.facts.body.name); }},
        {"parent", "Moves about", nullptr,
         [](const InfoRow& r) { return r.facts.parent ? Cell(r.facts.parent->name) : Cell(); }},
        {"moons", "Moons", nullptr,
         [](const InfoRow& r) { return Cell(static_cast<long long>(r.facts.moons)); }},
        number("radius_km", "Equatorial radius", general(6, "km"), &Facts::radius_km),
        {"flattening", "Flattening", fixed(5),
         [](const InfoRow& r) { return r.facts.flattening; }},
        number("gm_km3_s2", "GM", general(6, "km\u00b3/s\u00b2"), &Facts::gm_km3_s2),
        number("mass_kg", "Mass", general(4, "kg"), &Facts::mass_kg),
        number("density_kg_m3", "Mean density", general(4, "kg/m\u00b3"),
               &Facts::density_kg_m3),
        number("surface_gravity_m_s2", "Surface gravity", general(3, "m/s\u00b2"),
               &Facts::surface_gravity_m_s2),
        number("orbital_period_days", "Orbital period", shown_days,
               &Facts::orbital_period_days),
        number("rotation_period_days", "Rotation period", shown_days,
               &Facts::rotation_period_days),
        number("solar_day_days", "Solar day", shown_days, &Facts::solar_day_days),
        number("pole_ra_deg", "Pole, right ascension", general(7, "\u00b0 (J2000)"),
               &Facts::pole_ra_deg),
        number("pole_dec_deg", "Pole, declination", general(7, "\u00b0 (J2000)"),
               &Facts::pole_dec_deg),
        number("prime_meridian_deg", "Prime meridian", general(7, "\u00b0"),
               &Facts::prime_meridian_deg),
    };
    add_time_columns(columns, setting, "");
    return columns;
}

// One fact a line.
void print_page(const InfoRow& row, const Setting& setting) {
    for (const Column<InfoRow>& column : info_columns(setting)) {
        const std::string text = text_of(column.extract(row), column.format);
        if (!column.title.empty() && !text.empty())
            fmt::print("{:<22} {}\n", column.title, text);
    }
}

void run(const InfoRequest& request) {
    const Setting setting = setting_of(request.options);
    const sky::Instant t = instant_of(request.options, setting);
    sky::Model model = model_of(request.options, setting);
    move_to(model, t);
    std::vector<InfoRow> rows;
    for (const sky::Body& body : bodies_called(request.names, t))
        rows.push_back({need(sky::facts_of(model, body)), t});
    if (setting.format == Format::kTable) {
        for (const InfoRow& row : rows) {
            if (&row != &rows.front()) fmt::print("\n");
            print_page(row, setting);
        }
        return;
    }
    Table<InfoRow> table(setting.format, info_columns(setting), setting.context(model));
    for (const InfoRow& row : rows) table.add(row);
    table.finish();
}

}  // namespace

void add_info(CommandLine& main) {
    auto request = std::make_shared<InfoRequest>();
    Command command = main.add("info", "What is known of a body");
    command.words("body", request->names, "Names (jupiter, io) or codes (plnt:5, moon:501)", 1);
    add_instant_option(command, request->options);
    add_zone_option(command, request->options);
    add_output_options(command, request->options);
    command.footer(
        "The prime meridian is that of the instant.\n"
        "Examples:\n"
        "  solsys info saturn\n"
        "  solsys info io europa --json");
    command.run([request] { run(*request); });
}

}  // namespace app
