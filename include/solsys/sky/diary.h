/// \file
/// The calendar of the sky: every event of a span, in order, told in words and numbers.
///
/// Kinds, definitions and accuracy are those of `solsys/diary.h`.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "solsys/diary.h"
#include "solsys/export.h"
#include "solsys/sky/body.h"
#include "solsys/sky/model.h"
#include "solsys/sky/search.h"

namespace solsys::sky {

/// One event. Empty is what the kind does not have, or what needs a site.
struct DiaryEvent {
    Instant at;                                ///< when it happens
    int kind = 0;                              ///< SKYEVENT_... 1 to 32
    std::string text;                          ///< "Jupiter 0.1° south of Saturn"
    std::optional<Body> first;                 ///< the body that it happens to
    std::optional<Body> second;                ///< the other of two
    std::optional<double> separation_deg;      ///< of the centres
    std::optional<double> position_angle_deg;  ///< of the first from the second
    std::optional<double> elongation_deg;      ///< of the first from the Sun, positive east
    std::optional<double> magnitude;           ///< of the first body
    std::optional<double> second_magnitude;    ///< of the second
    std::optional<double> distance_au;    ///< from the Earth; seasons, apsides: from the Sun
    std::optional<double> longitude_deg;  ///< seasons: the Sun's; phases: the Moon's; of date
    std::optional<double> latitude_deg;   ///< phases: the Moon's, of date
    std::optional<int> constellation;     ///< 0 to 87, of the first body
    std::optional<double> hours_to_perigee;          ///< phases; negative: hours since
    std::optional<double> hours_to_apogee;           ///< likewise
    std::optional<double> zhr;                       ///< showers: zenithal hourly rate
    std::optional<double> moon_illuminated;          ///< showers: fraction of the disk
    std::array<std::optional<Instant>, 4> contacts;  ///< transits; occultations for the site
    bool in_longitude = false;                       ///< stations
    std::optional<double> azimuth_deg;               ///< for the site, from north through east
    std::optional<double> altitude_deg;              ///< for the site, geometric
};

/// What a diary is made of.
struct DiaryOptions {
    std::vector<int> kinds;  ///< empty: all
    /// Conjunctions of the Moon and the planets with the bright stars near the ecliptic:
    /// Aldebaran, Pollux, Regulus, Spica, Antares and the Pleiades (Alcyone).
    bool stars = true;
    /// Of conjunctions only those with the two nearer to each other than this.
    double widest_conjunction_deg = 180;
};

/// All events of a span in order of time, for the model's site where it has one. The model's
/// instant and observer come back.
SOLSYS_API std::vector<DiaryEvent> diary(Model& model, const Span& span,
                                         const DiaryOptions& options = {},
                                         SearchControl* control = nullptr);

/// "march-equinox", "full-moon", "opposition" ...; empty for no kind.
SOLSYS_API std::string_view name_of_kind(int kind);
/// A kind by its number or its name; 0 for none.
SOLSYS_API int find_kind(std::string_view text);

}  // namespace solsys::sky
