# The installed alignment library: `cmake --install BUILD --component alignment` puts the shared library into place, and
# --component alignment-dev its headers, the CMake package (find_package(Fenmark COMPONENTS alignment) gives
# Fenmark::alignment) and the pkg-config file. All of it is relocatable.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

install(TARGETS fenmark_alignment EXPORT FenmarkAlignmentTargets
  LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT alignment NAMELINK_COMPONENT alignment-dev
  ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT alignment-dev
  RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}" COMPONENT alignment)
if(WIN32)
  install(FILES "${CMAKE_CURRENT_BINARY_DIR}/fenmark-alignment.def" DESTINATION "${CMAKE_INSTALL_LIBDIR}"
    COMPONENT alignment-dev)
endif()
install(FILES "${PROJECT_SOURCE_DIR}/include/fenmark/alignment.h" "${PROJECT_SOURCE_DIR}/include/fenmark/curve.h"
  DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/fenmark" COMPONENT alignment-dev)
install(DIRECTORY "${PROJECT_SOURCE_DIR}/include/fenmark/alignment" "${PROJECT_SOURCE_DIR}/include/fenmark/curve"
  DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/fenmark" COMPONENT alignment-dev FILES_MATCHING PATTERN "*.h")

set(package_folder "${CMAKE_INSTALL_LIBDIR}/cmake/Fenmark")
install(EXPORT FenmarkAlignmentTargets NAMESPACE Fenmark:: DESTINATION "${package_folder}" COMPONENT alignment-dev)
configure_package_config_file("${PROJECT_SOURCE_DIR}/cmake/FenmarkConfig.cmake.in"
  "${CMAKE_CURRENT_BINARY_DIR}/FenmarkConfig.cmake" INSTALL_DESTINATION "${package_folder}")
write_basic_package_version_file("${CMAKE_CURRENT_BINARY_DIR}/FenmarkConfigVersion.cmake"
  VERSION "${FENMARK_ALIGNMENT_VERSION}" COMPATIBILITY SameMajorVersion)
install(FILES "${CMAKE_CURRENT_BINARY_DIR}/FenmarkConfig.cmake" "${CMAKE_CURRENT_BINARY_DIR}/FenmarkConfigVersion.cmake"
  DESTINATION "${package_folder}" COMPONENT alignment-dev)

# The prefix is told from where the file lies, so that the installed tree can be moved.
file(RELATIVE_PATH pc_to_prefix "/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/")
string(REGEX REPLACE "/$" "" pc_to_prefix "${pc_to_prefix}")
configure_file("${PROJECT_SOURCE_DIR}/cmake/fenmark-alignment.pc.in"
  "${CMAKE_CURRENT_BINARY_DIR}/fenmark-alignment.pc" @ONLY)
install(FILES "${CMAKE_CURRENT_BINARY_DIR}/fenmark-alignment.pc"
  DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig" COMPONENT alignment-dev)

# The Python module over the library, for the Python that the machine has.
set(FENMARK_PYTHON_DIR "lib/python3/dist-packages" CACHE STRING "Where the Python module goes, relative to the prefix")
install(DIRECTORY "${PROJECT_SOURCE_DIR}/python/fenmark_alignment" DESTINATION "${FENMARK_PYTHON_DIR}"
  COMPONENT python PATTERN "__pycache__" EXCLUDE)
