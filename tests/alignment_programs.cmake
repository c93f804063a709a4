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
    set(python_environment "FENMARK_ALIGNMENT_LIBRARY=${library}")
    if(TARGET fenmark)
      list(APPEND python_environment "FENMARK_PROGRAM=$<TARGET_FILE:fenmark>")
    endif()
    set_tests_properties(alignment_python alignment_pictures PROPERTIES ENVIRONMENT "${python_environment}")
    # The same with the distribution's Python, which has numpy, matplotlib and geopandas.
    find_program(FENMARK_SYSTEM_PYTHON python3 PATHS /usr/bin NO_DEFAULT_PATH)
    if(FENMARK_SYSTEM_PYTHON AND NOT FENMARK_SYSTEM_PYTHON STREQUAL Python3_EXECUTABLE)
      add_test(NAME alignment_python_arrays COMMAND "${FENMARK_SYSTEM_PYTHON}" -B -m unittest discover
        --start-directory "${PROJECT_SOURCE_DIR}/python/tests" --top-level-directory "${PROJECT_SOURCE_DIR}/python")
      set_tests_properties(alignment_python_arrays PROPERTIES ENVIRONMENT "${python_environment}")
    endif()
    if(FENMARK_SYSTEM_PYTHON AND TARGET fenmark)
      add_test(NAME python_pictures COMMAND "${FENMARK_SYSTEM_PYTHON}" -B
        "${PROJECT_SOURCE_DIR}/tools/make_python_pictures.py" --check)
      set_tests_properties(python_pictures PROPERTIES ENVIRONMENT "${python_environment}")
    endif()
  endif()
endif()
