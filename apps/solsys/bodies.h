// Names of bodies as people write them.
#pragma once

#include <optional>
#include <string>

#include "solsys/sso_id.h"

namespace app {

struct Body {
    SSO_ID id;
    std::string name;
};

// A name ("jupiter", "Io", any case) or "plnt:5", "moon:501"; empty for what is neither.
std::optional<Body> find_body(const std::string& text);
// The same, throwing BadInput with what no_body() says.
Body parse_body(const std::string& text);
// That there is no such body, naming a close match if there is one.
std::string no_body(const std::string& text);

// The name that the identifier carries, else the English name of a catalogued body; "plnt:5"
// for what has none.
std::string name_of(const SSO_ID& id);

// "plnt:5".
std::string code_of(const SSO_ID& id);

}  // namespace app
