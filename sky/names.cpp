#include "solsys/sky/names.h"

#include "sky/text.h"

namespace solsys::sky {

std::string suggestion(std::string_view typed, const std::vector<std::string>& names) {
    Suggestions close(typed);
    for (const std::string& name : names) close.consider(name);
    return close.text();
}

}  // namespace solsys::sky
