#include "apps/solsys/ephemeris_table.h"

#include <fmt/format.h>

#include "apps/solsys/appearance.h"
#include "apps/solsys/bodies.h"
#include "apps/solsys/failure.h"
#include "apps/solsys/place.h"

namespace app {
namespace {

enum class Frame { kApparent, kJ2000, kEcliptic, kHorizontal, kGalactic, kHeliocentric };

const std::vector<std::pair<std::string, Frame>> kFrames{
    {"apparent", Frame::kApparent}, {"j2000", Frame::kJ2000},
    {"ecliptic", Frame::kEcliptic}, {"horizontal", Frame::kHorizontal},
    {"galactic", Frame::kGalactic}, {"heliocentric", Frame::kHeliocentric}};

Frame parse_frame(const std::string& text) {
    std::string known;
    for (const auto& [name, frame] : kFrames) {
        if (name == text) return frame;
        known += (known.empty() ? "" : ", ") + name;
    }
    throw BadInput(fmt::format("no frame '{}': use {}", text, known));
}

// Light years for the stars.
std::string shown_distance(double au) {
    constexpr double kAuPerLightYear = 63241.077;
    return au < kAuPerLightYear / 100 ? fmt::format("{:.7f} au", au)
                                      : fmt::format("{:.2f} ly", au / kAuPerLightYear);
}

std::vector<Column> columns_for(Frame frame, bool site, bool refracted, const Zone& zone) {
    const bool equatorial = frame == Frame::kApparent || frame == Frame::kJ2000;
    std::vector<Column> columns{
        {"id", "", nullptr},
        {"name", "Body", nullptr},
        {"time_utc", "", nullptr},
        {"", fmt::format("Time ({})", zone.name()), nullptr},
        {"jd_tt", "", nullptr},
        {"ra_deg", equatorial ? "RA" : "", shown_hours},
        {"dec_deg", equatorial ? "Dec" : "", shown_degrees},
        {"distance_au", frame == Frame::kHeliocentric ? "" : "Distance", shown_distance},
        {"light_time_days", "", nullptr},
        {"reduction", "", nullptr}};
    if (site) {
        columns.push_back({"azimuth_deg", "Azimuth", fixed(3)});
        columns.push_back({"altitude_deg", "Altitude", fixed(3)});
    }
    if (refracted) columns.push_back({"apparent_altitude_deg", "Apparent alt", fixed(3)});
    if (frame == Frame::kEcliptic || frame == Frame::kGalactic) {
        columns.push_back({"lon_deg", "Longitude", fixed(5)});
        columns.push_back({"lat_deg", "Latitude", fixed(5)});
    }
    if (frame == Frame::kHeliocentric) {
        for (const char* axis : {"x", "y", "z"})
            columns.push_back(
                {fmt::format("{}_au", axis), fmt::format("{} au", axis), fixed(9)});
        for (const char* axis : {"vx", "vy", "vz"})
            columns.push_back(
                {fmt::format("{}_au_day", axis), fmt::format("{} au/d", axis), fixed(11)});
    }
    add_appearance_columns(columns, equatorial || frame == Frame::kHorizontal);
    return columns;
}

std::vector<Cell> row_for(CSWSolSys& model, const Target& target, Utc utc, Frame frame,
                          bool site, const Refraction& refraction, const Zone& zone) {
    const Tt tt = tt_from_utc(utc);
    const Place apparent = apparent_place(model, target.id);
    const Place shown = frame == Frame::kJ2000 ? astrometric_place(model, target.id) : apparent;
    std::vector<Cell> row{target.id.number == 0 ? Cell() : Cell(code_of(target.id)),
                          target.name,
                          iso_utc(utc),
                          zone.seconds(utc),
                          tt.jd(),
                          shown.ra_deg,
                          shown.dec_deg,
                          shown.distance_au,
                          shown.light_time_days,
                          model.GetReduction() == REDUCTION_MODERN ? "modern" : "classic"};
    if (site) {
        const Horizontal place = horizontal_of(model, apparent);
        row.emplace_back(place.azimuth_deg);
        row.emplace_back(place.altitude_deg);
        if (refraction.wanted) {
            const auto seen =
                solsys::sky::apparent_altitude(place.altitude_deg, refraction.air);
            row.push_back(seen ? Cell(*seen) : Cell());  // nothing: below the lowest ray
        }
    }
    if (frame == Frame::kEcliptic || frame == Frame::kGalactic) {
        const double ra = apparent.ra_deg / kDegrees;
        const double dec = apparent.dec_deg / kDegrees;
        double lon = 0;
        double lat = 0;
        if (frame == Frame::kEcliptic) {
            model.FromRAToEclAng(false, &ra, &dec, &lon, &lat);
        } else {
            model.FromRAToGalAng(false, &ra, &dec, &lon, &lat);
        }
        row.emplace_back(lon * kDegrees);
        row.emplace_back(lat * kDegrees);
    }
    if (frame == Frame::kHeliocentric) {
        double state[6] = {};
        if (target.id.type == SSO_STAR)
            throw BadInput(fmt::format("{} is a star: no heliocentric frame", target.name));
        if (!model.GetHelVec2K(target.id, 1, state))
            throw BadInput(fmt::format("{} cannot be computed at this time", target.name));
        for (const double value : state) row.emplace_back(value);
    }
    add_appearance_cells(row, appearance_of(model, target.id, apparent));
    return row;
}

}  // namespace

void add_ephemeris_table_options(CLI::App& command, EphemerisRequest& request) {
    command.add_option(
        "--frame", request.frame,
        "apparent (true equator of date), j2000 (astrometric), ecliptic (of date), "
        "horizontal, galactic, heliocentric (J2000 equatorial vectors)");
    add_instant_options(command, request.options);
    add_span_options(command, request.options);
    command.add_option("--step", request.options.step, "Step of a span: 1d, 6h, 10m");
    add_site_options(command, request.options);
    add_refraction_option(command, request.options);
    add_ephemeris_option(command, request.options);
    add_output_options(command, request.options);
}

Utc first_instant(const EphemerisRequest& request) {
    return chosen_instants(request.options).front();
}

void print_ephemeris(const EphemerisRequest& request, const std::vector<Target>& targets) {
    const Frame frame = parse_frame(request.frame);
    const auto site = chosen_site(request.options);
    if (frame == Frame::kHorizontal && !site)
        throw BadInput("the horizontal frame needs a --site or a --city");
    const Zone zone(request.options.zone.empty() ? "UTC" : request.options.zone);
    const std::vector<Utc> instants = chosen_instants(request.options);
    const Format format = request.options.format();

    CSWSolSys model;
    open_model(model, request.options);
    for (const Target& target : targets) add_to(model, target);
    place_observer(model, site);

    const Refraction refraction = chosen_refraction(request.options, site);
    if (refraction.wanted && !site) throw BadInput("refraction needs a --site or a --city");
    Report report(columns_for(frame, site.has_value(), refraction.wanted, zone));
    for (const Target& target : targets) {
        for (const Utc& utc : instants) {
            move_to(model, tt_from_utc(utc));
            report.add(row_for(model, target, utc, frame, site.has_value(), refraction, zone));
        }
    }
    report.print(format);
}

}  // namespace app
