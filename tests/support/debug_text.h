// Collects the library's debug text for the life of the object.
#pragma once

#include <string>

#include "solsys/platform.h"

namespace support {

class DebugText {
  public:
    DebugText() {
        text().clear();
        SetDebugPrintHandler([](const char* piece) { text() += piece; });
    }
    ~DebugText() { SetDebugPrintHandler(nullptr); }
    DebugText(const DebugText&) = delete;
    DebugText& operator=(const DebugText&) = delete;

    static std::string& text() {
        static std::string collected;
        return collected;
    }
};

}  // namespace support
