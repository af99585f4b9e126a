# Checks every fenced block of one document.
# Usage: cmake -DDOCUMENT=README.md ... -P CheckDocument.cmake; CMakeLists.txt gives the rest.

cmake_minimum_required(VERSION 3.25)

include("${CMAKE_CURRENT_LIST_DIR}/Blocks.cmake")
include("${CMAKE_CURRENT_LIST_DIR}/Commands.cmake")
include("${CMAKE_CURRENT_LIST_DIR}/Kvsync.cmake")
include("${CMAKE_CURRENT_LIST_DIR}/Plans.cmake")
include("${CMAKE_CURRENT_LIST_DIR}/Sources.cmake")

# Of each language: what happens to a block. First what others may need is written, then all is run.
set(prepare_json write_plan)
set(prepare_cpp write_source)
set(prepare_cmake write_project)
set(prepare_sh nothing)
set(prepare_usage nothing)
set(prepare_text nothing)
set(prepare_mermaid nothing)
set(check_json scan_with_plan)
set(check_cpp nothing)
set(check_cmake nothing)
set(check_sh run_commands)
set(check_usage compare_with_help)
set(check_text nothing)
set(check_mermaid nothing)

function(nothing)
endfunction()

function(prepare_block)
  if(NOT BLOCK_LANGUAGE MATCHES "^[a-z]+$" OR NOT DEFINED prepare_${BLOCK_LANGUAGE})
    fail("a block of the language '${BLOCK_LANGUAGE}' cannot be checked")
  endif()
  cmake_language(CALL ${prepare_${BLOCK_LANGUAGE}})
endfunction()

function(check_block)
  cmake_language(CALL ${check_${BLOCK_LANGUAGE}})
endfunction()

file(REMOVE_RECURSE "${WORK_DIR}")
file(MAKE_DIRECTORY "${WORK_DIR}/scratch" "${WORK_DIR}/project")
file(READ "${SOURCE_DIR}/${DOCUMENT}" document)

for_each_block("${document}" prepare_block)
for_each_block("${document}" check_block)
build_sources()
file(REMOVE_RECURSE "${WORK_DIR}")
