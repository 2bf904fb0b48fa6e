#include "tests/support/run_command.h"

#include <gtest/gtest.h>

template class nlohmann::basic_json<>;

namespace support {

nlohmann::json Outcome::json() const {
    EXPECT_NE(out, "") << "status " << status << ", and on standard error: " << err;
    return nlohmann::json::parse(out);
}

}  // namespace support
