# cmake -DOBJDUMP=... -DFILE=... -P CheckBinary.cmake: a build of the gateway needs nothing but the system, and
# exports mexFunction under its plain name. An export that tells a version would make newer ones see another kind
# of MEX file in it.
execute_process(COMMAND ${OBJDUMP} -p ${FILE} OUTPUT_VARIABLE contents COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL "DLL Name: [^\n]+" imports "${contents}")
list(REMOVE_ITEM imports "DLL Name: KERNEL32.dll" "DLL Name: msvcrt.dll")
if(imports)
  message(FATAL_ERROR "${FILE} needs ${imports}")
endif()
string(REGEX MATCH "Name Pointer\\] Table\n(\t[^\n]*\n)*" exports "${contents}")
if(NOT exports MATCHES "Table\n\t\\[ *0\\] mexFunction\n$")
  message(FATAL_ERROR "${FILE} exports ${exports}")
endif()
