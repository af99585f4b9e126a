# C++ and CMake blocks. Those of one document make one project over the installed SDK: each stands in
# the file of contexts/ that it names, at @SNIPPET@, with what it includes at @INCLUDES@.

include("${CMAKE_CURRENT_LIST_DIR}/../package/OutsideProject.cmake")

set(contexts "${CMAKE_CURRENT_LIST_DIR}/contexts")

# put_into_context(suffix target): the block as a file of the project.
function(put_into_context suffix target)
  marker(in context)
  if(NOT context)
    fail("a block says by in= what stands around it")
  endif()
  if(NOT EXISTS "${contexts}/${context}.${suffix}.in")
    fail("there is no context ${context}.${suffix}.in")
  endif()
  set(SNIPPET "${BLOCK_TEXT}")
  set(LINE ${BLOCK_LINE})
  configure_file("${contexts}/${context}.${suffix}.in" "${target}" @ONLY)
endfunction()

function(write_source)
  # Includes stand before everything; a line of dots is what the reader adds.
  string(REGEX MATCHALL "#include[^\n]*\n" INCLUDES "${BLOCK_TEXT}")
  string(JOIN "" INCLUDES ${INCLUDES})
  string(REGEX REPLACE "#include[^\n]*\n" "" BLOCK_TEXT "${BLOCK_TEXT}")
  string(REGEX REPLACE "\n *\\.\\.\\.\n" "\n" BLOCK_TEXT "${BLOCK_TEXT}")
  marker(in context)
  configure_file("${contexts}/Host.h" "${WORK_DIR}/project/Host.h" COPYONLY)
  put_into_context(cpp "${WORK_DIR}/project/${context}-${BLOCK_LINE}.cpp")
endfunction()

function(write_project)
  put_into_context(cmake "${WORK_DIR}/project/CMakeLists.txt")
  marker(run program)
  set_property(GLOBAL PROPERTY program "${program}")
endfunction()

function(build_sources)
  set(project "${WORK_DIR}/project")
  set(build "${WORK_DIR}/build")
  set(BLOCK_LINE 1)
  file(GLOB files "${project}/*")
  if(NOT files)
    return()
  endif()
  if(NOT EXISTS "${project}/CMakeLists.txt")
    configure_file("${contexts}/snippets.cmake.in" "${project}/CMakeLists.txt" @ONLY)
  endif()

  outside_project_options("${SDK_DIR}" options)
  execute_process(COMMAND ${CMAKE_COMMAND} -S "${project}" -B "${build}" ${options}
    "-DKVSYNC_SOURCE_DIR=${SOURCE_DIR}"
    RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
  if(NOT result EQUAL 0)
    fail("its project cannot be configured\n${output}")
  endif()
  execute_process(COMMAND ${CMAKE_COMMAND} --build "${build}"
    RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
  if(NOT result EQUAL 0)
    fail("its sources do not compile\n${output}")
  endif()
  run_program("${build}/bin")
endfunction()

# A program stands beside what the build put beside kvsync.
function(run_program folder)
  get_property(program GLOBAL PROPERTY program)
  if(NOT program)
    return()
  endif()
  cmake_path(GET KVSYNC PARENT_PATH built)
  file(COPY "${built}/Logic" "${built}/Device" DESTINATION "${folder}")
  if(EMULATOR)
    # A Windows program finds its DLLs beside it.
    file(GLOB libraries "${SDK_DIR}/bin/*.dll")
    file(COPY ${libraries} DESTINATION "${folder}")
    string(APPEND program ".exe")
  endif()
  execute_process(COMMAND ${EMULATOR} "${folder}/${program}"
    TIMEOUT 300
    RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
  if(NOT result EQUAL 0)
    fail("${program} ended with ${result}\n${output}")
  endif()
endfunction()
