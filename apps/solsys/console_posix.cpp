#include <unistd.h>

#include <cstdlib>

#include "apps/solsys/console.h"

namespace app {

std::vector<std::string> console_arguments(int argc, char** argv) {
    return {argv + (argc > 0 ? 1 : 0), argv + argc};
}

bool error_is_terminal() { return isatty(STDERR_FILENO) == 1; }

int run_in_shell(const std::string& line) { return std::system(line.c_str()); }

void end_at_once(std::string_view line, int status) {
    [[maybe_unused]] const ssize_t written = write(STDERR_FILENO, line.data(), line.size());
    _exit(status);
}

}  // namespace app
