# What the shared library exports: every function that the public headers declare, and nothing
# of the inside. Run as cmake -DNM=... -DLIBRARY=... -DNM_FLAGS=... -DHEADERS=... -P this file;
# for Windows LIBRARY is the import library, whose symbols are the exports of the DLL.
cmake_minimum_required(VERSION 3.25)
execute_process(COMMAND ${NM} ${NM_FLAGS} -C --defined-only ${LIBRARY}
  OUTPUT_VARIABLE symbols RESULT_VARIABLE failed)
if(failed OR symbols STREQUAL "")
  message(FATAL_ERROR "cannot list the symbols of ${LIBRARY}")
endif()

# The inside of the library: its namespace, and the classes nested in the exported ones.
string(REGEX MATCHALL
  "\n[0-9a-fA-F]+ [A-Z] ((vtable|typeinfo|typeinfo name) for )?(solsys|CSW[A-Za-z]+::[A-Z][A-Za-z]+)::[^\n]*"
  inside "${symbols}")
# The typed layer is a namespace of the outside.
list(FILTER inside EXCLUDE REGEX " solsys::sky::[A-Za-z]")
if(inside)
  message(SEND_ERROR "exported, but of the inside: ${inside}")
endif()

file(GLOB headers ${HEADERS}/*.h ${HEADERS}/sky/*.h)
set(missing "")
set(declared 0)
file(READ ${HEADERS}/solsys.h all_of_them)
file(READ ${HEADERS}/sky/sky.h all_of_sky)
string(APPEND all_of_them "${all_of_sky}/sky.h\"")
foreach(header ${headers})
  get_filename_component(header_name ${header} NAME)
  # The C interface stands beside both.
  if(NOT header_name MATCHES "^(solsys|c_api)\\.h$" AND NOT all_of_them MATCHES "/${header_name}\"")
    message(SEND_ERROR "solsys.h leaves out ${header_name}")
  endif()
  file(READ ${header} text)
  string(REPLACE ";" "\n@\n" text "${text}")  # a list separator to this language
  string(REGEX REPLACE "//[^\n]*" "" text "${text}")
  string(REGEX REPLACE "#[^\n]*" "" text "${text}")
  # What is declared for the library's own code.
  string(REGEX REPLACE "\n *(struct )?SOLSYS_LOCAL[^@]*@" "" text "${text}")
  # Declarations with SOLSYS_API of their own: the name before the first parenthesis.
  string(REGEX MATCHALL "SOLSYS_API[^(){}@=]*\\(" free "${text}")
  foreach(declaration ${free})
    string(REGEX MATCH "([A-Za-z_][A-Za-z_0-9]*)[ \n]*\\($" found "${declaration}")
    list(APPEND names "${CMAKE_MATCH_1}")
  endforeach()
  # Members of exported classes.
  if(text MATCHES "class SOLSYS_API CSW")
    string(REGEX MATCHALL "\n    [A-Za-z_][A-Za-z_0-9:<>*& ]*[ *&]([A-Za-z_][A-Za-z_0-9]*)\\([^()]*\\)( const)?[ \n]*@"
      members "${text}")
    foreach(declaration ${members})
      string(REGEX MATCH "([A-Za-z_][A-Za-z_0-9]*)\\(" found "${declaration}")
      list(APPEND names "${CMAKE_MATCH_1}")
    endforeach()
  endif()
endforeach()
list(REMOVE_DUPLICATES names)
foreach(name ${names})
  math(EXPR declared "${declared} + 1")
  if(NOT symbols MATCHES "[ :_]${name}(\\[abi[^\n]*)?[\n(@[]")
    list(APPEND missing ${name})
  endif()
endforeach()
if(declared LESS 200)
  message(SEND_ERROR "only ${declared} declarations found: the headers are read wrongly")
endif()
if(missing)
  message(SEND_ERROR "declared, but not exported: ${missing}")
endif()
message(STATUS "${declared} declared names are exported")

# The C interface, name by name: what is on the list stays for ever, what is not was not meant.
file(STRINGS ${C_SYMBOLS} listed)
string(REGEX MATCHALL "\n[0-9a-fA-F]+ T solsys_[a-z_0-9]+" exported "\n${symbols}")
list(TRANSFORM exported REPLACE "\n[0-9a-fA-F]+ T " "")
list(REMOVE_DUPLICATES exported)
foreach(name ${listed})
  if(NOT name IN_LIST exported)
    message(SEND_ERROR "the C interface has lost ${name}")
  endif()
endforeach()
foreach(name ${exported})
  if(NOT name IN_LIST listed)
    message(SEND_ERROR "${name} is new in the C interface: add it to ${C_SYMBOLS}")
  endif()
endforeach()
