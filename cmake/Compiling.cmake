# One dialect, one set of warnings, and no compiler DLLs beside what we ship.
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)

find_program(CCACHE ccache)
if(CCACHE)
  set(CMAKE_C_COMPILER_LAUNCHER ${CCACHE})
  set(CMAKE_CXX_COMPILER_LAUNCHER ${CCACHE})
endif()

if(WIN32)
  add_compile_definitions(UNICODE _UNICODE WIN32_LEAN_AND_MEAN NOMINMAX _WIN32_WINNT=0x0601 WINVER=0x0601)
  # What is built twice is the same twice: no times in it, and no address from its name.
  add_link_options(-static -Wl,--no-insert-timestamp,--disable-auto-image-base)
else()
  # Octave loads modules, and sees of them only what they export.
  set(CMAKE_POSITION_INDEPENDENT_CODE ON)
  set(CMAKE_CXX_VISIBILITY_PRESET hidden)
endif()

# Linked to everything of our own; the compiler's headers and GoogleTest keep their own warnings.
add_library(solvane_warnings INTERFACE)
# Not -Wnon-virtual-dtor: no COM interface has a virtual destructor. -Wall catches the delete that would matter.
target_compile_options(solvane_warnings INTERFACE -Wall -Wextra -Wshadow -Wconversion -Werror
                                                  $<$<CXX_COMPILER_ID:Clang>:-Wno-sign-conversion>)
target_include_directories(solvane_warnings INTERFACE ${CMAKE_SOURCE_DIR} ${CMAKE_SOURCE_DIR}/src)
