#include "apps/solsys/console.h"

namespace app {

std::vector<std::string> console_arguments(int argc, char** argv) {
    return {argv + (argc > 0 ? 1 : 0), argv + argc};
}

}  // namespace app
