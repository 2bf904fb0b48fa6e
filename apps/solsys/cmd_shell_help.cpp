// solsys manual, solsys completions: what man(1) and shells want to know of the command.
#include <fmt/format.h>

#include <memory>

#include "apps/solsys/command_line.h"
#include "apps/solsys/commands.h"
#include "apps/solsys/failure.h"

namespace app {

void add_shell_help(CommandLine& main) {
    Command manual = main.add("manual", "The manual page, for man");
    manual.footer("Example:\n  solsys manual");
    manual.run([&main] { fmt::print("{}", main.manual()); });

    auto shell = std::make_shared<std::string>();
    Command completions =
        main.add("completions", "Completion of commands and options for a shell");
    completions.word("shell", *shell, "bash, zsh or fish");
    completions.footer("Example:\n  source <(solsys completions bash)");
    completions.run([&main, shell] {
        const std::string script = main.completions(*shell);
        if (script.empty())
            throw BadInput(fmt::format("no completions for '{}': bash, zsh or fish", *shell));
        fmt::print("{}", script);
    });
}

}  // namespace app
