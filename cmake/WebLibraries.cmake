# The libraries below the project for a browser build.

# Exceptions are those of WebAssembly: they cost nothing where none is raised. Digits are the same as on other machines
# only without fused operations.
add_compile_options(-fwasm-exceptions -ffp-contract=off)
add_link_options(-fwasm-exceptions)

set(sqlite_definitions SQLITE_THREADSAFE=0 SQLITE_DISABLE_LFS)
include(CrossLibraries)

file(GLOB conversion "${sources}/double-conversion/double-conversion/*.cc")
add_library(web_double_conversion STATIC ${conversion})
target_include_directories(web_double_conversion SYSTEM PUBLIC "${sources}/double-conversion")
