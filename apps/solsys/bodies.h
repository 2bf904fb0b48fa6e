// Names of bodies as people write them.
#pragma once

#include <string>

#include "solsys/sso_id.h"

namespace app {

struct Body {
    SSO_ID id;
    std::string name;
};

// A name ("jupiter", "Io", any case) or "plnt:5", "moon:501". Throws BadInput for what is
// neither, naming a close match if there is one.
Body parse_body(const std::string& text);

// English name of a catalogued body; "plnt:5" for what has none.
std::string name_of(const SSO_ID& id);

// "plnt:5".
std::string code_of(const SSO_ID& id);

}  // namespace app
