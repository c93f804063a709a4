# Tests of what other programs use: the installed package, the example, the Python module, the documentation.
find_package(Python3 COMPONENTS Interpreter)
set(library "$<TARGET_FILE:fenmark_alignment>")

add_subdirectory("${PROJECT_SOURCE_DIR}/examples/alignment" "${PROJECT_BINARY_DIR}/examples/alignment")
if(Python3_FOUND)
  add_test(NAME alignment_example COMMAND Python3::Interpreter
    "${CMAKE_CURRENT_SOURCE_DIR}/alignment_programs/check_stakes.py" "$<TARGET_FILE:stake_curve>")
endif()
# A library built under the sanitizers cannot be loaded by programs that are not.
if(NOT FENMARK_SANITIZE AND NOT FENMARK_COVERAGE)
  add_test(NAME alignment_install COMMAND "${CMAKE_CURRENT_SOURCE_DIR}/install/install_test.sh"
    "${CMAKE_COMMAND}" "${PROJECT_BINARY_DIR}" "${PROJECT_SOURCE_DIR}" "${PROJECT_BINARY_DIR}/tests/install"
    "${CMAKE_C_COMPILER}" "${CMAKE_CXX_COMPILER}")
  if(Python3_FOUND)
    add_test(NAME alignment_python COMMAND Python3::Interpreter -B -m unittest discover
      --start-directory "${PROJECT_SOURCE_DIR}/python/tests" --top-level-directory "${PROJECT_SOURCE_DIR}/python")
    set_tests_properties(alignment_python PROPERTIES
      ENVIRONMENT "FENMARK_ALIGNMENT_LIBRARY=${library}")
  endif()
endif()
