#include "apps/solsys/ephemeris_table.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <map>

#include "apps/solsys/columns.h"
#include "apps/solsys/failure.h"
#include "apps/solsys/long_search.h"
#include "solsys/sky/orbits.h"

namespace app {
namespace {

enum class Frame { kApparent, kJ2000, kEcliptic, kHorizontal, kGalactic, kHeliocentric };

struct NamedFrame {
    const char* name;
    Frame frame;
    const char* what;
};
constexpr NamedFrame kFrames[] = {
    {"apparent", Frame::kApparent, "true equator and equinox of date"},
    {"j2000", Frame::kJ2000, "astrometric, mean equator and equinox of J2000"},
    {"ecliptic", Frame::kEcliptic, "apparent, ecliptic and equinox of date"},
    {"horizontal", Frame::kHorizontal, "apparent, over the horizon"},
    {"galactic", Frame::kGalactic, "apparent, galactic"},
    {"heliocentric", Frame::kHeliocentric, "geometric, J2000 equator"}};

const NamedFrame& frame_called(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    std::string known;
    for (const NamedFrame& frame : kFrames) {
        if (frame.name == text) return frame;
        known += (known.empty() ? "" : ", ") + std::string(frame.name);
    }
    throw BadInput(fmt::format("--frame: no '{}'; use {}", text, known));
}

// What a table leaves out because it is the same in every row stands in its heading.
struct Layout {
    Frame frame = Frame::kApparent;
    bool one_body = false;
    bool one_instant = false;
    bool whole_minutes = false;

    [[nodiscard]] bool equatorial() const {
        return frame == Frame::kApparent || frame == Frame::kJ2000;
    }
};

struct PlaceRow {
    const sky::Body* body;
    sky::Instant at;
    sky::Place shown, apparent;
    std::optional<sky::Horizontal> horizontal;
    sky::LonLat angles;
    std::array<double, 6> state;
    sky::Appearance looks;
    bool integrated = false;
};

PlaceRow row_of(sky::Model& model, const sky::Body& body, const sky::Instant& t, Frame frame) {
    PlaceRow row{&body, t, {}, {}, {}, {}, {}, {}, false};
    const auto refuse = [&] {
        return BadInput(fmt::format("{} cannot be computed on {}: {}", body.name, t.iso(0),
                                    span_of_source(model)));
    };
    const auto apparent = sky::apparent_place(model, body);
    const auto shown = frame == Frame::kJ2000 ? sky::astrometric_place(model, body) : apparent;
    if (!apparent || !shown) throw refuse();
    row.apparent = *apparent;
    row.shown = *shown;
    if (model.site()) row.horizontal = sky::horizontal_of(model, *apparent);
    if (frame == Frame::kEcliptic) row.angles = sky::ecliptic_of(model, *apparent);
    if (frame == Frame::kGalactic) row.angles = sky::galactic_of(model, *apparent);
    if (frame == Frame::kHeliocentric) {
        if (body.is_star())
            throw BadInput(
                fmt::format("--frame: {} is a star and has no heliocentric one", body.name));
        const auto state = sky::heliocentric_state(model, body);
        if (!state) throw refuse();
        row.state = *state;
    }
    row.looks = sky::appearance_of(model, body, *apparent);
    row.integrated = body.has_elements() && sky::is_integrated(model, body);
    return row;
}

using PlaceColumns = std::vector<Column<PlaceRow>>;

void add_identity(PlaceColumns& columns, const Layout& layout, const Setting& setting) {
    columns.push_back({"id", "", nullptr, [](const PlaceRow& row) {
                           const bool none = row.body->id.number == 0;
                           return none ? Cell() : Cell(sky::code_of(row.body->id));
                       }});
    columns.push_back({"name", layout.one_body ? "" : "Body", nullptr,
                       [](const PlaceRow& row) { return Cell(row.body->name); }});
    add_time_columns(columns, setting,
                     layout.one_instant ? "" : fmt::format("Time ({})", setting.zone.name()),
                     layout.whole_minutes ? shown_minutes : shown_seconds);
    columns.push_back(
        {"jd_tt", "", nullptr, [](const PlaceRow& row) { return row.at.jd_tt(); }});
}

void add_places(PlaceColumns& columns, const Layout& layout) {
    const bool equatorial = layout.equatorial();
    columns.push_back({"ra_deg", equatorial ? "RA" : "", shown_hours,
                       [](const PlaceRow& row) { return row.shown.ra_deg; }});
    columns.push_back({"dec_deg", equatorial ? "Dec" : "", shown_degrees,
                       [](const PlaceRow& row) { return row.shown.dec_deg; }});
    columns.push_back({"distance_au", layout.frame == Frame::kHeliocentric ? "" : "Distance",
                       shown_distance,
                       [](const PlaceRow& row) { return row.shown.distance_au; }});
    columns.push_back({"light_time_days", "", nullptr,
                       [](const PlaceRow& row) { return row.shown.light_time_days; }});
}

void add_horizontal(PlaceColumns& columns, const Setting& setting) {
    columns.push_back({"azimuth_deg", "Azimuth", fixed_round(2),
                       [](const PlaceRow& row) { return row.horizontal->azimuth_deg; }});
    columns.push_back({"altitude_deg", "", nullptr,
                       [](const PlaceRow& row) { return row.horizontal->altitude_deg; }});
    add_apparent_altitude(
        columns, setting, [](const PlaceRow& row) { return row.horizontal->altitude_deg; }, 2);
}

void add_frame(PlaceColumns& columns, const Layout& layout) {
    if (layout.frame == Frame::kEcliptic || layout.frame == Frame::kGalactic) {
        columns.push_back({"lon_deg", "Longitude", fixed_round(5),
                           [](const PlaceRow& row) { return row.angles.lon_deg; }});
        columns.push_back({"lat_deg", "Latitude", fixed(5),
                           [](const PlaceRow& row) { return row.angles.lat_deg; }});
    }
    if (layout.frame != Frame::kHeliocentric) return;
    const char* const axes[] = {"x", "y", "z", "vx", "vy", "vz"};
    for (std::size_t i = 0; i < 6; ++i)
        columns.push_back({fmt::format("{}_{}", axes[i], i < 3 ? "au" : "au_day"),
                           fmt::format("{} {}", axes[i], i < 3 ? "au" : "au/d"),
                           fixed(i < 3 ? 8 : 9),
                           [i](const PlaceRow& row) { return row.state[i]; }});
}

void add_elements(PlaceColumns& columns) {
    columns.push_back({"elements_epoch", "", nullptr, [](const PlaceRow& row) {
                           if (!row.body->has_elements()) return Cell();
                           const auto t = sky::Instant::from_tt(row.body->elements_epoch);
                           return Cell(sky::to_string(sky::Zone().date(t)));
                       }});
    columns.push_back({"motion", "", nullptr, [](const PlaceRow& row) {
                           if (!row.body->has_elements()) return Cell();
                           return Cell(std::string(row.integrated ? "integrated" : "two-body"));
                       }});
    columns.push_back(
        {"uncertainty_arcsec", "", nullptr, [](const PlaceRow& row) {
             return cell(sky::elements_uncertainty_arcsec(*row.body, row.at, row.integrated));
         }});
}

PlaceColumns place_columns(const Layout& layout, const Setting& setting, bool elements) {
    PlaceColumns columns;
    add_identity(columns, layout, setting);
    add_places(columns, layout);
    if (setting.site) add_horizontal(columns, setting);
    add_frame(columns, layout);
    const bool room = layout.frame != Frame::kHeliocentric;
    add_appearance_columns(
        columns, [](const PlaceRow& row) -> const sky::Appearance& { return row.looks; },
        !room                                 ? Shows::kNothing
        : setting.site && layout.equatorial() ? Shows::kMagnitude
                                              : Shows::kAll);
    if (elements) add_elements(columns);
    return columns;
}

void print_heading(const Layout& layout, const Setting& setting, const NamedFrame& frame,
                   const sky::Body& first, const sky::Instant& t) {
    std::string text = (layout.one_body ? first.name : "Places") + ": ";
    text += frame.what;
    text += layout.frame == Frame::kHeliocentric ? "" : ", from " + setting.place();
    if (layout.one_instant)
        text += fmt::format("\n{} ({})", setting.zone.seconds(t), setting.zone.name());
    fmt::print("{}\n\n", text);
}

// A line for each body whose elements are too old for what is printed.
class Ages {
  public:
    void consider(const PlaceRow& row) {
        const auto arcsec = sky::elements_uncertainty_arcsec(*row.body, row.at, row.integrated);
        if (!arcsec) return;
        Worst& worst = worst_[row.body];
        if (*arcsec >= worst.arcsec) worst = {*arcsec, row.integrated};
    }
    void tell_all() const {
        constexpr double kWorthTelling = 60;
        for (const auto& [body, worst] : worst_) {
            if (worst.arcsec < kWorthTelling) continue;
            const auto epoch = sky::Instant::from_tt(body->elements_epoch);
            tell(fmt::format("{}: {} from elements of {}: uncertain by some {:.0f}'",
                             body->name, worst.integrated ? "integrated" : "two-body motion",
                             sky::to_string(sky::Zone().date(epoch)), worst.arcsec / 60));
        }
    }

  private:
    struct Worst {
        double arcsec = 0;
        bool integrated = false;
    };
    std::map<const sky::Body*, Worst> worst_;
};

}  // namespace

void add_ephemeris_table_options(Command& command, EphemerisRequest& request) {
    command.text("--frame", request.frame,
                 "apparent (true equator of date), j2000 (astrometric), ecliptic (of date), "
                 "horizontal, galactic, heliocentric (J2000 equatorial vectors)");
    add_instant_option(command, request.options);
    add_span_options(command, request.options, "one instant");
    add_step_option(command, request.options);
    command.flag(
        "--two-body", request.two_body,
        "Minor planets and comets on their osculating orbits, not integrated among the "
        "planets");
    add_site_options(command, request.options);
    add_refraction_option(command, request.options);
    add_rotation_options(command, request.options);
    add_model_options(command, request.options);
    add_output_options(command, request.options);
}

void print_ephemeris(const EphemerisRequest& request, const Setting& setting,
                     const std::vector<sky::Body>& bodies, bool integrated) {
    const NamedFrame& frame = frame_called(request.frame);
    if (frame.frame == Frame::kHorizontal && !setting.site)
        throw BadInput("--frame: the horizontal one needs a --site or a --city");
    const std::vector<sky::Instant> instants = instants_of(request.options, setting);
    sky::Model model = model_of(request.options, setting);
    for (const sky::Body& body : bodies) {
        need(model.add(body));
        if (integrated && body.id.number != 0 && body.has_elements())
            need(sky::integrate(model, body));
    }

    const bool minutes =
        std::all_of(instants.begin(), instants.end(),
                    [](const sky::Instant& t) { return t.iso(0).ends_with(":00Z"); });
    const Layout layout{frame.frame, bodies.size() == 1, instants.size() == 1, minutes};
    const bool elements = std::any_of(bodies.begin(), bodies.end(), [](const sky::Body& body) {
        return body.has_elements();
    });
    Ages ages;
    Table<PlaceRow> table(setting.format, place_columns(layout, setting, elements),
                          setting.context(model));
    LongSearch search;
    const double all = static_cast<double>(bodies.size() * instants.size());
    double done = 0;
    for (const sky::Body& body : bodies) {
        for (const sky::Instant& t : instants) {
            if (!search.go_on(done++ / all)) break;
            move_to(model, t);
            const PlaceRow row = row_of(model, body, t, frame.frame);
            ages.consider(row);
            table.add(row);
        }
    }
    if (setting.format == Format::kTable)
        print_heading(layout, setting, frame, bodies.front(), instants.front());
    table.finish();
    ages.tell_all();
}

}  // namespace app
