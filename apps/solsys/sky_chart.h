// The visible hemisphere as a picture.
#pragma once

#include <string>

#include "apps/solsys/svg.h"
#include "solsys/solar_system.h"

namespace app {

// The sky at the model's instant over its observer, who stands on the ground: zenith in the
// middle, horizon around it, north up and east to the left, as one sees it lying on the back.
// Stars are drawn as far as the twilight lets them be seen.
Svg draw_sky(CSWSolSys& model, const std::string& place, const std::string& when);

}  // namespace app
