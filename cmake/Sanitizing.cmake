# Builds that look for faults while the tests run (presets win64-ubsan and win64-guard). What they find is written
# to the error output and to build/PRESET/findings.txt, and ends the process; tests/sanitizing has the runtime,
# since the compiler brings none for Windows.
set(SOLVANE_SANITIZER "" CACHE STRING "What this build looks for: undefined behaviour, misuse of the heap, or nothing")
set_property(CACHE SOLVANE_SANITIZER PROPERTY STRINGS "" undefined heap)
if(NOT SOLVANE_SANITIZER)
  return()
endif()

add_subdirectory(tests/sanitizing/runtime)
link_libraries($<BUILD_INTERFACE:sanitizing>) # the text reader exports its targets, and this is not one
add_link_options(-Wl,-u,__wrap_abort -Wl,--wrap=abort)
if(SOLVANE_SANITIZER STREQUAL "undefined")
  # No COM object has the type information that the check of virtual tables asks for.
  set(sanitizing_flags -fsanitize=undefined,float-cast-overflow -fno-sanitize=vptr -fno-sanitize-recover=all
                       -D_GLIBCXX_ASSERTIONS)
  add_compile_options(${sanitizing_flags})
elseif(SOLVANE_SANITIZER STREQUAL "heap")
  foreach(function malloc calloc realloc free _msize)
    add_link_options(-Wl,-u,__wrap_${function} -Wl,--wrap=${function})
  endforeach()
else()
  message(FATAL_ERROR "SOLVANE_SANITIZER is undefined or heap, not ${SOLVANE_SANITIZER}")
endif()
