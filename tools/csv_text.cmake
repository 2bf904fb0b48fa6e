# Turns the data rows of CSV into one string literal in OUT, byte for byte: comments and the
# header row go, rows end with a line feed. With COLUMNS empty the header row stays, for code that
# finds columns by their names.
# Run as: cmake -DCSV=... -DOUT=... -DCOLUMNS=... -P csv_text.cmake
file(READ "${CSV}" text)
string(REPLACE "\r" "" text "${text}")
# In this language brackets and semicolons group and separate; they pass through as marks.
string(REGEX REPLACE "(^|\n)#[^\n]*" "" text "${text}")
string(REGEX REPLACE "^\n+" "" text "${text}")
if(COLUMNS)
  string(FIND "${text}" "\n" end)
  string(SUBSTRING "${text}" 0 ${end} header)
  if(NOT header STREQUAL COLUMNS)
    message(FATAL_ERROR "${CSV}: columns are\n  ${header}\nbut the code expects\n  ${COLUMNS}")
  endif()
  math(EXPR start "${end} + 1")
  string(SUBSTRING "${text}" ${start} -1 text)
endif()
get_filename_component(name "${CSV}" NAME)
file(WRITE "${OUT}"
  "// Generated from ${name}; edit that file instead.\nR\"table(${text})table\"\n")
