# Installs the program as customers get it, under a name with blanks and foreign letters, and scans
# with it: nothing but what is in that folder may be needed.

set(folder "${WORK_DIR}/a scanner's Gerät 扫描")
file(REMOVE_RECURSE "${WORK_DIR}")
file(MAKE_DIRECTORY "${WORK_DIR}")

if(MODE STREQUAL "Zip")
  execute_process(COMMAND ${CPACK} -G ZIP --config "${BUILD_DIR}/CPackConfig.cmake" -B "${WORK_DIR}/zip"
    OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
  file(GLOB archive "${WORK_DIR}/zip/*.zip")
  file(ARCHIVE_EXTRACT INPUT "${archive}" DESTINATION "${folder}")
else()
  execute_process(COMMAND ${CMAKE_COMMAND} --install "${BUILD_DIR}" --component program
    --prefix "${folder}" OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
endif()
file(GLOB_RECURSE program "${folder}/kvsync" "${folder}/kvsync.exe")

if(WINDOWS_PREFIX)
  # Wine is told of no folder of this build, and the archive runs in an empty Wine prefix.
  set(ENV{WINEPATH} "")
  if(MODE STREQUAL "Zip")
    set(ENV{KVSYNC_WINEPREFIX} "${WORK_DIR}/wine")
  endif()
  set(EMULATOR "${SOURCE_DIR}/scripts/wine-run.sh" "/nonexistent")
endif()
execute_process(COMMAND ${EMULATOR} "${program}" scan --frames 2 --period 100 --out "${folder}/out"
  RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE errors)
file(GLOB images "${folder}/out/frame-*.png")
list(LENGTH images image_count)
if(NOT result EQUAL 0 OR NOT image_count EQUAL 4 OR NOT EXISTS "${folder}/out/contact-sheet.png")
  message(FATAL_ERROR
    "kvsync exited ${result} with ${image_count} images\nstdout:\n${output}\nstderr:\n${errors}")
endif()
if(WINDOWS_PREFIX AND MODE STREQUAL "Zip")
  execute_process(COMMAND ${CMAKE_COMMAND} -E env "WINEPREFIX=${WORK_DIR}/wine" wineserver -k)
endif()
file(REMOVE_RECURSE "${WORK_DIR}")
