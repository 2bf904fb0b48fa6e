// What a system wants to know of the command beside its own help: the manual page and the
// completion of words in shells, written from the declared options.
#pragma once

#include <string>
#include <string_view>

namespace CLI {
class App;
}

namespace app {

// roff, for man(1).
std::string manual_page(const CLI::App& command, std::string_view version);

// For "bash", "zsh" or "fish"; empty for another shell.
std::string completions(const CLI::App& command, std::string_view shell);

}  // namespace app
