/// \file
/// What was meant perhaps.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "solsys/export.h"

namespace solsys::sky {

/// "perhaps Jupiter", "perhaps sky or info": those of the names that are one or two slips away
/// from what was typed (a letter more, less, other, or swapped); empty when none is.
[[nodiscard]] SOLSYS_API std::string suggestion(std::string_view typed,
                                                const std::vector<std::string>& names);

}  // namespace solsys::sky
