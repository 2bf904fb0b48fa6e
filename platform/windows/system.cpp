#include "platform/system.h"

#include <windows.h>
// After windows.h, which it needs.
#include <shlobj.h>

#include "platform/windows/wide_text.h"

namespace solsys {

void system_debug_output(const char* text) { OutputDebugStringA(text); }

std::string system_data_folder() {
    wchar_t folder[MAX_PATH] = {};
    if (SHGetFolderPathW(nullptr, CSIDL_LOCAL_APPDATA, nullptr, SHGFP_TYPE_CURRENT, folder) !=
        S_OK)
        return "solsys";
    return utf8_from_utf16(folder).value_or(".") + "\\solsys";
}

}  // namespace solsys
