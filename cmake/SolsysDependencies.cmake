# Libraries that the command, the tests and the benchmarks use; the core uses none.
# The header-only ones are reached through links in the build folder, so that a cross build
# sees them without seeing the build machine's own system headers.
set(solsys_third_party ${PROJECT_BINARY_DIR}/third_party/include)
file(MAKE_DIRECTORY ${solsys_third_party})
foreach(header CLI/CLI.hpp fmt/format.h nlohmann/json.hpp)
  get_filename_component(name ${header} DIRECTORY)
  find_path(SOLSYS_${name}_INCLUDE ${header} PATHS /usr/include NO_CMAKE_FIND_ROOT_PATH REQUIRED)
  file(CREATE_LINK ${SOLSYS_${name}_INCLUDE}/${name} ${solsys_third_party}/${name} SYMBOLIC)
endforeach()
add_library(solsys_formatting STATIC EXCLUDE_FROM_ALL ${CMAKE_CURRENT_LIST_DIR}/formatting.cpp)
target_compile_options(solsys_formatting PRIVATE ${solsys_light_optimisation})
target_include_directories(solsys_formatting SYSTEM PUBLIC ${solsys_third_party})
add_library(solsys_third_party INTERFACE)
target_link_libraries(solsys_third_party INTERFACE solsys_formatting)
