#include <unistd.h>

#include "apps/solsys/console.h"

namespace app {

std::vector<std::string> console_arguments(int argc, char** argv) {
    return {argv + (argc > 0 ? 1 : 0), argv + argc};
}

bool error_is_terminal() { return isatty(STDERR_FILENO) == 1; }

}  // namespace app
