# Writes a source that holds a program's references to kxovaapi.dll, to be filled in by the program itself, so that it
# starts where the library is missing and can say so:
#   cmake -DNM=nm -DIMPORT_LIBRARY=file -DOUTPUT=file -P imports.cmake
execute_process(COMMAND ${NM} ${IMPORT_LIBRARY} OUTPUT_VARIABLE symbols ERROR_QUIET COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL "__imp__[A-Za-z0-9_]+" symbols "${symbols}")
list(REMOVE_DUPLICATES symbols)
list(SORT symbols)
set(references "")
set(rows "")
set(number 0)
foreach(symbol ${symbols})
  string(REGEX REPLACE "^__imp__" "" name ${symbol})
  string(APPEND references "KxovaFunction kxovaReference${number} __asm__(\"${symbol}\") = kxovaNotLoaded;\n")
  string(APPEND rows "    {\"${name}\", &kxovaReference${number}},\n")
  math(EXPR number "${number} + 1")
endforeach()
if(number EQUAL 0)
  message(FATAL_ERROR "${IMPORT_LIBRARY} names no function")
endif()
file(WRITE ${OUTPUT} "/* made by imports.cmake */
#include \"library/references.h\"

${references}
const struct KxovaReference kxovaReferences[] = {
${rows}    {0, 0},
};
")
