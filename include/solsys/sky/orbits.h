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

/// How far a place may be off at an instant [arcsec], an order of magnitude by the age of the
/// elements. Two-body motion: 60 arcsec times the square of the years from their epoch, which
/// bounds what the main belt's minor planets show against integrated orbits (27 to 450 arcmin
/// after 22 years). Integrated: minor planets a tenth of an arcsec and a hundredth times that
/// square, which bounds what the first four show over 22 years (0.03 to 0.41 arcsec). Comets,
/// which their own jets move: 1 arcsec and 10 times the square, a cautious choice that nothing
/// was measured for; around a perihelion it may be too small.
/// Empty for bodies without elements.
[[nodiscard]] SOLSYS_API std::optional<double> elements_uncertainty_arcsec(
    const Body& body, const Instant& t, bool integrated = false);

}  // namespace solsys::sky
