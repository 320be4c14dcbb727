# The libraries of the model file, cross-built from Debian's sources, which scripts/sources fetches: minizip over
# Debian's own zlib for mingw, and as much of libdeflate and of libxml2 as reading takes.
set(library_sources ${CMAKE_SOURCE_DIR}/build/sources)
foreach(library libdeflate libxml2 minizip)
  if(NOT EXISTS ${library_sources}/${library})
    message(FATAL_ERROR "${library_sources}/${library} is missing; scripts/sources fetches it")
  endif()
endforeach()

find_library(ZLIB_LIBRARY libz.a REQUIRED)
find_path(ZLIB_HEADERS zlib.h REQUIRED)
add_library(zlib STATIC IMPORTED)
set_target_properties(zlib PROPERTIES IMPORTED_LOCATION ${ZLIB_LIBRARY} INTERFACE_INCLUDE_DIRECTORIES ${ZLIB_HEADERS})

add_library(minizip STATIC ${library_sources}/minizip/ioapi.c ${library_sources}/minizip/unzip.c
                           ${library_sources}/minizip/zip.c)
target_include_directories(minizip SYSTEM PUBLIC ${library_sources})
target_compile_options(minizip PRIVATE -w)
target_compile_definitions(minizip PRIVATE NOCRYPT NOUNCRYPT)
target_link_libraries(minizip PUBLIC zlib)

# It inflates a file at once in half of zlib's time.
set(libdeflate ${library_sources}/libdeflate)
add_library(libdeflate STATIC ${libdeflate}/lib/crc32.c ${libdeflate}/lib/deflate_decompress.c
                              ${libdeflate}/lib/utils.c ${libdeflate}/lib/x86/cpu_features.c)
target_include_directories(libdeflate SYSTEM PUBLIC ${libdeflate})
target_compile_options(libdeflate PRIVATE -w)
# Its checksum by vectors of 32 bytes and more, in Debian 13: GCC does not align the stack for them on 64-bit Windows.
target_compile_definitions(libdeflate PRIVATE LIBDEFLATE_ASSEMBLER_DOES_NOT_SUPPORT_VPCLMULQDQ)

# Everything off that has a switch, but for what the text reader stands on.
function(add_libxml2)
  file(STRINGS ${library_sources}/libxml2/CMakeLists.txt switches REGEX "^option\\(LIBXML2_WITH_")
  foreach(switch ${switches})
    string(REGEX REPLACE "^option\\(([A-Z0-9_]+) .*" "\\1" switch ${switch})
    set(${switch} OFF CACHE BOOL "" FORCE)
  endforeach()
  foreach(needed PUSH READER SAX1 THREADS TREE)
    set(LIBXML2_WITH_${needed} ON CACHE BOOL "" FORCE)
  endforeach()
  set(BUILD_SHARED_LIBS OFF)
  add_subdirectory(${library_sources}/libxml2 ${CMAKE_BINARY_DIR}/libxml2 EXCLUDE_FROM_ALL SYSTEM)
  target_compile_options(LibXml2 PRIVATE -w)
  # It names its source files, and would differ with the folder of the build.
  target_compile_definitions(LibXml2 PRIVATE "__FILE__=\"libxml2\"")
  # A static library of it must say so to whoever includes its headers.
  target_compile_definitions(LibXml2 PUBLIC LIBXML_STATIC)
endfunction()
add_libxml2()
