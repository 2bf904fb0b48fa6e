// The diary as a calendar file (RFC 5545).
#pragma once

#include <string>
#include <vector>

#include "solsys/sky/diary.h"

namespace solsys::draw {

// One entry an event, at its instant in UTC, taking no time. Identifiers are made of kind,
// objects and date, so that a calendar that is read again replaces its entries. Events of years
// that the format cannot write (before 0 or after 9999) are left out.
std::string icalendar(const std::vector<sky::DiaryEvent>& events, const std::string& name);

}  // namespace solsys::draw
