#include "tests/support/run_command.h"

template class nlohmann::basic_json<>;

namespace support {

nlohmann::json Outcome::json() const { return nlohmann::json::parse(out); }

}  // namespace support
