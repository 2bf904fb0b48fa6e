/// \file
/// A night at a site: when it is dark, and when each body is best seen in it.
#pragma once

#include <array>
#include <optional>
#include <vector>

#include "solsys/export.h"
#include "solsys/sky/model.h"
#include "solsys/sky/refraction.h"
#include "solsys/sky/zone.h"

namespace solsys::sky {

/// A night from the Sun's point of view. Instants are empty for what does not happen in it.
struct NightHours {
    CivilDate date;                  ///< of the evening
    Span span;                       ///< noon to noon by the clock
    std::optional<Instant> sunset;   ///< of the evening
    std::optional<Instant> sunrise;  ///< of the morning
    /// The Sun's centre at -6, -12 and -18 degrees: end of civil, nautical, astronomical
    /// twilight.
    std::array<std::optional<Instant>, 3> dusk;
    std::array<std::optional<Instant>, 3> dawn;  ///< the same in the morning: its beginning
    /// While stars are seen: the Sun's centre lower than -6 degrees; in nights that are never
    /// so dark, as long as it is below the horizon. Empty under the midnight Sun.
    std::vector<Span> dark;
    /// The Sun's centre lower than -18 degrees and the Moon below the horizon.
    std::vector<Span> moonless;
};

/// The night that an instant lies in, or, by day, the next one. The model's own site and
/// instant stay, here and below.
[[nodiscard]] SOLSYS_API NightHours night_around(Model& model, const Site& site,
                                                 const Zone& zone, const Instant& t);

/// When a body stands highest while it is dark: on the meridian, or where the dark begins or
/// ends (the Moon, which moves in declination, may come 0.02 degrees higher beside the
/// meridian).
struct BestView {
    Instant at;               ///< when
    double altitude_deg = 0;  ///< without refraction
    double azimuth_deg = 0;   ///< from north through east
};
/// Empty for a body that stays below the horizon of the site while it is dark, or that cannot
/// be computed.
[[nodiscard]] SOLSYS_API std::optional<BestView> best_view(Model& model, const Site& site,
                                                           const Body& body,
                                                           const NightHours& night);

}  // namespace solsys::sky
