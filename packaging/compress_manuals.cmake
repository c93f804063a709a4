# Packs the manual pages of the staged packages, without a time, as Debian has them.
file(GLOB_RECURSE pages "${CPACK_TEMPORARY_INSTALL_DIRECTORY}/*/share/man/*.1")
foreach(page IN LISTS pages)
  execute_process(COMMAND gzip -9nf "${page}" COMMAND_ERROR_IS_FATAL ANY)
endforeach()
