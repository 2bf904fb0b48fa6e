/// \file
/// Orbits from files and from what people type.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "solsys/export.h"
#include "solsys/sky/body.h"

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

/// How far a place by two-body motion may be off at an instant [arcsec], an order of magnitude:
/// 60 arcsec times the square of the years from the epoch of the elements. It bounds what the
/// main belt's minor planets show against integrated orbits (27 to 450 arcmin after 22 years).
/// Empty for bodies without elements.
[[nodiscard]] SOLSYS_API std::optional<double> elements_uncertainty_arcsec(const Body& body,
                                                                           const Instant& t);

}  // namespace solsys::sky
