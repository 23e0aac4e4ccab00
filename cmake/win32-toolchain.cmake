# Cross build for 32-bit Windows with Debian's GCC for MinGW-w64 (package
# g++-mingw-w64-i686-posix).
#
#   prefix=$(scripts/prepare-win32.sh | tail -n 1)
#   cmake -S . -B build/win32 -G Ninja \
#         -DCMAKE_TOOLCHAIN_FILE=cmake/win32-toolchain.cmake \
#         -DCMAKE_PREFIX_PATH="$prefix"
#
# Only what is under CMAKE_PREFIX_PATH and the cross compiler's own folders is
# searched for headers, libraries and packages, never the machine's /usr.

set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR i686)

set(TVML_WIN32_TRIPLET i686-w64-mingw32)

# The posix threads variant is named outright: the name without a suffix is an
# alternative that a machine may have pointed at the win32 threads variant,
# whose standard library has neither std::thread nor std::mutex.
set(CMAKE_C_COMPILER ${TVML_WIN32_TRIPLET}-gcc-posix)
set(CMAKE_CXX_COMPILER ${TVML_WIN32_TRIPLET}-g++-posix)
set(CMAKE_RC_COMPILER ${TVML_WIN32_TRIPLET}-windres)

# What is handed to CMake is handed on to its own test projects too, so that
# they search the same places.
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES CMAKE_PREFIX_PATH)

set(CMAKE_FIND_ROOT_PATH ${CMAKE_PREFIX_PATH} /usr/${TVML_WIN32_TRIPLET})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# Hosts built with another compiler promise a stack aligned to 4 bytes only.
set(CMAKE_C_FLAGS_INIT "-mstackrealign")
set(CMAKE_CXX_FLAGS_INIT "-mstackrealign")

# libgcc, libstdc++ and winpthread go into the binaries: a DLL made here imports
# nothing but the system's own DLLs. The C runtime stays the compiler's default.
foreach(kind IN ITEMS EXE SHARED MODULE)
  set(CMAKE_${kind}_LINKER_FLAGS_INIT "-static -static-libgcc -static-libstdc++")
endforeach()
unset(kind)

# Lets CTest and gtest_discover_tests() start what was built, where it can be.
# -DCMAKE_CROSSCOMPILING_EMULATOR=... takes precedence.
if(NOT DEFINED CMAKE_CROSSCOMPILING_EMULATOR)
  foreach(dir IN LISTS CMAKE_PREFIX_PATH)
    if(EXISTS "${dir}/bin/run-windows-program")
      set(CMAKE_CROSSCOMPILING_EMULATOR "${dir}/bin/run-windows-program")
      break()
    endif()
  endforeach()
  unset(dir)
endif()
