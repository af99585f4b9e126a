# Commands of the built kvsync, run in the document's scratch folder.

# Loaded machines make pictures slowly; a document shows commands for machines at rest.
set(patience_scan --timeout 60000)
set(patience_device_capture --timeout 60000)

# call_kvsync(output arguments...): what it printed; fails unless it ends with 0.
function(call_kvsync output)
  execute_process(COMMAND ${EMULATOR} "${KVSYNC}" ${ARGN}
    WORKING_DIRECTORY "${WORK_DIR}/scratch"
    TIMEOUT 300
    RESULT_VARIABLE result OUTPUT_VARIABLE printed ERROR_VARIABLE errors)
  if(NOT result EQUAL 0)
    verb("${ARGN}" name)
    fail("'kvsync ${name}' ended with ${result}\n${errors}")
  endif()
  string(REPLACE "\r" "" printed "${printed}")
  set(${output} "${printed}" PARENT_SCOPE)
endfunction()

# verb(arguments result): the words before the first option or file.
function(verb arguments result)
  set(name "")
  foreach(word IN LISTS arguments)
    if(NOT word MATCHES "^[a-z][a-z-]*$")
      break()
    endif()
    list(APPEND name ${word})
  endforeach()
  list(JOIN name " " name)
  set(${result} "${name}" PARENT_SCOPE)
endfunction()

function(run_kvsync)
  verb("${ARGN}" name)
  string(REPLACE " " "_" name "${name}")
  call_kvsync(output ${ARGN} ${patience_${name}})
  check_written_folder(${ARGN})
endfunction()

# What was to be written stands there.
function(check_written_folder)
  list(FIND ARGN --out option)
  if(option EQUAL -1)
    return()
  endif()
  math(EXPR option "${option} + 1")
  list(GET ARGN ${option} folder)
  file(GLOB written "${WORK_DIR}/scratch/${folder}/*")
  if(NOT written)
    fail("nothing is in ${folder}")
  endif()
endfunction()

# A synopsis shows no option that the command's help does not know.
function(compare_with_help)
  for_each_line("${BLOCK_TEXT}" compare_line_with_help)
endfunction()

function(compare_line_with_help line)
  string(REGEX REPLACE "[][|]" " " words "${line}")
  separate_arguments(words UNIX_COMMAND "${words}")
  list(POP_FRONT words program)
  if(NOT program STREQUAL "kvsync")
    fail("a synopsis is one of kvsync, not of '${program}'")
  endif()
  verb("${words}" name)
  string(REPLACE " " ";" call "${name}")
  call_kvsync(help ${call} --help)
  list(FILTER words INCLUDE REGEX "^--")
  foreach(option IN LISTS words)
    if(NOT help MATCHES "[ ,]${option}[ \n]")
      fail("kvsync ${name} has no ${option}")
    endif()
  endforeach()
endfunction()
