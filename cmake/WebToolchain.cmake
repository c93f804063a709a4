# Emscripten's compilers, where Debian puts them or where EMSCRIPTEN_ROOT says.
set(emscripten "/usr/share/emscripten")
if(DEFINED ENV{EMSCRIPTEN_ROOT})
  set(emscripten "$ENV{EMSCRIPTEN_ROOT}")
endif()
if(NOT EXISTS "${emscripten}/cmake/Modules/Platform/Emscripten.cmake")
  message(FATAL_ERROR "The browser build needs emscripten: apt-get install emscripten")
endif()
include("${emscripten}/cmake/Modules/Platform/Emscripten.cmake")
