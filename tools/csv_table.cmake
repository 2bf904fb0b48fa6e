# Turns the data rows of CSV into braced initialisers in OUT, digit for digit.
# Run as: cmake -DCSV=... -DOUT=... -DCOLUMNS=... -P csv_table.cmake
# Lines that start with # are comments; text cells carry their own quotes; an empty cell is an
# empty initialiser, zero.
file(READ "${CSV}" text)
string(REPLACE "\r" "" text "${text}")
# A list separator in a comment would be taken as one by the functions below.
string(REPLACE ";" "," text "${text}")
string(REGEX REPLACE "(^|\n)#[^\n]*" "" text "${text}")
string(REGEX REPLACE "^\n+" "" text "${text}")

string(REGEX MATCH "^[^\n]*" header "${text}")
if(NOT header STREQUAL COLUMNS)
  message(FATAL_ERROR "${CSV}: columns are\n  ${header}\nbut the code expects\n  ${COLUMNS}")
endif()

string(LENGTH "${header}\n" start)
string(SUBSTRING "${text}" ${start} -1 text)
# Twice: two empty cells in a row share a comma.
string(REPLACE ",," ",{}," text "${text}")
string(REPLACE ",," ",{}," text "${text}")
string(REGEX REPLACE "([^\n]+)\n" "{\\1},\n" rows "${text}")

get_filename_component(name "${CSV}" NAME)
file(WRITE "${OUT}" "// Generated from ${name}; edit that file instead.\n${rows}")
