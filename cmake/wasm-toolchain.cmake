# WebAssembly with Debian's emscripten, for what scripts/prepare-wasm.sh has
# prepared.
include(/usr/share/emscripten/cmake/Modules/Platform/Emscripten.cmake)
list(APPEND CMAKE_FIND_ROOT_PATH ${CMAKE_PREFIX_PATH})
set(CMAKE_CXX_FLAGS_INIT "-fwasm-exceptions")
