// The visible hemisphere as a picture.
#pragma once

#include <string>

#include "apps/solsys/sky_view.h"
#include "apps/solsys/svg.h"

namespace app {

// Zenith in the middle, the horizon round it, north up and east to the left.
Svg draw_sky(const SkyView& view, const std::string& title, const std::string& subtitle);

}  // namespace app
