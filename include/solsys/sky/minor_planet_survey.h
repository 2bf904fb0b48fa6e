/// \file
/// Minor planets by the million: which of them are in a field, or come near the Earth.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "solsys/export.h"
#include "solsys/sky/approaches.h"
#include "solsys/sky/body.h"
#include "solsys/sky/model.h"
#include "solsys/sky/result.h"
#include "solsys/sky/search.h"

namespace solsys::sky {

/// Where and how faint.
struct SurveyField {
    double ra_deg = 0;        ///< centre, equator and equinox of J2000
    double dec_deg = 0;       ///< likewise
    double radius_deg = 180;  ///< 180: the whole sky
    double faintest = 99;     ///< magnitude
};

/// How a survey goes about it.
struct SurveyOptions {
    /// How far a body may have left its published orbit [au]: everything that could be inside
    /// if it has is looked at closely. Orbits of this year leave theirs by less than 0.001 au,
    /// close approaches aside.
    double drift_au = 0.002;
    /// Places on the published orbits alone; else those found are integrated among the planets
    /// from their epochs.
    bool two_body = false;
    SearchControl* control = nullptr;  ///< stops it and is told how far it is; may be null
};

/// A minor planet in a field, as the model's observer sees it.
struct SurveyFind {
    Body body;                  ///< which
    double ra_deg = 0;          ///< astrometric, J2000
    double dec_deg = 0;         ///< likewise
    double distance_au = 0;     ///< when the light left it
    double separation_deg = 0;  ///< from the centre
    double magnitude = 0;       ///< by its H and G; 99: not known
};

/// A least distance from the Earth.
struct SurveyApproach {
    Body body;          ///< which
    Approach approach;  ///< its planet is the Earth
};

/// Orbits of minor planets, packed for looking through all of them. Constant use from several
/// threads is safe, each with its own model.
class SOLSYS_API MinorPlanetSurvey {
  public:
    MinorPlanetSurvey();
    MinorPlanetSurvey(MinorPlanetSurvey&&) noexcept;             ///< takes the orbits over
    MinorPlanetSurvey& operator=(MinorPlanetSurvey&&) noexcept;  ///< likewise
    ~MinorPlanetSurvey();

    /// Reads a file of the Minor Planet Center (MPCORB); lines without an orbit are skipped,
    /// and told as `find_in_file` does. A Failure when it cannot be read or holds none.
    static Result<MinorPlanetSurvey> read(
        const std::string& path, const std::function<void(const std::string&)>& report = {});
    /// Adds one. False, and nothing changed, for a body that is no minor planet on an ellipse.
    bool add(const Body& body);
    [[nodiscard]] std::size_t size() const;  ///< how many orbits there are

    /// All in a field at the model's instant, the brightest first. What is left out is, on its
    /// orbit, farther from the field than light time, parallax and `drift_au` make up for, or
    /// too faint even at zero phase.
    [[nodiscard]] std::vector<SurveyFind> in_field(Model& model, const SurveyField& field,
                                                   const SurveyOptions& options = {}) const;

    /// All least distances from the Earth within a span (at most 366 days are looked at), in
    /// the order of time. What is left out can by its orbit and `drift_au` nowhere be so near.
    [[nodiscard]] std::vector<SurveyApproach> near_earth(
        Model& model, const Span& span, double within_au,
        const SurveyOptions& options = {}) const;

  private:
    struct SOLSYS_LOCAL Impl;
    std::unique_ptr<Impl> impl_;
};

}  // namespace solsys::sky
