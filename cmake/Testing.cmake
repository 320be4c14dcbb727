# solvane_test(name SOURCES ... LIBRARIES ...): a GoogleTest program that ctest runs, that of another system under Wine.
enable_testing()
if(WIN32)
  set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_SOURCE_DIR}/scripts/wine)
endif()

if(NOT TARGET gtest)
  set(INSTALL_GTEST OFF)
  set(gtest_disable_pthreads ${WIN32})
  add_subdirectory(/usr/src/googletest ${CMAKE_BINARY_DIR}/googletest EXCLUDE_FROM_ALL SYSTEM)
endif()

# The guarded heap asks the system for pages at each allocation.
set(slowness 1)
if(SOLVANE_SANITIZER STREQUAL "heap")
  set(slowness 10)
endif()
math(EXPR program_timeout "600 * ${slowness}")
math(EXPR example_timeout "240 * ${slowness}")

function(solvane_test name)
  cmake_parse_arguments(PARSE_ARGV 1 test "" "" "SOURCES;LIBRARIES")
  add_executable(${name}_test ${test_SOURCES})
  set_target_properties(${name}_test PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/tests)
  target_link_libraries(${name}_test PRIVATE solvane_warnings gtest gmock gtest_main ${test_LIBRARIES})
  add_test(NAME ${name} COMMAND ${name}_test WORKING_DIRECTORY ${CMAKE_BINARY_DIR}/tests)
  set_tests_properties(${name} PROPERTIES TIMEOUT ${program_timeout})
endfunction()

# A test of windows: it has a screen of its own, in a prefix that the next one uses after it.
function(solvane_test_on_screen name)
  set_property(TEST ${name} APPEND PROPERTY RESOURCE_LOCK screen)
  set_target_properties(${name}_test PROPERTIES CROSSCOMPILING_EMULATOR ${CMAKE_SOURCE_DIR}/scripts/screen)
endfunction()
