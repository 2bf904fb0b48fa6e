/// \file
/// Eclipses as an almanac prints them: found, seen from a site, drawn on the map.
///
/// Decided by the ephemeris (the precise mode of `CSWEclipses`): every eclipse whose greatest
/// moment lies in the span is found. Radii as in the canon of solar eclipses (k = 0.272488 and
/// 0.272281), the Earth's shadow by Danjon's rule unless asked otherwise.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "solsys/eclipses.h"
#include "solsys/export.h"
#include "solsys/sky/instant.h"
#include "solsys/sky/model.h"
#include "solsys/sky/site.h"

namespace solsys::sky {

enum class EclipseKind { kSolar, kLunar };
/// "solar", "lunar".
[[nodiscard]] SOLSYS_API const char* to_string(EclipseKind kind);

/// A point on the ground.
struct GroundPoint {
    double latitude_deg = 0;   ///< geodetic
    double longitude_deg = 0;  ///< east positive
    Instant at;
};

/// An eclipse for the Earth as a whole.
struct Eclipse {
    EclipseKind kind = EclipseKind::kSolar;
    std::string type;  ///< "total", "hybrid", "annular", "partial", "penumbral"
    Instant greatest, begin, end;
    double magnitude = 0;  ///< lunar: of the umbra, of a penumbral eclipse of the penumbra
    double gamma = 0;
    int saros = 0;
    int lunation = 0;  ///< 0: new Moon of 2000 January 6
    bool central = false;
    GroundPoint nearest;  ///< solar: greatest eclipse; lunar: the Moon in the zenith there
    /// Solar with a central line: at greatest eclipse.
    std::optional<double> path_width_km;
    std::optional<double> duration_s;
    /// Contacts as in `ECLIPSE_P1` and so on; empty: does not happen.
    std::optional<Instant> contacts[8];
    ECLIPSE record;  ///< the same for `CSWEclipses`
};

struct EclipseOptions {
    bool fiftieth =
        false;  ///< lunar: the shadow enlarged by a fiftieth instead of Danjon's rule
    /// Told the fraction done; false ends the search. May be empty.
    std::function<bool(double)> progress;
};

/// All eclipses of a kind with their greatest moment in [from, to), in order. The model's
/// instant and observer stay.
[[nodiscard]] SOLSYS_API std::vector<Eclipse> find_eclipses(Model& model, EclipseKind kind,
                                                            const Span& span,
                                                            const EclipseOptions& options = {});

/// One moment of an eclipse at a site.
struct EclipseMoment {
    Instant at;
    double altitude_deg = 0;  ///< geometric, of the Sun or the Moon
    double azimuth_deg = 0;
    double position_angle_deg = 0;  ///< solar: of the contact, from north through east
};

/// An eclipse at a site. Moments below the horizon are given too.
struct LocalEclipse {
    std::string type;  ///< what the site sees
    /// Solar: the contacts. Lunar: first the partial phase (of a penumbral eclipse the
    /// penumbral one), second and third the total one.
    std::optional<EclipseMoment> first, second, maximum, third, fourth;
    bool visible = false;              ///< whether any of it is above the horizon
    double magnitude = 0;              ///< the greatest that is seen
    double obscuration = 0;            ///< solar: covered part of the disk at that moment
    std::optional<Instant> rise, set;  ///< of the Sun or the Moon during the eclipse
};
/// Empty when the penumbra passes the site by. The model's instant and observer stay.
[[nodiscard]] SOLSYS_API std::optional<LocalEclipse> eclipse_at(Model& model,
                                                                const Eclipse& eclipse,
                                                                const Site& site);

/// What a curve on the map shows.
enum class MapCurveKind {
    kCentralLine,
    kUmbralLimit,
    kPenumbralLimit,
    kRiseSet,         ///< the eclipse begins or ends at sunrise or sunset
    kHorizonMaximum,  ///< greatest phase at sunrise or sunset
    kMagnitude,       ///< greatest magnitude `value`
    kIsochrone,       ///< greatest phase at `at`
    kMoonHorizon      ///< lunar: the Moon on the horizon at `at`
};
/// "central line" and so on.
[[nodiscard]] SOLSYS_API const char* to_string(MapCurveKind kind);

struct MapCurve {
    MapCurveKind kind = MapCurveKind::kCentralLine;
    double value = 0;
    std::string label;  ///< "0.8", "11:30", "U1"
    Instant at;
    std::vector<GroundPoint> points;
};

struct MapPoint {
    std::string name;  ///< "greatest eclipse"
    GroundPoint point;
};

struct EclipseMap {
    Eclipse eclipse;
    std::vector<MapCurve> curves;
    std::vector<MapPoint> points;
    std::vector<EclipsePathPoint> path;  ///< the central line, minute by minute
};
/// The model's instant and observer stay.
[[nodiscard]] SOLSYS_API EclipseMap eclipse_map(Model& model, const Eclipse& eclipse);

/// The Moon in the shadow, for a picture: offsets from the axis towards east and north, and
/// radii, in degrees.
struct MoonInShadow {
    double east = 0, north = 0, moon = 0, umbra = 0, penumbra = 0;
};
[[nodiscard]] SOLSYS_API std::optional<MoonInShadow> moon_in_shadow(Model& model,
                                                                    const Eclipse& eclipse,
                                                                    const Instant& t);

/// The disks of Sun and Moon from a site, in radii of the Sun: the Moon's centre from the Sun's
/// towards east and north, and its radius.
struct EclipsedSun {
    double east = 0, north = 0, moon = 0;
};
[[nodiscard]] SOLSYS_API std::optional<EclipsedSun> eclipsed_sun(Model& model, const Site& site,
                                                                 const Instant& t);

}  // namespace solsys::sky
