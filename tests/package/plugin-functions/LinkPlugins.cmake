# Builds plug-ins with and without an undefined symbol, as an author's project would.

include("${CMAKE_CURRENT_LIST_DIR}/../OutsideProject.cmake")

function(build target result output)
  execute_process(
    COMMAND ${CMAKE_COMMAND} --build "${WORK_DIR}" --config "${BUILD_TYPE}" --target ${target}
    RESULT_VARIABLE code OUTPUT_VARIABLE text ERROR_VARIABLE text)
  set(${result} "${code}" PARENT_SCOPE)
  set(${output} "${text}" PARENT_SCOPE)
endfunction()

file(REMOVE_RECURSE "${WORK_DIR}")
outside_project_options("" options)
execute_process(
  COMMAND ${CMAKE_COMMAND} -S "${CMAKE_CURRENT_LIST_DIR}/linked" -B "${WORK_DIR}" ${options}
    "-DKVSYNC_SOURCE_DIR=${SOURCE_DIR}"
  COMMAND_ERROR_IS_FATAL ANY)
foreach(kind IN ITEMS command device)
  build(${kind}Whole code text)
  if(NOT code EQUAL 0)
    message(FATAL_ERROR "A whole ${kind} plug-in: exit ${code}\n${text}")
  endif()
  if(REFUSES_UNDEFINED)
    build(${kind}Lacking code text)
    if(code EQUAL 0 OR NOT text MATCHES "(undefined|unresolved)[^\n]*definedNowhere")
      message(FATAL_ERROR "A ${kind} plug-in that lacks a symbol: exit ${code}\n${text}")
    endif()
  endif()
endforeach()
file(REMOVE_RECURSE "${WORK_DIR}")
