# docs/compatibility.md names the tests that hold its rows: each must exist.
#   cmake -DSOURCE_DIR=dir -P CheckTests.cmake

file(READ "${SOURCE_DIR}/docs/compatibility.md" page)
string(REGEX MATCHALL "`[A-Z][A-Za-z0-9]+\\.[A-Z][A-Za-z0-9]+`" named "${page}")
list(REMOVE_DUPLICATES named)
list(LENGTH named count)
if(count LESS 30)
  message(FATAL_ERROR "Only ${count} tests are named in docs/compatibility.md.")
endif()

set(sources "")
file(GLOB_RECURSE files "${SOURCE_DIR}/tests/*Test.cpp" "${SOURCE_DIR}/tests/contract/*.txt"
  "${SOURCE_DIR}/tests/contract/*.cmake")
foreach(file IN LISTS files)
  file(READ "${file}" content)
  string(REGEX REPLACE "[ \n]+" " " content "${content}")
  string(APPEND sources "${content}")
endforeach()

set(missing "")
foreach(test IN LISTS named)
  string(REPLACE "`" "" test "${test}")
  string(REPLACE "." ", " arguments "${test}")
  string(FIND "${sources}" "(${arguments})" as_gtest)
  # Names of ctest alone have a part that is filled in.
  string(REGEX REPLACE "^(Exports)\\.KvSync(Core|Tool)" "\\1.\${library}" pattern "${test}")
  string(REGEX REPLACE "^(VtableLayouts)\\.Itanium" "\\1.\${abi}" pattern "${pattern}")
  string(FIND "${sources}" "add_test(NAME ${pattern} " as_command)
  if(as_gtest EQUAL -1 AND as_command EQUAL -1)
    string(APPEND missing "${test} is named in docs/compatibility.md and is no test.\n")
  endif()
endforeach()
if(missing)
  message(FATAL_ERROR "${missing}")
endif()
