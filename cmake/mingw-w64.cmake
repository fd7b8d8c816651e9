# Cross-compiling for 64-bit Windows with Debian's mingw-w64 (the POSIX-threads variant, so
# that std::thread and std::mutex are there), tests run under Wine.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(triple x86_64-w64-mingw32)
set(CMAKE_C_COMPILER ${triple}-gcc-posix)
set(CMAKE_CXX_COMPILER ${triple}-g++-posix)
set(CMAKE_RC_COMPILER ${triple}-windres)

# Libraries and packages come from the target's own prefix and from any prefix given on the
# command line (-DCMAKE_FIND_ROOT_PATH=...), where the test script installs what it builds
# for the target; programs come from the host.
list(APPEND CMAKE_FIND_ROOT_PATH /usr/${triple})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# Static runtime: the programs need no MinGW DLLs beside them, under Wine or on a real system.
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static")

# CTest runs the test programs under Wine.
if(NOT CMAKE_CROSSCOMPILING_EMULATOR AND EXISTS /usr/lib/wine/wine64)
  set(CMAKE_CROSSCOMPILING_EMULATOR /usr/lib/wine/wine64)
endif()
