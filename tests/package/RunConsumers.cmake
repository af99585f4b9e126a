# Builds the examples as an outside project would and runs the host among them.

function(run)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE result)
  if(NOT result EQUAL 0)
    message(FATAL_ERROR "failed (${result}): ${ARGN}")
  endif()
endfunction()

file(REMOVE_RECURSE "${WORK_DIR}")
set(options -G "${GENERATOR}" "-DCMAKE_BUILD_TYPE=${BUILD_TYPE}"
  "-DCMAKE_CXX_COMPILER_LAUNCHER=${LAUNCHER}")
if(TOOLCHAIN)
  list(APPEND options "-DCMAKE_TOOLCHAIN_FILE=${TOOLCHAIN}"
    "-DKVSYNC_WINDOWS_PREFIX=${WINDOWS_PREFIX}")
else()
  list(APPEND options "-DCMAKE_CXX_COMPILER=${COMPILER}")
endif()

if(SANITIZERS)
  list(APPEND options "-DCMAKE_CXX_FLAGS=-fsanitize=${SANITIZERS}")
endif()

set(prefixes ${PREFIX_PATH})
if(MODE STREQUAL "InstalledSdk")
  run(${CMAKE_COMMAND} --install "${BUILD_DIR}" --prefix "${WORK_DIR}/sdk")
  # Named in full, since a cross build searches the folders of its own system alone.
  file(GLOB_RECURSE config "${WORK_DIR}/sdk/KvSyncCoreConfig.cmake")
  cmake_path(GET config PARENT_PATH config)
  list(APPEND options "-DKvSyncCore_DIR=${config}")
else()
  list(APPEND options "-DKVSYNC_SOURCE_DIR=${SOURCE_DIR}" "-DKVSYNC_SANITIZERS=${SANITIZERS}"
    "-DKVSYNC_TESSEL3SYNC_ROOT=${TESSEL3SYNC_ROOT}")
endif()
list(JOIN prefixes "\;" prefixes)
list(APPEND options "-DCMAKE_PREFIX_PATH=${prefixes}")

run(${CMAKE_COMMAND} -S "${SOURCE_DIR}/examples" -B "${WORK_DIR}/build" ${options})
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
