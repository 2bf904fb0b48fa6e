// The command: a host program over the library's public interface.
#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdio>
#include <exception>

#include "apps/solsys/commands.h"
#include "apps/solsys/console.h"
#include "apps/solsys/failure.h"
#include "solsys/sky/names.h"
#include "solsys/version.h"

namespace {

void declare_commands(CLI::App& main) {
    main.set_version_flag("--version", std::string("solsys ") + SOLSYS_VERSION);
    main.require_subcommand(1);
    // A leading slash is a path's on every system, never an option.
    main.allow_windows_style_options(false);
    main.footer(
        "Examples:\n"
        "  solsys sky --city London\n"
        "  solsys position jupiter saturn --time 2026-12-01\n"
        "  solsys COMMAND --help\n"
        "Exit status: 0 success, 1 nothing found, 2 bad usage or input.");
    app::add_sky(main);
    app::add_position(main);
    app::add_rise_set(main);
    app::add_constellation(main);
    app::add_orbit(main);
    app::add_moons(main);
    app::add_info(main);
    app::add_ephemeris_info(main);
}

// "help", "help sky" and words that are no subcommand.
void mind_first_word(const CLI::App& main, std::vector<std::string>& words) {
    if (words.empty()) {
        words = {"--help"};
        return;
    }
    if (words.front() == "help") {
        words.erase(words.begin());
        words.resize(std::min<std::size_t>(words.size(), 1));
        words.emplace_back("--help");
    }
    if (words.front().starts_with('-')) return;
    std::vector<std::string> names;
    for (const CLI::App* command : main.get_subcommands(nullptr))
        names.push_back(command->get_name());
    if (std::find(names.begin(), names.end(), words.front()) != names.end()) return;
    const std::string perhaps = solsys::sky::suggestion(words.front(), names);
    throw app::BadInput(fmt::format("no command '{}': {}", words.front(),
                                    perhaps.empty() ? "see solsys --help" : perhaps));
}

int run(int argc, char** argv) {
    CLI::App main("Positions, risings and physical data of the solar system's bodies.",
                  "solsys");
    declare_commands(main);
    try {
        std::vector<std::string> words = app::console_arguments(argc, argv);
        mind_first_word(main, words);
        // The parser takes them from the end.
        std::reverse(words.begin(), words.end());
        main.parse(std::move(words));
    } catch (const CLI::Success& call) {
        main.exit(call);
    } catch (const CLI::ParseError& error) {
        app::tell(std::string(error.what()) + " (see solsys --help)");
        return 2;
    } catch (const app::NothingFound& nothing) {
        app::tell(nothing.what());
        return 1;
    } catch (const std::exception& error) {
        app::tell(error.what());
        return 2;
    }
    if (std::fflush(stdout) != 0 || std::ferror(stdout) != 0) {
        app::tell("cannot write to standard output");
        return 2;
    }
    return 0;
}

}  // namespace

int main(int argc, char** argv) { return run(argc, argv); }
