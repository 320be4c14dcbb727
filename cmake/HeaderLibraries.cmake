# Header-only libraries from Debian. The cross compiler must not see /usr/include itself, so each library's
# folder gets a link in the build tree.
set(header_libraries ${CMAKE_BINARY_DIR}/header-libraries)
file(MAKE_DIRECTORY ${header_libraries})
foreach(library nlohmann CLI)
  if(NOT EXISTS /usr/include/${library})
    message(FATAL_ERROR "/usr/include/${library} is missing; scripts/setup installs it")
  endif()
  file(CREATE_LINK /usr/include/${library} ${header_libraries}/${library} SYMBOLIC)
endforeach()
add_library(header_libraries INTERFACE)
target_include_directories(header_libraries SYSTEM INTERFACE ${header_libraries})
