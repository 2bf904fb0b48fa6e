# Packages (cpack in a build folder): source tarball; Debian packages libsolsysN, libsolsys-dev and
# solsys from a build with -DCMAKE_INSTALL_PREFIX=/usr, with SOLSYS_BUILD_PYTHON python3-solsys as
# well; a .zip from the Windows build.
set(CPACK_PACKAGE_NAME solsys)
set(CPACK_PACKAGE_VENDOR "The solsys developers")
set(CPACK_PACKAGE_CONTACT "The solsys developers <solsys@localhost.localdomain>")
set(CPACK_RESOURCE_FILE_LICENSE ${PROJECT_SOURCE_DIR}/LICENSE)
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR}/packages)
set(CPACK_STRIP_FILES ON)
set(CPACK_COMPONENTS_ALL runtime development command)
if(SOLSYS_BUILD_PYTHON)
  list(APPEND CPACK_COMPONENTS_ALL python)
endif()
set(CPACK_VERBATIM_VARIABLES ON)

set(CPACK_SOURCE_GENERATOR TXZ)
set(CPACK_SOURCE_PACKAGE_FILE_NAME solsys-${PROJECT_VERSION})
set(CPACK_SOURCE_IGNORE_FILES "/build/" "/\\.git/" "/\\.cache/" "__pycache__")

if(WIN32)
  # One archive that runs from any folder: the command and its DLL side by side in bin.
  set(CPACK_GENERATOR ZIP)
  set(CPACK_PACKAGE_FILE_NAME solsys-${PROJECT_VERSION}-windows-x86_64)
  set(CPACK_ARCHIVE_COMPONENT_INSTALL ON)
  set(CPACK_COMPONENT_INCLUDE_TOPLEVEL_DIRECTORY ON)
  set(CPACK_COMPONENTS_GROUPING ALL_COMPONENTS_IN_ONE)
  include(CPack)
  return()
endif()

set(CPACK_GENERATOR DEB)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(library libsolsys${PROJECT_VERSION_MAJOR})
# The library's own packages are found where they are built, not where they will be installed.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR}/lib)

# First line: the synopsis.
set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME ${library})
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_RUNTIME_DESCRIPTION "positions and events of the solar system (library)
Places of the Sun, the Moon, planets, satellites, small bodies and stars for
an observer and an instant, in apparent and astrometric frames; magnitudes,
constellations; eclipses, conjunctions, risings and a diary of the sky.

This package holds the shared library.")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libsolsys-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SHLIBDEPS OFF)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "${library} (= ${PROJECT_VERSION})")
set(CPACK_DEBIAN_DEVELOPMENT_DESCRIPTION "positions and events of the solar system (development)
Headers, the CMake package and the pkg-config file for programs that use the
library solsys.")
set(CPACK_DEBIAN_COMMAND_PACKAGE_NAME solsys)
set(CPACK_DEBIAN_COMMAND_PACKAGE_SECTION science)
set(CPACK_DEBIAN_COMMAND_PACKAGE_DEPENDS "${library} (= ${PROJECT_VERSION})")
set(CPACK_DEBIAN_COMMAND_DESCRIPTION "positions and events of the solar system (command)
Where everything in the sky is, when it rises, what it does: tables, JSON,
CSV and pictures from the command line.")
if(SOLSYS_BUILD_PYTHON)
  # The extension is for the Python it was built with alone.
  find_package(Python3 REQUIRED COMPONENTS Interpreter)
  math(EXPR next_minor "${Python3_VERSION_MINOR} + 1")
  set(python "python3 (>= 3.${Python3_VERSION_MINOR}~), python3 (<< 3.${next_minor})")
  set(CPACK_DEBIAN_PYTHON_PACKAGE_NAME python3-solsys)
  set(CPACK_DEBIAN_PYTHON_PACKAGE_SECTION python)
  set(CPACK_DEBIAN_PYTHON_PACKAGE_DEPENDS
    "${library} (= ${PROJECT_VERSION}), ${python}, python3-numpy")
  set(CPACK_DEBIAN_PYTHON_DESCRIPTION "positions and events of the solar system (Python)
Places, risings, eclipses, conjunctions and the diary of the sky for arrays of
instants in numpy; tables that pandas takes; pictures for notebooks.")
  # Python's compiled files come and go with the package.
  foreach(pair postinst:py3compile prerm:py3clean)
    string(REPLACE ":" ";" pair ${pair})
    list(GET pair 0 script)
    list(GET pair 1 tool)
    file(WRITE ${PROJECT_BINARY_DIR}/debian/${script} "#!/bin/sh\nset -e\n${tool} -p python3-solsys\n")
    file(CHMOD ${PROJECT_BINARY_DIR}/debian/${script} PERMISSIONS OWNER_READ OWNER_WRITE
      OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
    list(APPEND CPACK_DEBIAN_PYTHON_PACKAGE_CONTROL_EXTRA ${PROJECT_BINARY_DIR}/debian/${script})
  endforeach()
endif()

# What Debian asks of every package: its copyright and its changelog.
if(CMAKE_INSTALL_PREFIX STREQUAL "/usr")
  file(READ LICENSE licence)
  file(READ NOTICE notice)
  file(WRITE ${PROJECT_BINARY_DIR}/debian/copyright "${licence}\n${notice}")
  execute_process(COMMAND date -R -r ${PROJECT_SOURCE_DIR}/CHANGELOG.md
    OUTPUT_VARIABLE date OUTPUT_STRIP_TRAILING_WHITESPACE)
  file(WRITE ${PROJECT_BINARY_DIR}/debian/changelog
    "solsys (${PROJECT_VERSION}) stable; urgency=medium\n\n  * Release ${PROJECT_VERSION}; see CHANGELOG.md of the sources.\n\n -- ${CPACK_PACKAGE_CONTACT}  ${date}\n")
  execute_process(COMMAND gzip -9nf ${PROJECT_BINARY_DIR}/debian/changelog)
  set(pairs runtime:${library} development:libsolsys-dev command:solsys)
  if(SOLSYS_BUILD_PYTHON)
    list(APPEND pairs python:python3-solsys)
  endif()
  foreach(pair ${pairs})
    string(REPLACE ":" ";" pair ${pair})
    list(GET pair 0 component)
    list(GET pair 1 package)
    install(FILES ${PROJECT_BINARY_DIR}/debian/copyright ${PROJECT_BINARY_DIR}/debian/changelog.gz
      DESTINATION share/doc/${package} COMPONENT ${component})
  endforeach()
  file(WRITE ${PROJECT_BINARY_DIR}/debian/triggers "activate-noawait ldconfig\n")
  set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA ${PROJECT_BINARY_DIR}/debian/triggers)
endif()
include(CPack)
