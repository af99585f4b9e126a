# Compares the names that objects of the Microsoft ABI ask the linker to export with a list.

string(REPLACE "|" ";" OBJECTS "${OBJECTS}")
execute_process(COMMAND ${READOBJ} --coff-directives ${OBJECTS}
  OUTPUT_VARIABLE directives COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL "/EXPORT:\"[^\"]*\"" names "${directives}")
list(TRANSFORM names REPLACE "/EXPORT:\"([^\"]*)\"" "\\1")
list(REMOVE_DUPLICATES names)
list(SORT names)
list(JOIN names "\n" actual)
file(WRITE "${ACTUAL}" "${actual}\n")
file(READ "${EXPECTED}" expected)
if(actual STREQUAL "" OR NOT "${actual}\n" STREQUAL expected)
  execute_process(COMMAND diff -u "${EXPECTED}" "${ACTUAL}")
  message(FATAL_ERROR "The exported names differ from ${EXPECTED}.")
endif()
