/// \file
/// What stands over a site: stars, bodies, figures and lines, ready to be drawn or listed.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "solsys/export.h"
#include "solsys/sky/appearance.h"
#include "solsys/sky/places.h"

namespace solsys::sky {

/// A star of the built-in list (to magnitude 5.0), at its apparent place.
struct ChartStar {
    Horizontal at;                   ///< where it stands
    double magnitude = 0;            ///< visual
    std::optional<double> b_v;       ///< colour index
    std::string name;                ///< approved proper name, or empty
    const char* constellation = "";  ///< IAU abbreviation
};

/// The Sun, the Moon or a planet.
struct ChartBody {
    Body body;                   ///< which
    Horizontal at;               ///< where it stands
    Place place;                 ///< apparent, of date
    double magnitude = 0;        ///< visual; 99: not known
    double illuminated = 1;      ///< fraction of the disk
    double diameter_arcsec = 0;  ///< apparent, equatorial; 0: not known
    Horizontal towards_sun;      ///< a little beside the body, on the side of its bright limb
};

/// A deep-sky object, catalogued for J2000 and brought to the equator of date.
struct ChartObject {
    std::string id;    ///< "M31"
    std::string name;  ///< "Andromeda Galaxy", or empty
    char kind = 'G';   ///< G galaxy, O open cluster, B globular cluster, N nebula, P planetary
    double magnitude = 99;    ///< visual, of all of it
    double major_arcmin = 0;  ///< longer axis; 0: not known
    Horizontal at;            ///< where its centre stands
};

/// A line through the sky.
struct ChartLine {
    std::string constellation;       ///< IAU abbreviation of the one whose figure it belongs to
    std::vector<Horizontal> points;  ///< its vertices in order
};

/// The outlines of one level of brightness of the Milky Way.
struct MilkyWayLevel {
    int level = 1;                               ///< 1 faint to 5 bright
    std::vector<std::vector<Horizontal>> rings;  ///< closed, to be filled together
};

/// Everything over a site at an instant.
struct SkyChart {
    std::vector<ChartStar> stars;      ///< all above the horizon, brightest first
    std::vector<ChartBody> bodies;     ///< Sun, Moon and planets, above the horizon or not
    std::vector<ChartObject> objects;  ///< deep-sky objects above the horizon, brightest first
    std::vector<ChartLine> figures;    ///< with vertices below the horizon
    std::vector<MilkyWayLevel> milky_way;  ///< faintest level first
    std::vector<Horizontal> ecliptic;      ///< a whole turn, a degree apart
    double sun_altitude_deg = 0;           ///< of its centre, geometric
    double moon_illuminated = 0;           ///< fraction of the disk
};

/// At the model's instant for its site. Altitudes are geometric.
SOLSYS_API SkyChart sky_chart(Model& model);

}  // namespace solsys::sky
