// One function per subcommand: declares its options and sets what it runs.
#pragma once

#include <CLI/CLI.hpp>

namespace app {

void add_position(CLI::App& main);
void add_sky(CLI::App& main);
void add_rise_set(CLI::App& main);
void add_constellation(CLI::App& main);
void add_orbit(CLI::App& main);
void add_moons(CLI::App& main);
void add_info(CLI::App& main);
void add_ephemeris_info(CLI::App& main);
void add_selfcheck(CLI::App& main);

}  // namespace app
