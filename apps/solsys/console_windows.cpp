// The C runtime hands over arguments in the code page of the system, which loses letters; the
// command line itself is UTF-16.
#include <windows.h>
// After it: needs its types.
#include <io.h>
#include <shellapi.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>

#include "apps/solsys/console.h"

namespace app {
namespace {

std::string utf8_of(const wchar_t* wide) {
    const int size = WideCharToMultiByte(CP_UTF8, 0, wide, -1, nullptr, 0, nullptr, nullptr);
    if (size <= 1) return {};
    std::string text(static_cast<std::size_t>(size), '\0');
    WideCharToMultiByte(CP_UTF8, 0, wide, -1, text.data(), size, nullptr, nullptr);
    text.resize(static_cast<std::size_t>(size) - 1);
    return text;
}

}  // namespace

std::vector<std::string> console_arguments(int argc, char** argv) {
    SetConsoleOutputCP(CP_UTF8);
    int count = 0;
    LPWSTR* const wide = CommandLineToArgvW(GetCommandLineW(), &count);
    std::vector<std::string> arguments;
    if (wide == nullptr) return {argv + (argc > 0 ? 1 : 0), argv + argc};
    for (int i = 1; i < count; ++i) arguments.push_back(utf8_of(wide[i]));
    LocalFree(wide);
    return arguments;
}

bool error_is_terminal() { return _isatty(_fileno(stderr)) != 0; }

int run_in_shell(const std::string& line) {
    return _wsystem(std::filesystem::path(std::u8string(line.begin(), line.end())).c_str());
}

void end_at_once(std::string_view line, int status) {
    [[maybe_unused]] const int written =
        _write(_fileno(stderr), line.data(), static_cast<unsigned>(line.size()));
    _exit(status);
}

}  // namespace app
