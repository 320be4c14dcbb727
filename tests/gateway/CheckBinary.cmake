# cmake -DOBJDUMP=... -DFILE=... -P CheckBinary.cmake: a build of the gateway needs nothing but the system, and
# exports mexFunction under its plain name. An export that tells a version would make newer ones see another kind
# of MEX file in it.
execute_process(COMMAND ${OBJDUMP} -p ${FILE} OUTPUT_VARIABLE contents COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL "DLL Name: [^\n]+" imports "${contents}")
list(REMOVE_ITEM imports "DLL Name: KERNEL32.dll" "DLL Name: msvcrt.dll")
if(imports)
  message(FATAL_ERROR "${FILE} needs ${imports}")
endif()
# The rows of the export tables. Newer releases of objdump add ordinals to those of the names.
string(REGEX REPLACE "^.*The Export Tables" "" contents "${contents}")
string(REGEX MATCHALL "\n\t\\[ *[0-9]+\\][^\n]*" exports "${contents}")
list(FILTER exports EXCLUDE REGEX "Export RVA$")
if(NOT exports MATCHES "^\n\t[^;]* mexFunction$")
  message(FATAL_ERROR "${FILE} exports ${exports}")
endif()
