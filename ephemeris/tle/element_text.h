// Texts of element sets in any of their forms.
#pragma once

#include <string_view>

#include "ephemeris/tle/set_sink.h"

namespace solsys {

void read_element_text(std::string_view text, bool any_checksum, SetSink& sink);

}  // namespace solsys
