# Settings and small functions that every target of the project shares.
include(GNUInstallDirs)

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_C_STANDARD 99)
set(CMAKE_C_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_C_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

if(NOT CMAKE_BUILD_TYPE)
  set(CMAKE_BUILD_TYPE RelWithDebInfo CACHE STRING "" FORCE)
endif()
# Line tables are enough for back traces, and full debug information doubles the build's time.
set(optimisation -O2)
if(FENMARK_SANITIZE)
  set(optimisation -O1) # a third less to compile, and the tests take no longer
endif()
set(CMAKE_CXX_FLAGS_RELWITHDEBINFO "${optimisation} -g1")
set(CMAKE_C_FLAGS_RELWITHDEBINFO "${optimisation} -g1")

find_program(FENMARK_CCACHE ccache)
if(FENMARK_CCACHE)
  set(CMAKE_C_COMPILER_LAUNCHER "${FENMARK_CCACHE}")
  set(CMAKE_CXX_COMPILER_LAUNCHER "${FENMARK_CCACHE}")
endif()

add_library(fenmark_flags INTERFACE)
target_compile_options(fenmark_flags INTERFACE -Wall -Wextra -Wpedantic -Wconversion -Werror)
# GCC 12 sees overlaps that cannot be where a literal is assigned to a string and all of it is inlined (its bug 105651).
target_compile_options(fenmark_flags INTERFACE "$<$<AND:$<CXX_COMPILER_ID:GNU>,$<CONFIG:Release>>:-Wno-restrict>")
if(FENMARK_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
endif()
if(FENMARK_FUZZ AND FENMARK_FUZZ_COVERAGE)
  add_compile_options(-fsanitize=fuzzer-no-link) # the libraries tell the fuzzer what they did
endif()
if(FENMARK_COVERAGE)
  add_compile_options(--coverage -O0)
  add_link_options(--coverage)
endif()

# fenmark_common_headers(TARGET <header>...) or (TARGET REUSE_FROM OTHER): compiles headers once that most C++ files of a
# target parse. Only where tests are built: `./check --tidy` reads each file by itself, and so finds an include that is
# missing.
set(FENMARK_QT_HEADERS <QApplication> <QComboBox> <QDialog> <QFileDialog> <QLabel> <QLineEdit> <QListWidget> <QMainWindow>
    <QMenu> <QMessageBox> <QPainter> <QPlainTextEdit> <QPushButton> <QScrollBar> <QTableWidget> <QTimer> <QTreeWidget>
    <QVBoxLayout> <algorithm> <functional> <memory> <optional> <string> <vector>)
function(fenmark_common_headers target)
  if(NOT FENMARK_TESTS)
    return()
  endif()
  if("${ARGV1}" STREQUAL "REUSE_FROM")
    target_precompile_headers(${target} REUSE_FROM ${ARGV2})
  else()
    list(TRANSFORM ARGN REPLACE "(.+)" "$<$<COMPILE_LANGUAGE:CXX>:\\1>")
    target_precompile_headers(${target} PRIVATE ${ARGN})
  endif()
  target_compile_options(${target} PRIVATE "$<$<CXX_COMPILER_ID:GNU>:-fpch-preprocess>") # for the compiler cache
endfunction()

# Several files of a target are compiled as one where CMAKE_UNITY_BUILD is set (every preset but those for daily work), in
# less than half of the processor time. These cannot be: another file of the target has their names too.
function(fenmark_compiled_alone)
  set_source_files_properties(${ARGN} PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)
endfunction()

# All .cpp files below the given folders of the calling directory, without those of other systems.
function(fenmark_sources out)
  set(found)
  foreach(folder IN LISTS ARGN)
    file(GLOB_RECURSE files CONFIGURE_DEPENDS "${CMAKE_CURRENT_SOURCE_DIR}/${folder}/*.cpp")
    list(APPEND found ${files})
  endforeach()
  if(WIN32)
    list(FILTER found EXCLUDE REGEX "_posix\\.cpp$")
  else()
    list(FILTER found EXCLUDE REGEX "_windows\\.cpp$")
  endif()
  list(SORT found)
  set(${out} ${found} PARENT_SCOPE)
endfunction()

# A static library of the project from the folders given; LINK lists what it stands on.
function(fenmark_library name)
  cmake_parse_arguments(ARG "" "" "FOLDERS;LINK" ${ARGN})
  fenmark_sources(sources ${ARG_FOLDERS})
  add_library(${name} STATIC ${sources})
  target_include_directories(${name} PUBLIC "${PROJECT_SOURCE_DIR}/src" "${PROJECT_SOURCE_DIR}/include")
  target_link_libraries(${name} PUBLIC ${ARG_LINK} PRIVATE fenmark_flags)
endfunction()
