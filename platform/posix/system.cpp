#include "platform/system.h"

#include <pwd.h>
#include <unistd.h>

#include <vector>

namespace solsys {

void system_debug_output(const char*) {}

std::string system_data_folder() {
    // The user database, not the environment, says where the home is.
    std::vector<char> buffer(16384);
    passwd entry{};
    passwd* found = nullptr;
    const bool known =
        getpwuid_r(getuid(), &entry, buffer.data(), buffer.size(), &found) == 0 &&
        found != nullptr && found->pw_dir != nullptr && found->pw_dir[0] == '/';
    if (!known) return "/usr/share/solsys";
    return std::string(found->pw_dir) + "/.local/share/solsys";
}

}  // namespace solsys
