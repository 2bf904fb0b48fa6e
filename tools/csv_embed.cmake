# Turns a CSV into one string literal in OUT: comments go, the header row stays.
# Run as: cmake -DCSV=... -DOUT=... -P csv_embed.cmake
file(READ "${CSV}" text)
string(REPLACE "\r" "" text "${text}")
string(REGEX REPLACE "(^|\n)#[^\n]*" "" text "${text}")
string(REGEX REPLACE "^\n+" "" text "${text}")
get_filename_component(name "${CSV}" NAME)
file(WRITE "${OUT}"
  "// Generated from ${name}; edit that file instead.\nR\"table(${text})table\"\n")
