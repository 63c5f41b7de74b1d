# mkl_add_folder(NAME SOURCES ... LINKS ...): the static library mkl_NAME of one folder of src/.
# mkl_add_program(NAME SOURCES ... LINKS ...): a program in bin/.
# mkl_add_test_program(NAME SOURCES ... LINKS ...): the GoogleTest program test_NAME.
# mkl_add_test(NAME SOURCES ... LINKS ... [ENVIRONMENT ...]): the same, run by ctest without a display.
function(mkl_add_folder name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINKS" ${ARGN})
  add_library(mkl_${name} STATIC ${ARG_SOURCES})
  set_target_properties(mkl_${name} PROPERTIES AUTOMOC ON AUTORCC ON)
  target_include_directories(mkl_${name} PUBLIC "${CMAKE_SOURCE_DIR}/src")
  target_link_libraries(mkl_${name} PUBLIC ${ARG_LINKS})
endfunction()

function(mkl_add_program name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINKS" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  set_target_properties(${name} PROPERTIES AUTOMOC ON AUTORCC ON)
  target_link_libraries(${name} PRIVATE ${ARG_LINKS})
endfunction()

function(mkl_add_test_program name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINKS" ${ARGN})
  add_executable(test_${name} ${ARG_SOURCES})
  set_target_properties(test_${name} PROPERTIES AUTOMOC ON)
  target_include_directories(test_${name} PRIVATE "${CMAKE_SOURCE_DIR}/tests")
  if(MKL_SANITIZE)
    target_compile_options(test_${name} PRIVATE -O0) # the tests' own code is long to compile and quick to run
  endif()
  target_compile_definitions(test_${name} PRIVATE MKL_SOURCE_DIR="${CMAKE_SOURCE_DIR}"
                                                  MKL_BIN_DIR="${CMAKE_RUNTIME_OUTPUT_DIRECTORY}")
  target_link_libraries(test_${name} PRIVATE ${ARG_LINKS} mkl_test_support GTest::gtest GTest::gmock)
endfunction()

function(mkl_add_test name)
  cmake_parse_arguments(ARG "" "" "ENVIRONMENT" ${ARGN})
  mkl_add_test_program(${name} ${ARG_UNPARSED_ARGUMENTS})
  add_test(NAME ${name} COMMAND test_${name})
  set_tests_properties(${name} PROPERTIES
    ENVIRONMENT "QT_QPA_PLATFORM=offscreen;LC_ALL=C.UTF-8;${ARG_ENVIRONMENT}")
endfunction()
