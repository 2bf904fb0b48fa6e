# Install rules, the CMake package (find_package(solsys)) and the pkg-config file. Three components:
# runtime (the library), development (what a host builds with), command.
include(CMakePackageConfigHelpers)
set(solsys_cmake_folder ${CMAKE_INSTALL_LIBDIR}/cmake/solsys)
install(TARGETS solsys solsys_headers EXPORT solsysTargets
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT runtime
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime NAMELINK_COMPONENT development
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/include/solsys ${PROJECT_BINARY_DIR}/include/solsys
  DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development FILES_MATCHING PATTERN "*.h")
install(EXPORT solsysTargets NAMESPACE solsys::
  DESTINATION ${solsys_cmake_folder} COMPONENT development)
configure_package_config_file(cmake/solsysConfig.cmake.in
  ${PROJECT_BINARY_DIR}/solsysConfig.cmake INSTALL_DESTINATION ${solsys_cmake_folder})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/solsysConfigVersion.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/solsysConfig.cmake
  ${PROJECT_BINARY_DIR}/solsysConfigVersion.cmake
  DESTINATION ${solsys_cmake_folder} COMPONENT development)
# Relative to the file itself, so that an installed tree may be moved. A static library says
# itself what the shared one has linked in.
file(RELATIVE_PATH SOLSYS_PREFIX_FROM_PC
  /prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig /prefix)
string(REGEX REPLACE "/$" "" SOLSYS_PREFIX_FROM_PC "${SOLSYS_PREFIX_FROM_PC}")
if(NOT BUILD_SHARED_LIBS)
  set(SOLSYS_PC_STATIC_LIBS " -lstdc++ -lm")
  set(SOLSYS_PC_STATIC_FLAGS " -DSOLSYS_STATIC")
endif()
configure_file(cmake/solsys.pc.in solsys.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/solsys.pc
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT development)

# For compilers that do not read the other import library.
if(WIN32 AND BUILD_SHARED_LIBS AND CMAKE_DLLTOOL)
  add_custom_command(TARGET solsys POST_BUILD
    COMMAND ${CMAKE_DLLTOOL} -d ${PROJECT_BINARY_DIR}/solsys.def -D solsys.dll
            -l ${PROJECT_BINARY_DIR}/solsys.lib
    BYPRODUCTS ${PROJECT_BINARY_DIR}/solsys.lib VERBATIM)
  install(FILES ${PROJECT_BINARY_DIR}/solsys.lib ${PROJECT_BINARY_DIR}/solsys.def
    DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development)
endif()

# Debian's packages bring files of this kind of their own, in the form Debian wants.
if(CMAKE_INSTALL_PREFIX STREQUAL "/usr")
  return()
endif()
install(FILES LICENSE NOTICE DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT runtime)
install(DIRECTORY examples/host examples/guide DESTINATION ${CMAKE_INSTALL_DOCDIR}/examples
  COMPONENT development)
