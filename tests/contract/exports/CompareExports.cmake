# Compares what a built library exports with a checked-in list, one demangled name a line.
#   cmake -DLIBRARY=file -DEXPECTED=list -DTOOL=nm|objdump -DCXXFILT=c++filt -P CompareExports.cmake

get_filename_component(library_name "${LIBRARY}" NAME_WE)
set(scratch "${CMAKE_CURRENT_BINARY_DIR}/${library_name}")
get_filename_component(tool_name "${TOOL}" NAME)
if(tool_name MATCHES "objdump")
  # The export table of a DLL: lines "[ordinal] name" (newer binutils add columns between).
  execute_process(COMMAND "${TOOL}" -p "${LIBRARY}" OUTPUT_VARIABLE dump COMMAND_ERROR_IS_FATAL ANY)
  string(REGEX REPLACE ".*\\[Ordinal/Name Pointer\\] Table" "" dump "${dump}")
  string(FIND "${dump}" "\n\n" end)
  string(SUBSTRING "${dump}" 0 ${end} dump)
  string(REGEX MATCHALL "\\[ *[0-9]+\\][^\n]*" lines "${dump}")
  list(TRANSFORM lines REPLACE ".*[ \t]([^ \t]+)$" "\\1")
else()
  execute_process(COMMAND "${TOOL}" -D --defined-only --format=posix "${LIBRARY}"
    OUTPUT_VARIABLE dump COMMAND_ERROR_IS_FATAL ANY)
  string(REGEX MATCHALL "[^\n]+" lines "${dump}")
  list(TRANSFORM lines REPLACE " .*" "")
endif()

list(JOIN lines "\n" mangled)
file(WRITE "${scratch}-mangled.txt" "${mangled}\n")
execute_process(COMMAND "${CXXFILT}" INPUT_FILE "${scratch}-mangled.txt"
  OUTPUT_VARIABLE names COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL "[^\n]+" names "${names}")
# Shared on purpose: type information of the contracts. Weak instances of standard templates come
# and go with the optimiser.
list(FILTER names EXCLUDE REGEX "^(typeinfo|typeinfo name|vtable) for ([A-Za-z]+Space::[A-Za-z]+Interface|IFactory)$")
list(FILTER names EXCLUDE REGEX "std::")
list(REMOVE_DUPLICATES names)
list(SORT names)
list(JOIN names "\n" actual)

file(READ "${EXPECTED}" expected)
if(NOT actual STREQUAL "" AND "${actual}\n" STREQUAL expected)
  return()
endif()
file(WRITE "${scratch}-exports.txt" "${actual}\n")
execute_process(COMMAND diff -u "${EXPECTED}" "${scratch}-exports.txt")
message(FATAL_ERROR "The exports of ${LIBRARY} differ from ${EXPECTED}.")
