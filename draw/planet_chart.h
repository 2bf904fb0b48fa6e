// A year of the planets: elongation from the Sun against date, with their events.
#pragma once

#include <string>
#include <vector>

#include "draw/svg.h"
#include "solsys/sky/diary.h"
#include "solsys/sky/planet_year.h"

namespace solsys::draw {

// Time runs downwards, a line for every month; the Sun in the middle, the evening sky on the
// left (east of the Sun), the morning sky on the right. Events of one planet are marked on its
// curve.
Svg planet_chart(const std::vector<sky::ElongationCurve>& curves,
                 const std::vector<sky::DiaryEvent>& events, const sky::Span& span,
                 const std::string& title, bool light = false);

}  // namespace solsys::draw
