# The libraries below the project for a build for another system, under the names that the installed ones have: compiled
# from Debian's source packages, or headers of this machine that need no compiling.
#
# Whoever includes this has set `sqlite_definitions`, what SQLite is compiled with there beside what it always has. It
# leaves the sources' folder in `sources`.
execute_process(COMMAND "${PROJECT_SOURCE_DIR}/scripts/library_sources.sh" RESULT_VARIABLE fetched)
if(NOT fetched EQUAL 0)
  message(FATAL_ERROR "The libraries' sources could not be fetched by scripts/library_sources.sh")
endif()
set(sources "${PROJECT_SOURCE_DIR}/build/library-sources")

add_library(cross_sqlite STATIC "${sources}/sqlite3-build/sqlite3.c")
target_include_directories(cross_sqlite SYSTEM PUBLIC "${sources}/sqlite3-build")
target_compile_definitions(cross_sqlite PRIVATE
  SQLITE_ENABLE_RTREE SQLITE_ENABLE_COLUMN_METADATA SQLITE_OMIT_LOAD_EXTENSION ${sqlite_definitions})
target_compile_options(cross_sqlite PRIVATE -w)
add_library(SQLite::SQLite3 ALIAS cross_sqlite)

set(geographic "${CMAKE_BINARY_DIR}/libraries/geographiclib")
file(WRITE "${geographic}/GeographicLib/Config.h"
  "#define GEOGRAPHICLIB_VERSION_MAJOR 2\n#define GEOGRAPHICLIB_VERSION_MINOR 1\n#define GEOGRAPHICLIB_VERSION_PATCH 2\n"
  "#define GEOGRAPHICLIB_VERSION_STRING \"2.1.2\"\n#define GEOGRAPHICLIB_VERSION 2001002\n"
  "#define GEOGRAPHICLIB_HAVE_LONG_DOUBLE 1\n#define GEOGRAPHICLIB_WORDS_BIGENDIAN 0\n#define GEOGRAPHICLIB_PRECISION 2\n"
  "#define GEOGRAPHICLIB_SHARED_LIB 0\n")
add_library(cross_geographic STATIC
  "${sources}/geographiclib/src/TransverseMercator.cpp" "${sources}/geographiclib/src/Math.cpp")
target_include_directories(cross_geographic SYSTEM PUBLIC "${geographic}" "${sources}/geographiclib/include")
target_compile_options(cross_geographic PRIVATE -w)
add_library(PkgConfig::GeographicLib ALIAS cross_geographic)

# The machine's own headers must not be seen beside these two.
foreach(library CLI nlohmann)
  find_path(${library}_headers ${library} PATHS /usr/include NO_CMAKE_FIND_ROOT_PATH NO_DEFAULT_PATH REQUIRED)
  file(MAKE_DIRECTORY "${CMAKE_BINARY_DIR}/libraries/headers")
  file(CREATE_LINK "${${library}_headers}/${library}" "${CMAKE_BINARY_DIR}/libraries/headers/${library}" SYMBOLIC)
endforeach()
foreach(library CLI11::CLI11 nlohmann_json::nlohmann_json)
  add_library(${library} INTERFACE IMPORTED GLOBAL)
  target_include_directories(${library} SYSTEM INTERFACE "${CMAKE_BINARY_DIR}/libraries/headers")
endforeach()
