// One function per subcommand: declares its options and sets what it runs.
//
// To add a subcommand, touch these files:
//   1. sky/ and include/solsys/sky/ hold the astronomy: a function from a Model (and a Span, a
//      Body) to values with names and units. The command computes nothing.
//   2. cmd_NAME.cpp here: a Request (Options and what is its own), add_NAME() that declares the
//      options (add_site_options and so on of options.h), a footer with examples, a callback;
//      run() that makes a Setting (site, clock, format), a Model (model_of), rows, and a
//      Table<Row> of Column{name, title, format, extract}. `name` is the key in JSON and CSV,
//      with its unit; `title` the heading for people, empty for what a table leaves out. Pass
//      setting.context(model) to the table, so that rows say site, zone, source and version.
//   3. commands.h and the list in main.cpp: a line each.
//   4. draw/NAME_picture.*: a picture, if there is one, from sky/ values; add_picture_options
//      and write_picture (picture.h) put it where it belongs. What takes long runs with a
//      LongSearch (long_search.h): a bar on the terminal, and Ctrl-C.
//   5. docs/command.md: the keys, in its table (a test compares them with what is printed), and
//      tests/apps: a row of the table test with every numeric column against recorded values.
// Input that cannot be used throws BadInput (status 2; the message names the argument), nothing
// found throws NothingFound (status 1); need() does so for a Result.
#pragma once

namespace app {

class CommandLine;

void add_position(CommandLine& main);
void add_sky(CommandLine& main);
void add_tonight(CommandLine& main);
void add_rise_set(CommandLine& main);
void add_conjunctions(CommandLine& main);
void add_diary(CommandLine& main);
void add_occultations(CommandLine& main);
void add_constellation(CommandLine& main);
void add_orbit(CommandLine& main);
void add_approaches(CommandLine& main);
void add_tle(CommandLine& main);
void add_moons(CommandLine& main);
void add_info(CommandLine& main);
void add_eclipses(CommandLine& main);
void add_ephemeris_info(CommandLine& main);
void add_selfcheck(CommandLine& main);
// "manual" and "completions".
void add_shell_help(CommandLine& main);

}  // namespace app
