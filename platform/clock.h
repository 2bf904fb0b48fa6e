// Waiting.
#pragma once

#include <cstdint>

namespace solsys {

// Suspends the calling thread for at least this long.
void sleep_microseconds(std::uint32_t microseconds);

}  // namespace solsys
