# solvane_type_library(x.idl): makes x.tlb, and x.h and x_i.c with the interfaces and their ids, in the
# current build folder.
find_program(WIDL x86_64-w64-mingw32-widl REQUIRED)
find_program(FAKETIME faketime REQUIRED) # widl writes the time into the library
file(GLOB wine_type_libraries /usr/lib/*/wine/x86_64-windows)

function(solvane_type_library idl)
  get_filename_component(name ${idl} NAME_WE)
  set(output ${CMAKE_CURRENT_BINARY_DIR}/${name})
  set(widl ${FAKETIME} -f "2000-01-01 00:00:00" ${WIDL} ${SOLVANE_WIDL_WORD_SIZE} -I/usr/include/wine/wine/windows -L${wine_type_libraries})
  add_custom_command(
    OUTPUT ${output}.tlb ${output}.h ${output}_i.c
    COMMAND ${widl} -t -o ${output}.tlb ${idl}
    COMMAND ${widl} -h -o ${output}.h ${idl}
    COMMAND ${widl} -u -o ${output}_i.c ${idl}
    DEPENDS ${idl}
    WORKING_DIRECTORY ${CMAKE_CURRENT_SOURCE_DIR}
    VERBATIM)
endfunction()
