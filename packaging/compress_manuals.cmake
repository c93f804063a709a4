# Packs the manual pages of the staged packages, without a time, as Debian has them.
file(GLOB_RECURSE pages "${CPACK_TEMPORARY_INSTALL_DIRECTORY}/*.1")
list(FILTER pages INCLUDE REGEX "/share/man/(ja/)?man1/[^/]*\\.1$")
if(NOT pages)
  message(FATAL_ERROR "No manual page among the staged files in ${CPACK_TEMPORARY_INSTALL_DIRECTORY}")
endif()
foreach(page IN LISTS pages)
  execute_process(COMMAND gzip -9nf "${page}" COMMAND_ERROR_IS_FATAL ANY)
endforeach()
