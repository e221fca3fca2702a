# Toolchain file for programs of 64-bit Windows, made on Debian by g++-mingw-w64-x86-64-posix and tried with Wine.
# All that is not of Windows itself is linked in, so that no DLL need lie beside an executable.

set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(triplet x86_64-w64-mingw32)

set(CMAKE_C_COMPILER ${triplet}-gcc-posix)
set(CMAKE_CXX_COMPILER ${triplet}-g++-posix)
set(CMAKE_RC_COMPILER ${triplet}-windres)
set(CMAKE_EXE_LINKER_FLAGS_INIT -static)

# PICTAVO_QT is the folder of a static Qt for Windows, which the programs need and the rooms below them do not.
set(CMAKE_TRY_COMPILE_PLATFORM_VARIABLES PICTAVO_QT)

# Headers and libraries of Windows only; packages that are headers alone are looked for by their CMake files.
set(CMAKE_FIND_ROOT_PATH /usr/${triplet} ${PICTAVO_QT})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

find_program(PICTAVO_WINE NAMES wine64 wine PATHS /usr/lib/wine)
if(PICTAVO_WINE)
  set(CMAKE_CROSSCOMPILING_EMULATOR ${PICTAVO_WINE})
endif()
