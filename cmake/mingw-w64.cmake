# Windows x86-64 from Linux, with Debian's mingw-w64 (POSIX threads) and Wine to run the tests.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)  # GoogleTest asks for one
set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)  # GoogleTest enables C
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)
set(CMAKE_FIND_ROOT_PATH /usr/x86_64-w64-mingw32)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static -static-libgcc -static-libstdc++")
find_program(SOLSYS_WINE NAMES wine64 wine PATHS /usr/lib/wine /usr/bin)
if(SOLSYS_WINE)
  set(CMAKE_CROSSCOMPILING_EMULATOR ${SOLSYS_WINE})
endif()
