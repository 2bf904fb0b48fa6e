#include <atomic>
#include <cstdarg>
#include <cstdio>

#include "platform/system.h"
#include "solsys/platform.h"

namespace {
std::atomic<DebugPrintHandler> debug_handler{nullptr};
}

void SetDebugPrintHandler(DebugPrintHandler handler) { debug_handler = handler; }

void PrintDebugString(const char* format, ...) {
    if (format == nullptr) return;

    char text[4096];  // longer text is cut, see the header
    std::va_list arguments;
    va_start(arguments, format);
    const int length = std::vsnprintf(text, sizeof text, format, arguments);
    va_end(arguments);
    if (length < 0) return;  // an argument that cannot be converted

    if (const DebugPrintHandler handler = debug_handler) {
        handler(text);
    } else {
        solsys::system_debug_output(text);
    }
}
