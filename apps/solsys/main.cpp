// The command: a host program over the library's public interface.
#include <cstdio>
#include <exception>

#include "apps/solsys/command_line.h"
#include "apps/solsys/commands.h"
#include "apps/solsys/console.h"
#include "apps/solsys/failure.h"
#include "apps/solsys/long_search.h"
#include "solsys/version.h"

namespace {

void declare_commands(app::CommandLine& main) {
    app::add_sky(main);
    app::add_tonight(main);
    app::add_position(main);
    app::add_rise_set(main);
    app::add_diary(main);
    app::add_conjunctions(main);
    app::add_occultations(main);
    app::add_eclipses(main);
    app::add_moons(main);
    app::add_orbit(main);
    app::add_approaches(main);
    app::add_tle(main);
    app::add_constellation(main);
    app::add_info(main);
    app::add_ephemeris_info(main);
    app::add_selfcheck(main);
    app::add_shell_help(main);
}

int run(int argc, char** argv) {
    app::CommandLine main("Positions, risings and physical data of the solar system's bodies.",
                          "Examples:\n"
                          "  solsys sky --city London\n"
                          "  solsys position jupiter saturn --time 2026-12-01\n"
                          "  solsys COMMAND --help\n"
                          "Exit status: 0 success, 1 nothing found, 2 bad usage or input, 130 "
                          "stopped by Ctrl-C.",
                          "solsys " SOLSYS_VERSION,
                          "ephemeris: the built-in theory, years -3000 to 3000; --ephemeris "
                          "PATH takes a DE file");
    declare_commands(main);
    app::LongSearch::catch_interrupts();
    int status = 0;
    try {
        main.run(app::console_arguments(argc, argv));
    } catch (const app::NothingFound& nothing) {
        app::tell(nothing.what());
        status = 1;
    } catch (const std::exception& error) {
        app::tell(error.what());
        return 2;
    }
    if (std::fflush(stdout) != 0 || std::ferror(stdout) != 0) {
        app::tell("cannot write to standard output");
        return 2;
    }
    if (app::LongSearch::interrupted()) {
        app::tell("stopped: this is what was found till then");
        return 130;
    }
    return status;
}

}  // namespace

int main(int argc, char** argv) { return run(argc, argv); }
