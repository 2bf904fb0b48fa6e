// The diary as a calendar for people: a month on a page.
#pragma once

#include "apps/solsys/long_search.h"
#include "apps/solsys/options.h"
#include "solsys/sky/diary.h"

namespace app {

// To standard output, by the setting's clock; with risings and settings at its site, which take
// as long as a search and are left out once that is stopped.
void print_diary_pages(sky::Model& model, const std::vector<sky::DiaryEvent>& events,
                       const Setting& setting, LongSearch& search);

}  // namespace app
