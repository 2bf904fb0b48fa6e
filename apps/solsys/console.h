// What differs between terminals: how arguments arrive, and how text gets out.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace app {

// The arguments without the program's name, in UTF-8; readies the output for it too.
std::vector<std::string> console_arguments(int argc, char** argv);

// Whether someone looks at standard error while it is written.
bool error_is_terminal();

// A line for the system's shell, in UTF-8; 0: it ran and all was well.
int run_in_shell(const std::string& line);

// Ends the program with a line on standard error, from within the handler of a signal.
[[noreturn]] void end_at_once(std::string_view line, int status);

}  // namespace app
