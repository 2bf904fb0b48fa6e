// Orbital elements as typed on the command line.
#pragma once

#include <string>

#include "apps/solsys/targets.h"

namespace app {

// "epoch=jd:2459800.5,a=2.77,e=0.078,i=10.6,node=80.3,peri=73.6,M=334.3,H=3.3,G=0.12".
//
// a or q [au]; M [deg] or tp, the time of perihelion; angles in degrees on the ecliptic and
// equinox of J2000; epoch and tp in TT. H with G is the magnitude law of minor planets, H with
// K that of comets (also without either where tp is given or the orbit is open). name is
// optional. Throws BadInput for what is not understood, missing, or no orbit.
Target parse_elements(const std::string& text);

}  // namespace app
