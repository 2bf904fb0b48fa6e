// The Sun and the Moon of a month, a row a day.
#pragma once

#include <string>

#include "apps/solsys/options.h"

namespace app {

// `month` is YYYY-MM. Throws BadInput.
void print_calendar(sky::Model& model, const std::string& month, const std::string& twilight,
                    const Setting& setting);

}  // namespace app
