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

/// Of the Sun or of the Moon.
enum class EclipseKind { kSolar, kLunar };
/// "solar", "lunar".
[[nodiscard]] SOLSYS_API const char* to_string(EclipseKind kind);

/// A point on the ground.
struct GroundPoint {
    double latitude_deg = 0;   ///< geodetic
    double longitude_deg = 0;  ///< east positive
    Instant at;                ///< when what is told happens there
};

/// An eclipse for the Earth as a whole.
struct Eclipse {
    EclipseKind kind = EclipseKind::kSolar;  ///< of the Sun or of the Moon
    std::string type;  ///< "total", "hybrid", "annular", "partial", "penumbral"
    Instant greatest;  ///< shadow axis nearest to the Earth's centre; lunar: Moon nearest to
                       ///< the axis
    Instant begin;     ///< P1; of what has no such contact the greatest moment
    Instant end;       ///< P4; likewise
    double magnitude = 0;  ///< lunar: of the umbra, of a penumbral eclipse of the penumbra
    /// Least distance of the axis from the centre in equatorial radii of the Earth, north
    /// positive.
    double gamma = 0;
    int saros = 0;         ///< number of the series
    int lunation = 0;      ///< 0: new Moon of 2000 January 6
    bool central = false;  ///< solar: the axis meets the ground
    GroundPoint nearest;   ///< solar: greatest eclipse; lunar: the Moon in the zenith there
    std::optional<double> path_width_km;  ///< solar and central: at greatest eclipse
    std::optional<double> duration_s;     ///< likewise, of the total or annular phase
    /// Contacts as in `ECLIPSE_P1` and so on; empty: does not happen.
    std::optional<Instant> contacts[8];
    ECLIPSE record;  ///< the same for `CSWEclipses`
};

/// How eclipses are looked for.
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
    Instant at;                     ///< when
    double altitude_deg = 0;        ///< geometric, of the Sun or the Moon
    double azimuth_deg = 0;         ///< from north through east
    double position_angle_deg = 0;  ///< solar: of the contact, from north through east
};

/// An eclipse at a site. Moments below the horizon are given too.
struct LocalEclipse {
    std::string type;  ///< what the site sees
    /// \name Contacts
    /// Lunar: those of the partial phase (of a penumbral eclipse the penumbral one), with the
    /// total phase between them.
    /// @{
    std::optional<EclipseMoment> first;    ///< the eclipse begins
    std::optional<EclipseMoment> second;   ///< totality or the ring begins
    std::optional<EclipseMoment> maximum;  ///< the greatest phase
    std::optional<EclipseMoment> third;    ///< totality or the ring ends
    std::optional<EclipseMoment> fourth;   ///< the eclipse ends
    /// @}
    bool visible = false;         ///< whether any of it is above the horizon
    double magnitude = 0;         ///< the greatest that is seen
    double obscuration = 0;       ///< solar: covered part of the disk at that moment
    std::optional<Instant> rise;  ///< of the Sun or the Moon during the eclipse
    std::optional<Instant> set;   ///< likewise
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

/// A curve on the map.
struct MapCurve {
    MapCurveKind kind = MapCurveKind::kCentralLine;  ///< what it shows
    double value = 0;                                ///< of `kMagnitude` the magnitude
    std::string label;                               ///< "0.8", "11:30", "U1"
    Instant at;                                      ///< of its middle vertex
    std::vector<GroundPoint> points;                 ///< at least two, in order
};

/// A place with a name on the map.
struct MapPoint {
    std::string name;   ///< "greatest eclipse"
    GroundPoint point;  ///< where and when
};

/// What a map of an eclipse shows.
struct EclipseMap {
    Eclipse eclipse;                     ///< which
    std::vector<MapCurve> curves;        ///< those to be drawn first stand first
    std::vector<MapPoint> points;        ///< marks
    std::vector<EclipsePathPoint> path;  ///< the central line, minute by minute
};
/// The model's instant and observer stay.
[[nodiscard]] SOLSYS_API EclipseMap eclipse_map(Model& model, const Eclipse& eclipse);

/// The Moon in the shadow, for a picture; geocentric, in degrees.
struct MoonInShadow {
    double east = 0;      ///< of the Moon's centre from the axis
    double north = 0;     ///< likewise
    double moon = 0;      ///< radius of the Moon
    double umbra = 0;     ///< radius of the umbra
    double penumbra = 0;  ///< radius of the penumbra
};
/// At an instant of a lunar eclipse. Empty for a solar one, and where the bodies cannot be
/// computed. The model's instant and observer stay.
[[nodiscard]] SOLSYS_API std::optional<MoonInShadow> moon_in_shadow(Model& model,
                                                                    const Eclipse& eclipse,
                                                                    const Instant& t);

/// The disks of Sun and Moon from a site, in radii of the Sun.
struct EclipsedSun {
    double east = 0;   ///< of the Moon's centre from the Sun's
    double north = 0;  ///< likewise
    double moon = 0;   ///< radius of the Moon
};
/// At an instant. Empty where the bodies cannot be computed. The model's instant and observer
/// stay.
[[nodiscard]] SOLSYS_API std::optional<EclipsedSun> eclipsed_sun(Model& model, const Site& site,
                                                                 const Instant& t);

}  // namespace solsys::sky
