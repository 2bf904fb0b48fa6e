// The diary as a calendar for people: a month on a page.
#pragma once

#include <vector>

#include "solsys/sky/diary.h"
#include "solsys/sky/zone.h"

namespace app {

// To standard output, by the clock of the zone; with the risings and settings of the model's
// site.
void print_diary_pages(solsys::sky::Model& model,
                       const std::vector<solsys::sky::DiaryEvent>& events,
                       const solsys::sky::Span& span, const solsys::sky::Zone& zone);

}  // namespace app
