// The events of the diary in words.
#pragma once

#include <string>

#include "solsys/sky/diary.h"

namespace solsys::sky {

std::string eclipse_text(const ECLIPSE& eclipse);
std::string text_of(const DiaryEvent& event);

}  // namespace solsys::sky
