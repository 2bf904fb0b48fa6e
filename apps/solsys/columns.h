// Columns and texts that several subcommands share.
#pragma once

#include <string>
#include <vector>

#include "apps/solsys/options.h"
#include "solsys/sky/appearance.h"

namespace app {

// By how far the Sun is down, least first.
inline constexpr const char* kTwilightNames[] = {"civil", "nautical", "astronomical"};

// How much of the appearance a table has room for; JSON and CSV always carry all of it.
enum class Shows { kNothing, kMagnitude, kAll };

// "48.3 E".
std::string shown_elongation(double degrees);
// In au; of stars in light years.
std::string shown_distance(double au);
// The sixteen winds.
std::string compass_point(double azimuth_deg);
// "the built-in theory serves -3000 to 3000", or the span of the DE file.
std::string span_of_source(const sky::Model& model);

// The bodies of names and groups. Throws BadInput.
std::vector<sky::Body> bodies_called(const std::vector<std::string>& names,
                                     const sky::Instant& near);

// Makes a body known to a model; those of the sample of minor planets and comets are
// integrated, so that every subcommand has one place for them. Throws BadInput.
void make_known(sky::Model& model, const sky::Body& body);

template <class Row, class Get>
void add_appearance_columns(std::vector<Column<Row>>& columns, Get looks, Shows shows) {
    const auto title = [shows](const char* text, Shows least) {
        return shows >= least ? text : "";
    };
    const auto add = [&](const char* name, const char* heading, Shown format,
                         std::optional<double> sky::Appearance::*member) {
        columns.push_back({name, heading, std::move(format), [looks, member](const Row& row) {
                               return cell(looks(row).*member);
                           }});
    };
    add("magnitude", title("Mag", Shows::kMagnitude), fixed(1), &sky::Appearance::magnitude);
    add("phase_angle_deg", "", nullptr, &sky::Appearance::phase_angle_deg);
    add("illuminated_fraction", title("Lit", Shows::kAll), fixed(2),
        &sky::Appearance::illuminated_fraction);
    add("elongation_deg", title("Elong", Shows::kAll), shown_elongation,
        &sky::Appearance::elongation_deg);
    add("angular_diameter_arcsec", "", nullptr, &sky::Appearance::angular_diameter_arcsec);
    columns.push_back(
        {"constellation", title("Con", Shows::kAll), nullptr,
         [looks](const Row& row) { return text_cell(looks(row).constellation); }});
}

}  // namespace app
