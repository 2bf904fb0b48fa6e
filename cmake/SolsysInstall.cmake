# Install rules, the CMake package (find_package(solsys)) and the pkg-config file.
include(CMakePackageConfigHelpers)
install(TARGETS solsys solsys_headers EXPORT solsysTargets
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(DIRECTORY ${PROJECT_SOURCE_DIR}/include/solsys ${PROJECT_BINARY_DIR}/include/solsys
  DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} FILES_MATCHING PATTERN "*.h")
install(EXPORT solsysTargets NAMESPACE solsys::
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/solsys)
configure_package_config_file(cmake/solsysConfig.cmake.in
  ${PROJECT_BINARY_DIR}/solsysConfig.cmake
  INSTALL_DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/solsys)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/solsysConfigVersion.cmake
  COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/solsysConfig.cmake
  ${PROJECT_BINARY_DIR}/solsysConfigVersion.cmake
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/solsys)
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
install(FILES ${PROJECT_BINARY_DIR}/solsys.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
install(FILES LICENSE DESTINATION ${CMAKE_INSTALL_DOCDIR})
