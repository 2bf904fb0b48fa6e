// Directions as people write them.
#pragma once

#include <string>

namespace app {

// "83.82" (degrees), "5h35m17.3s", "5h 35m", "5:35:17" (hours). In degrees, 0 to 360. Throws
// BadInput.
double parse_right_ascension(const std::string& text);

// "-5.39", "-5d23m28s", "-5:23:28", with degree signs and primes too. In degrees, -90 to 90.
// Throws BadInput.
double parse_declination(const std::string& text);

}  // namespace app
