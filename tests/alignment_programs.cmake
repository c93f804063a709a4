# Tests of what other programs use: the installed package, the example, the Python module, the documentation.
find_package(Python3 COMPONENTS Interpreter)
set(library "$<TARGET_FILE:fenmark_alignment>")
# A library built under the sanitizers cannot be loaded by programs that are not.
set(loadable_library "${library}")
if(FENMARK_SANITIZE OR FENMARK_COVERAGE)
  set(loadable_library)
endif()

add_subdirectory("${PROJECT_SOURCE_DIR}/examples/alignment" "${PROJECT_BINARY_DIR}/examples/alignment")
if(FENMARK_SANITIZE)
  # The sanitizers' checks of C++ need their C++ run-time library.
  set_target_properties(stake_curve PROPERTIES LINKER_LANGUAGE CXX)
endif()
if(Python3_FOUND)
  add_test(NAME alignment_example COMMAND Python3::Interpreter
    "${CMAKE_CURRENT_SOURCE_DIR}/alignment_programs/check_stakes.py" "$<TARGET_FILE:stake_curve>")
  add_test(NAME alignment_documentation COMMAND Python3::Interpreter
    "${CMAKE_CURRENT_SOURCE_DIR}/alignment_programs/check_documentation.py" "${PROJECT_SOURCE_DIR}" "${CMAKE_C_COMPILER}"
    ${loadable_library})
endif()
if(loadable_library)
  add_test(NAME alignment_install COMMAND "${CMAKE_CURRENT_SOURCE_DIR}/install/install_test.sh"
    "${CMAKE_COMMAND}" "${PROJECT_BINARY_DIR}" "${PROJECT_SOURCE_DIR}" "${PROJECT_BINARY_DIR}/tests/install"
    "${CMAKE_C_COMPILER}" "${CMAKE_CXX_COMPILER}")
  if(Python3_FOUND)
    add_test(NAME alignment_python COMMAND Python3::Interpreter -B -m unittest discover
      --start-directory "${PROJECT_SOURCE_DIR}/python/tests" --top-level-directory "${PROJECT_SOURCE_DIR}/python")
    add_test(NAME alignment_pictures COMMAND Python3::Interpreter -B
      "${PROJECT_SOURCE_DIR}/tools/make_alignment_pictures.py" --check)
    set_tests_properties(alignment_python alignment_pictures PROPERTIES
      ENVIRONMENT "FENMARK_ALIGNMENT_LIBRARY=${library}")
  endif()
endif()
