#include "platform/clock.h"

#include <chrono>
#include <thread>

namespace solsys {

void sleep_microseconds(std::uint32_t microseconds) {
    std::this_thread::sleep_for(std::chrono::microseconds(microseconds));
}

}  // namespace solsys
