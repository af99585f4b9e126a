# Compiles PROBE with the command COMPILE ("|" between its words), reads the places of the virtual
# operations out of the compiler's dump and compares them with EXPECTED, line by line. ACTUAL is
# written for whoever changes a contract on purpose.

string(REPLACE "|" ";" command "${COMPILE}")
list(APPEND command -Xclang -fdump-vtable-layouts -c -o "${ACTUAL}.o" "${PROBE}")
execute_process(COMMAND ${command}
  RESULT_VARIABLE result OUTPUT_VARIABLE dump ERROR_VARIABLE messages)
if(result)
  message(FATAL_ERROR "The probe does not compile:\n${messages}")
endif()

set(inside FALSE)
set(places "")
string(REGEX REPLACE "[][;]" "" dump "${dump}")
string(REPLACE "\n" ";" dump "${dump};")
foreach(line IN LISTS dump)
  if(line MATCHES "^VF?Table indices for '([A-Za-z:]+)'")
    set(contract "${CMAKE_MATCH_1}")
    # Compilers differ in whether they print Qt's class and the probe's own.
    if(NOT contract MATCHES "^(Probe|QObject)$")
      set(inside TRUE)
      list(APPEND places "${contract}")
    endif()
  elseif(line STREQUAL "")
    set(inside FALSE)
  elseif(inside AND line MATCHES "^ *([0-9]+) \\| .*${contract}::(~?[A-Za-z0-9_]+)\\(")
    list(APPEND places "  ${CMAKE_MATCH_1} ${CMAKE_MATCH_2}")
  endif()
endforeach()
list(JOIN places "\n" actual)
string(APPEND actual "\n")
file(WRITE "${ACTUAL}" "${actual}")

file(READ "${EXPECTED}" expected)
if(NOT actual STREQUAL expected)
  message(FATAL_ERROR
    "The virtual tables are not those of ${EXPECTED}; they are:\n${actual}")
endif()
