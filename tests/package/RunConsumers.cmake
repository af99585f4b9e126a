# Builds the examples as an outside project would and runs the host among them.

include("${CMAKE_CURRENT_LIST_DIR}/OutsideProject.cmake")

function(run)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE result)
  if(NOT result EQUAL 0)
    message(FATAL_ERROR "failed (${result}): ${ARGN}")
  endif()
endfunction()

file(REMOVE_RECURSE "${WORK_DIR}")
if(MODE STREQUAL "InstalledSdk")
  set(sdk "${WORK_DIR}/sdk")
  run(${CMAKE_COMMAND} --install "${BUILD_DIR}" --prefix "${sdk}")
else()
  set(sdk "")
  set(checkout "-DKVSYNC_SOURCE_DIR=${SOURCE_DIR}" "-DKVSYNC_SANITIZERS=${SANITIZERS}"
    "-DKVSYNC_TESSEL3SYNC_ROOT=${TESSEL3SYNC_ROOT}")
endif()
outside_project_options("${sdk}" options)

run(${CMAKE_COMMAND} -S "${SOURCE_DIR}/examples" -B "${WORK_DIR}/build" ${options} ${checkout})
run(${CMAKE_COMMAND} --build "${WORK_DIR}/build")

set(host "${WORK_DIR}/build/bin/MinimalHost")
if(EMULATOR)
  string(APPEND host ".exe")
  # A Windows program finds its DLLs beside it.
  if(MODE STREQUAL "InstalledSdk")
    file(GLOB libraries "${WORK_DIR}/sdk/bin/*.dll")
    file(COPY ${libraries} DESTINATION "${WORK_DIR}/build/bin")
  endif()
endif()
execute_process(COMMAND ${EMULATOR} "${host}"
  RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE errors)
string(REPLACE "\r\n" "\n" output "${output}")
if(NOT result EQUAL 0 OR NOT output STREQUAL "event Greeter.counted Blinker\ndevices 1\n")
  message(FATAL_ERROR "MinimalHost exited ${result}\nstdout:\n${output}\nstderr:\n${errors}")
endif()
