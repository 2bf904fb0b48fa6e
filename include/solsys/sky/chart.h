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

struct ChartStar {
    Horizontal at;
    double magnitude = 0;
    std::optional<double> b_v;  ///< colour index
    std::string name;           ///< approved proper name, or empty
    const char* constellation = "";
};

struct ChartBody {
    Body body;
    Horizontal at;
    Place place;
    double magnitude = 0;
    double illuminated = 1;
    double diameter_arcsec = 0;
    Horizontal towards_sun;  ///< a little beside the body, on the side of its bright limb
};

struct ChartObject {
    std::string id, name;  ///< "M31", "Andromeda Galaxy"
    char kind = 'G';  ///< G galaxy, O open cluster, B globular cluster, N nebula, P planetary
    double magnitude = 99;
    double major_arcmin = 0;
    Horizontal at;
};

/// A line through the sky; for a constellation's figure its abbreviation.
struct ChartLine {
    std::string constellation;
    std::vector<Horizontal> points;
};

/// The outlines of one level of brightness of the Milky Way, 1 to 5: rings to be filled
/// together.
struct MilkyWayLevel {
    int level = 1;
    std::vector<std::vector<Horizontal>> rings;
};

struct SkyChart {
    std::vector<ChartStar> stars;      ///< all above the horizon, brightest first
    std::vector<ChartBody> bodies;     ///< Sun, Moon and planets, above the horizon or not
    std::vector<ChartObject> objects;  ///< deep-sky objects above the horizon, brightest first
    std::vector<ChartLine> figures;    ///< with vertices below the horizon
    std::vector<MilkyWayLevel> milky_way;
    std::vector<Horizontal> ecliptic;  ///< a whole turn, a degree apart
    double sun_altitude_deg = 0;
    double moon_illuminated = 0;
};

/// At the model's instant for its site. Altitudes are geometric.
SOLSYS_API SkyChart sky_chart(Model& model);

}  // namespace solsys::sky
