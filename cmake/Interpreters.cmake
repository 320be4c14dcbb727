# Modules that interpreters load. Each is built for the interpreter's system and word size, so that the product takes
# those of several presets: its own, and the others' from trees below its own.

# The engine finds Octave's in a folder a system.
if(NOT WIN32)
  set(octave_system linux)
elseif(CMAKE_SIZEOF_VOID_P EQUAL 8)
  set(octave_system windows)
else()
  set(octave_system windows32)
endif()

# mex_module(target file libraries...): the module `file`, below the product's folder, of object libraries.
function(mex_module target file)
  add_library(${target} MODULE)
  target_link_libraries(${target} PRIVATE ${ARGN})
  get_filename_component(folder ${file} DIRECTORY)
  get_filename_component(name ${file} NAME_WE)
  get_filename_component(ending ${file} LAST_EXT)
  set_target_properties(${target} PROPERTIES LIBRARY_OUTPUT_DIRECTORY ${SOLVANE_BIN}/${folder}
                                             PREFIX "" OUTPUT_NAME ${name} SUFFIX ${ending})
  # A finding names its place by what -s drops.
  if(NOT SOLVANE_SANITIZER)
    target_link_options(${target} PRIVATE -s)
  endif()
endfunction()

# modules_of(preset files...): what that preset builds for interpreters, laid into the product's folder of this one.
function(modules_of preset)
  list(TRANSFORM ARGN PREPEND ${SOLVANE_BIN}/ OUTPUT_VARIABLE files)
  set(rooms channel mex link gateway engine/octave cmake)
  list(TRANSFORM rooms PREPEND ${CMAKE_SOURCE_DIR}/)
  set(patterns ${CMAKE_SOURCE_DIR}/CMakePresets.json)
  foreach(room ${rooms})
    list(APPEND patterns ${room}/*.h ${room}/*.cpp ${room}/*.cmake ${room}/CMakeLists.txt)
  endforeach()
  file(GLOB sources CONFIGURE_DEPENDS ${patterns})
  # Touched, since not every change of a source changes every file.
  add_custom_command(
    OUTPUT ${files}
    COMMAND ${CMAKE_SOURCE_DIR}/scripts/modules ${preset} ${CMAKE_BINARY_DIR}/${preset} ${SOLVANE_BIN}
    COMMAND ${CMAKE_COMMAND} -E touch ${files}
    DEPENDS ${sources} ${CMAKE_SOURCE_DIR}/scripts/modules
    COMMENT "Building the interpreters' modules of ${preset}"
    VERBATIM)
  add_custom_target(modules_of_${preset} DEPENDS ${files})
  add_dependencies(other_systems modules_of_${preset})
endfunction()

# The target other_systems: the modules for all systems but the preset's own.
function(add_other_systems)
  add_custom_target(other_systems)
  modules_of(native octave/linux/CapeOpenUnitMex.mex octave/linux/SolvaneEngineLink.mex)
  if(octave_system STREQUAL "windows")
    modules_of(win32 CapeOpenUnitMex.mexw32-77 CapeOpenUnitMex.dll5 octave/windows32/CapeOpenUnitMex.mex
               octave/windows32/SolvaneEngineLink.mex)
  else()
    modules_of(win64 CapeOpenUnitMex.mexw64-77 octave/windows/CapeOpenUnitMex.mex
               octave/windows/SolvaneEngineLink.mex)
  endif()
endfunction()
