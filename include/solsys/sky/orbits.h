/// \file
/// Orbits from files and from what people type.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "solsys/export.h"
#include "solsys/sky/body.h"
#include "solsys/sky/model.h"

namespace solsys::sky {

/// A body of a file of orbits: minor planets (MPCORB) or comets (CometEls), a line each.
///
/// \param path    UTF-8; devices and pipes are refused.
/// \param object  number, name or designation; empty: the only one of the file. Of several
///                orbits that with the epoch nearest to `near`.
/// \param report  called once with how many lines held no orbit, and the first of them; may be
///                empty.
SOLSYS_API Result<Body> find_in_file(
    const std::string& path, std::string_view object, const Instant& near,
    const std::function<void(const std::string&)>& report = {});

/// "epoch=jd:2459800.5,a=2.77,e=0.078,i=10.6,node=80.3,peri=73.6,M=334.3,H=3.3,G=0.12".
///
/// a or q [au]; M [deg] or tp, the time of perihelion; angles in degrees on the ecliptic and
/// equinox of J2000; epoch and tp in TT, decimals of a day allowed ("2020-07-03.68"). H with G
/// is the magnitude law of minor planets, H with K that of comets (also without either where tp
/// is given or the orbit is open). name is optional.
SOLSYS_API Result<Body> parse_elements(const std::string& text);

/// The minor planets and comets that come with the library; of a comet with several orbits that
/// with the epoch nearest to an instant.
[[nodiscard]] SOLSYS_API std::vector<Body> small_bodies(const Instant& near);

/// Moves a body from its elements on by numerical integration among the planets, the Moon,
/// Ceres, Pallas and Vesta instead of on its two-body orbit; takes its record along. With
/// `integrated` false no longer. A Failure for a body without elements or without a number.
SOLSYS_API Result<bool> integrate(Model& model, const Body& body, bool integrated = true);
/// Whether the place last asked of a body came by integration: beyond the ephemeris, and after
/// a collision, it comes by the two-body orbit.
[[nodiscard]] SOLSYS_API bool is_integrated(const Model& model, const Body& body);

/// How far a place may be off at an instant [arcsec], an order of magnitude by the age y of the
/// elements in years.
///
/// Two-body motion: 150 y^2 / sqrt(1 + (y / 9)^2) for minor planets, 150 y^2 for comets. Of the
/// places of the 65 minor planets and 32 comets that come with the library, seen from the Earth
/// within 29 years of their epochs, 93 to 99 in 100 were nearer than this to integrated ones at
/// every age from half a year on, and half of them nearer than a sixth of it
/// (data/reference/two_body_errors.csv); what comes close to a planet may be off by anything.
///
/// Integrated: 0.1 + 0.01 y^2 for minor planets, which bounds what the first four show over 22
/// years against another integration (0.03 to 0.41 arcsec). Comets, which their own jets move:
/// 1 + 10 y^2, a cautious choice: places by Halley's two listed orbits, eight years apart,
/// differ by 0.24 arcsec in 1986 and 3.2 in 2015, but jets at a return to perihelion, of which
/// this holds none, may move others by more than that. Empty for bodies without elements.
[[nodiscard]] SOLSYS_API std::optional<double> elements_uncertainty_arcsec(
    const Body& body, const Instant& t, bool integrated = false);

}  // namespace solsys::sky
