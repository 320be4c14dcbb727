# Builds that look for faults while the tests run.
set(SOLVANE_SANITIZER "" CACHE STRING "What this build looks for")
set_property(CACHE SOLVANE_SANITIZER PROPERTY STRINGS "" undefined heap address fuzzer)
if(NOT SOLVANE_SANITIZER)
  return()
endif()

# What is free of Windows: undefined behaviour and misuse of memory at once, by the compiler's own runtime.
# libFuzzer also follows which way an input takes.
if(NOT WIN32)
  set(sanitizing_flags -fsanitize=address,undefined,float-cast-overflow -fno-sanitize-recover=all
                       -fno-omit-frame-pointer)
  if(SOLVANE_SANITIZER STREQUAL "fuzzer")
    list(APPEND sanitizing_flags -fsanitize=fuzzer-no-link)
  endif()
  add_compile_options(${sanitizing_flags} -D_GLIBCXX_ASSERTIONS)
  add_link_options(${sanitizing_flags})
  return()
endif()

# For Windows, the presets win64-ubsan and win64-guard. What they find is written to the error output and to
# build/PRESET/findings.txt, and ends the process; cmake/sanitizing has the runtime, since the compiler brings none.

add_subdirectory(cmake/sanitizing)
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
  message(FATAL_ERROR "For Windows SOLVANE_SANITIZER is undefined or heap, not ${SOLVANE_SANITIZER}")
endif()
