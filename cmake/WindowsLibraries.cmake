# The libraries below the project for a Windows build. PDF needs librsvg and cairo, which this build does not have; it
# writes SVG.
set(sqlite_definitions SQLITE_THREADSAFE=1)
include(CrossLibraries)
