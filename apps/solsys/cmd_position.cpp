// solsys position: bodies at one instant or over a span.
#include <fmt/format.h>

#include <memory>

#include "apps/solsys/bodies.h"
#include "apps/solsys/commands.h"
#include "apps/solsys/failure.h"
#include "apps/solsys/options.h"
#include "apps/solsys/place.h"

namespace app {
namespace {

enum class Frame { kApparent, kJ2000, kEcliptic, kHorizontal, kGalactic, kHeliocentric };

const std::vector<std::pair<std::string, Frame>> kFrames{
    {"apparent", Frame::kApparent}, {"j2000", Frame::kJ2000},
    {"ecliptic", Frame::kEcliptic}, {"horizontal", Frame::kHorizontal},
    {"galactic", Frame::kGalactic}, {"heliocentric", Frame::kHeliocentric}};

struct Request {
    Options options;
    std::vector<std::string> bodies;
    std::string frame = "apparent";
};

Frame parse_frame(const std::string& text) {
    std::string known;
    for (const auto& [name, frame] : kFrames) {
        if (name == text) return frame;
        known += (known.empty() ? "" : ", ") + name;
    }
    throw BadInput(fmt::format("no frame '{}': use {}", text, known));
}

std::vector<Column> columns_for(Frame frame, bool site, const Zone& zone) {
    const bool equatorial = frame == Frame::kApparent || frame == Frame::kJ2000;
    std::vector<Column> columns{
        {"id", "", nullptr},
        {"name", "Body", nullptr},
        {"time_utc", "", nullptr},
        {"", fmt::format("Time ({})", zone.name()), nullptr},
        {"jd_tt", "", nullptr},
        {"ra_deg", equatorial ? "RA" : "", shown_hours},
        {"dec_deg", equatorial ? "Dec" : "", shown_degrees},
        {"distance_au", frame == Frame::kHeliocentric ? "" : "Distance au", fixed(7)},
        {"light_time_days", "", nullptr}};
    if (site) {
        columns.push_back({"azimuth_deg", "Azimuth", fixed(3)});
        columns.push_back({"altitude_deg", "Altitude", fixed(3)});
    }
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
    return columns;
}

std::vector<Cell> row_for(CSWSolSys& model, const Body& body, Utc utc, Frame frame, bool site,
                          const Zone& zone) {
    const Tt tt = tt_from_utc(utc);
    const Place apparent = apparent_place(model, body.id);
    const Place shown = frame == Frame::kJ2000 ? astrometric_place(model, body.id) : apparent;
    std::vector<Cell> row{code_of(body.id),  body.name,         iso_utc(utc),
                          zone.seconds(utc), tt.jd(),           shown.ra_deg,
                          shown.dec_deg,     shown.distance_au, shown.light_time_days};
    if (site) {
        const Horizontal place = horizontal_of(model, apparent);
        row.emplace_back(place.azimuth_deg);
        row.emplace_back(place.altitude_deg);
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
        if (!model.GetHelVec2K(body.id, 1, state))
            throw BadInput(fmt::format("{} cannot be computed at this time", body.name));
        for (const double value : state) row.emplace_back(value);
    }
    return row;
}

void run(const Request& request) {
    const Frame frame = parse_frame(request.frame);
    std::vector<Body> bodies;
    for (const std::string& text : request.bodies) bodies.push_back(parse_body(text));
    const auto site = chosen_site(request.options);
    if (frame == Frame::kHorizontal && !site)
        throw BadInput("the horizontal frame needs a --site or a --city");
    const Zone zone(request.options.zone.empty() ? "UTC" : request.options.zone);
    const std::vector<Utc> instants = chosen_instants(request.options);
    const Format format = request.options.format();

    CSWSolSys model;
    open_model(model, request.options);
    for (const Body& body : bodies)
        if (!model.CheckSSO(&body.id))
            throw BadInput(fmt::format("no body '{}' in the catalogue", code_of(body.id)));
    place_observer(model, site);

    Report report(columns_for(frame, site.has_value(), zone));
    for (const Body& body : bodies) {
        for (const Utc& utc : instants) {
            move_to(model, tt_from_utc(utc));
            report.add(row_for(model, body, utc, frame, site.has_value(), zone));
        }
    }
    report.print(format);
}

}  // namespace

void add_position(CLI::App& main) {
    auto request = std::make_shared<Request>();
    CLI::App* command = main.add_subcommand(
        "position", "Where bodies are: apparent place, distance, other frames");
    command
        ->add_option("body", request->bodies, "Names (jupiter, io) or codes (plnt:5, moon:501)")
        ->required();
    command->add_option(
        "--frame", request->frame,
        "apparent (true equator of date), j2000 (astrometric), ecliptic (of date), "
        "horizontal, galactic, heliocentric (J2000 equatorial vectors)");
    add_instant_options(*command, request->options);
    add_span_options(*command, request->options);
    command->add_option("--step", request->options.step, "Step of a span: 1d, 6h, 10m");
    add_site_options(*command, request->options);
    add_ephemeris_option(*command, request->options);
    add_output_options(*command, request->options);
    command->footer(
        "Places are as seen from the Earth's centre, or from the site if one is given.\n"
        "Altitudes are without refraction.\n"
        "Examples:\n"
        "  solsys position sun moon mars --time 2026-12-01T20:00\n"
        "  solsys position venus --from 2026-12-01 --to 2026-12-31 --step 1d --json\n"
        "  solsys position moon --city Paris --frame horizontal");
    command->callback([request] { run(*request); });
}

}  // namespace app
