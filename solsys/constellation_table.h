// Which constellation a direction lies in.
#pragma once

namespace solsys {

constexpr unsigned char kNoConstellation = 255;

// Index of the constellation (0 Andromeda to 87 Vulpecula, alphabetical by Latin name) that
// holds a direction [rad], right ascension in [0, 2 pi), in the frame the table is looked up
// in; 255 when no zone matches. Right ascensions outside the range, 2 pi included, are brought
// into it; a direction that is not finite answers 255. Source: Roman 1987, Publ. Astron. Soc.
// Pacific 99, 695.
unsigned char constellation_of(double ra, double dec);

}  // namespace solsys
