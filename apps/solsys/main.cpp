// The command: a host program over the library's public interface.
#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <cstdio>
#include <exception>

#include "apps/solsys/commands.h"
#include "apps/solsys/failure.h"
#include "solsys/time_scales.h"
#include "solsys/version.h"

int main(int argc, char** argv) {
    CLI::App main("Positions, risings and physical data of the solar system's bodies.",
                  "solsys");
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
    app::add_position(main);
    app::add_sky(main);
    app::add_rise_set(main);
    app::add_constellation(main);
    app::add_orbit(main);
    app::add_moons(main);
    app::add_info(main);
    app::add_ephemeris_info(main);
    app::add_selfcheck(main);

    ET_UT::Init(nullptr);
    int status = 0;
    try {
        main.parse(argc, argv);
    } catch (const CLI::CallForHelp& call) {
        main.exit(call);
    } catch (const CLI::CallForAllHelp& call) {
        main.exit(call);
    } catch (const CLI::CallForVersion& call) {
        main.exit(call);
    } catch (const CLI::ParseError& error) {
        fmt::print(stderr, "solsys: {} (see solsys --help)\n", error.what());
        status = 2;
    } catch (const app::NothingFound& nothing) {
        fmt::print(stderr, "solsys: {}\n", nothing.what());
        status = 1;
    } catch (const std::exception& error) {
        fmt::print(stderr, "solsys: {}\n", error.what());
        status = 2;
    }
    ET_UT::Finish();
    return status;
}
