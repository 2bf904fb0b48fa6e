# Helpers that keep the folders' own build files to a line or two.

# Warnings that find real faults here; contraction off keeps results the same on every CPU.
# What is in force for every target of the project, third-party sources excepted.
add_library(solsys_options INTERFACE)
target_compile_options(solsys_options INTERFACE
  -Wall -Wextra -Wpedantic -Wconversion -Wno-sign-conversion -Wshadow
  $<$<BOOL:${SOLSYS_WERROR}>:-Werror> -ffp-contract=off)
if(CMAKE_CXX_COMPILER_ID STREQUAL GNU AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  # This compiler takes the standard library's own concatenation of texts for an overlap.
  target_compile_options(solsys_options INTERFACE -Wno-restrict)
endif()
if(CMAKE_UNITY_BUILD AND CMAKE_CXX_COMPILER_ID STREQUAL GNU)
  # Of a class whose members have types of the same source, which is then no longer the main file.
  target_compile_options(solsys_options INTERFACE -Wno-subobject-linkage)
endif()
if(CMAKE_CXX_COMPILER_ID MATCHES "Clang")
  # The tables are selected and laid out at compile time; GCC's limit holds them, Clang's not.
  # Rows come from the tables in one brace each, members that are arrays without their own.
  target_compile_options(solsys_options INTERFACE -fconstexpr-steps=1000000000
    -Wno-missing-braces -Wno-overlength-strings)
endif()
if(SOLSYS_SANITIZE)
  target_compile_options(solsys_options INTERFACE -fsanitize=${SOLSYS_SANITIZE}
    -fno-sanitize-recover=all -fno-omit-frame-pointer -g1)
  target_link_options(solsys_options INTERFACE -fsanitize=${SOLSYS_SANITIZE})
  add_link_options(-fsanitize=${SOLSYS_SANITIZE})
endif()

# Optimisation where compiling costs more than running: tests, arguments, rows, pictures. What
# sanitizers add to every statement takes the optimiser twice as long as the rest together.
if(SOLSYS_SANITIZE)
  set(solsys_light_optimisation $<$<CONFIG:Release>:-O0>)
else()
  set(solsys_light_optimisation $<$<CONFIG:Release>:-O1>)
endif()

# What kernels are compiled with that exist for several processors.
set(SOLSYS_AVX2_FLAGS)
set(SOLSYS_AVX512_FLAGS)
if(CMAKE_SYSTEM_PROCESSOR MATCHES "^(x86_64|AMD64|amd64)$")
  set(SOLSYS_AVX2_FLAGS -mavx2)
  set(SOLSYS_AVX512_FLAGS -mavx512f -mprefer-vector-width=512)
  if(WIN32)
    # Windows aligns stacks to 16 bytes and GCC does not realign them for wider moves there.
    list(APPEND SOLSYS_AVX2_FLAGS -Wa,-muse-unaligned-vector-move)
    set(SOLSYS_AVX512_FLAGS ${SOLSYS_AVX2_FLAGS})
  endif()
endif()

# The object library of one folder of the core: every source below it. For the fuzz targets only
# the parsers and what they stand on: instrumenting the rest takes minutes and finds nothing.
set(solsys_fuzzed "/(core|platform|io|ephemeris/de|ephemeris/tle)/.*[.]cpp$")
string(APPEND solsys_fuzzed
  "|/frames/(leap_seconds|orientation_table|nutation|precession)[.]cpp$|/solsys/sso_id[.]cpp$"
  "|/sky/(body|cities|civil_date|deep_sky|instant|names|orbit_text|site|small_bodies|stars)[.]cpp$"
  "|/sky/(text|time_text|zone|zone_file|zone_rules|zone_table)[.]cpp$")
function(solsys_add_folder folder)
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/${folder}/*.cpp)
  # What differs between systems stands in a folder for each.
  if(WIN32)
    list(FILTER sources EXCLUDE REGEX "/posix/")
  else()
    list(FILTER sources EXCLUDE REGEX "/windows/")
  endif()
  if(SOLSYS_BUILD_FUZZERS)
    list(FILTER sources INCLUDE REGEX "${solsys_fuzzed}")
  endif()
  if(NOT sources)
    return()
  endif()
  add_library(solsys_${folder} OBJECT ${sources})
  target_link_libraries(solsys_${folder} PRIVATE solsys_options PUBLIC solsys_headers)
  target_compile_definitions(solsys_${folder} PRIVATE
    $<IF:$<BOOL:${BUILD_SHARED_LIBS}>,SOLSYS_BUILDING,SOLSYS_STATIC>)
  target_include_directories(solsys_${folder} PRIVATE ${PROJECT_SOURCE_DIR}
    ${PROJECT_BINARY_DIR}/tables)
  if(folder MATCHES "^(frames|ephemeris|solsys|events|io|sky|c_api)$" AND NOT SOLSYS_BUILD_FUZZERS)
    solsys_precompile(solsys_${folder})
    # The kernels are compiled with flags of their own.
    list(FILTER sources INCLUDE REGEX "_kernel_[a-z0-9]+[.]cpp$")
    set_source_files_properties(${sources} PROPERTIES SKIP_PRECOMPILE_HEADERS ON)
  endif()
  # Sources made of tables are many of one kind, each with its rows, and large.
  if(folder MATCHES "^(frames|ephemeris)$")
    set_target_properties(solsys_${folder} PROPERTIES UNITY_BUILD OFF)
  else()
    solsys_group(solsys_${folder})
  endif()
  if(EXISTS ${PROJECT_SOURCE_DIR}/${folder}/CMakeLists.txt)
    include(${PROJECT_SOURCE_DIR}/${folder}/CMakeLists.txt)
  endif()
endfunction()

# The standard headers that nearly every source of a large folder takes in, read once for all of
# them: half the time of most files. A compiler cache keeps whole objects and has no use for it.
function(solsys_precompile target)
  if(CMAKE_CXX_COMPILER_LAUNCHER)
    return()
  endif()
  if(NOT target STREQUAL solsys_frames AND NOT ARGN)
    target_precompile_headers(${target} REUSE_FROM solsys_frames)
  else()
    target_precompile_headers(${target} PRIVATE <algorithm> <array> <charconv> <cmath> <functional>
      <limits> <memory> <optional> <span> <string> <string_view> <vector> ${ARGN})
  endif()
  if(CMAKE_CXX_COMPILER_ID STREQUAL GNU AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    # Read this way, the standard library's own texts are no longer the system's to this compiler,
    # which takes some of them for longer than memory. Builds with a cache keep the warnings.
    target_compile_options(${target} PRIVATE -Wno-array-bounds -Wno-stringop-overflow)
  endif()
endfunction()

# For a build of everything, once (CMAKE_UNITY_BUILD): the sources of a target in groups of eight
# that are compiled as one, folder by folder, which takes half the time. Names that a folder's
# sources do not export must differ from each other for that.
function(solsys_group target)
  set_target_properties(${target} PROPERTIES UNITY_BUILD_MODE GROUP)
  get_target_property(sources ${target} SOURCES)
  list(FILTER sources INCLUDE REGEX "[.]cpp$")
  foreach(source ${sources})
    cmake_path(RELATIVE_PATH source BASE_DIRECTORY ${PROJECT_SOURCE_DIR} OUTPUT_VARIABLE folder)
    get_filename_component(folder "${folder}" DIRECTORY)
    string(MAKE_C_IDENTIFIER "${folder}" folder)
    math(EXPR count_${folder} "${count_${folder}} + 1")
    math(EXPR number "(${count_${folder}} - 1) / 8")
    set_source_files_properties(${source} PROPERTIES UNITY_GROUP ${folder}_${number})
  endforeach()
endfunction()

# Turns data/CSV into the initialisers tables/<stem>.inc, included by sources of FOLDER as
# "<stem>.inc". COLUMNS is the header row the code was written for; a table with another one
# stops the build.
function(solsys_csv_table folder csv columns)
  get_filename_component(stem ${csv} NAME_WE)
  set(out ${PROJECT_BINARY_DIR}/tables/${stem}.inc)
  set(script ${PROJECT_SOURCE_DIR}/tools/csv_table.cmake)
  add_custom_command(OUTPUT ${out} VERBATIM
    DEPENDS ${PROJECT_SOURCE_DIR}/data/${csv} ${script}
    COMMAND ${CMAKE_COMMAND} -DCSV=${PROJECT_SOURCE_DIR}/data/${csv} -DOUT=${out}
            -DCOLUMNS=${columns} -P ${script}
    COMMENT "Table ${stem}")
  target_sources(solsys_${folder} PRIVATE ${out})
endfunction()

# The same as one string literal, tables/<stem>_text.inc, for lists that are searched as text.
function(solsys_text_table folder csv columns)
  get_filename_component(stem ${csv} NAME_WE)
  set(out ${PROJECT_BINARY_DIR}/tables/${stem}_text.inc)
  set(script ${PROJECT_SOURCE_DIR}/tools/csv_text.cmake)
  add_custom_command(OUTPUT ${out} VERBATIM
    DEPENDS ${PROJECT_SOURCE_DIR}/data/${csv} ${script}
    COMMAND ${CMAKE_COMMAND} -DCSV=${PROJECT_SOURCE_DIR}/data/${csv} -DOUT=${out}
            -DCOLUMNS=${columns} -P ${script}
    COMMENT "Text table ${stem}")
  target_sources(solsys_${folder} PRIVATE ${out})
endfunction()
