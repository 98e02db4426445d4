# Builds for 64-bit Windows on Debian: the compiler of g++-mingw-w64-x86-64-posix, and the static
# Qt that scripts/build-windows.sh has built into DRAVIK_WINDOWS_QT.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)

# Configure checks in projects of their own see the variable too.
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES DRAVIK_WINDOWS_QT)

set(CMAKE_FIND_ROOT_PATH /usr/x86_64-w64-mingw32 ${DRAVIK_WINDOWS_QT})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# The programs run without any library of the compiler beside them. The same sources give the same
# bytes, so no time is put in.
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static -Wl,--no-insert-timestamp")
set(CMAKE_EXE_LINKER_FLAGS_RELEASE_INIT -s)
