# Configures a tiny project for each set of values and compares what is said.
#   cmake -DSOURCE_DIR=... -DWORK_DIR=... -P RefuseValues.cmake

function(configure result output)
  file(REMOVE_RECURSE "${WORK_DIR}")
  execute_process(
    COMMAND ${CMAKE_COMMAND} -S "${CMAKE_CURRENT_LIST_DIR}/refused" -B "${WORK_DIR}"
      "-DKVSYNC_SOURCE_DIR=${SOURCE_DIR}" ${ARGN}
    RESULT_VARIABLE code OUTPUT_VARIABLE text ERROR_VARIABLE text)
  # CMake breaks and indents what it says.
  string(REGEX REPLACE "[ \n]+" " " text "${text}")
  set(${result} "${code}" PARENT_SCOPE)
  set(${output} "${text}" PARENT_SCOPE)
endfunction()

function(expect_refused sentence)
  string(JOIN "\;" arguments ${ARGN})
  foreach(kind IN ITEMS command device)
    configure(code text -DKIND=${kind} "-DARGUMENTS=${arguments}")
    string(FIND "${text}" " ${sentence} " place)
    if(code EQUAL 0 OR place EQUAL -1)
      message(FATAL_ERROR "${kind} ${ARGN}\nexpected: ${sentence}\nexit ${code}: ${text}")
    endif()
  endforeach()
endfunction()

function(expect_accepted)
  string(JOIN "\;" arguments ${ARGN})
  configure(code text -DCHECK_ONLY=ON "-DARGUMENTS=${arguments}")
  if(NOT code EQUAL 0)
    message(FATAL_ERROR "${ARGN}\nexpected: accepted\nexit ${code}: ${text}")
  endif()
endfunction()

function(expect_name_refused name sentence)
  expect_refused("The plug-in name '${name}' ${sentence}"
    NAME ${name} VERSION 1.0 BUILD 1 SOURCES a.cpp)
endfunction()

function(expect_version_refused version)
  expect_refused("Plug-in Demo: VERSION '${version}' must be major.minor, two numbers without \
leading zeros, none above 2147483647."
    NAME Demo VERSION ${version} BUILD 1 SOURCES a.cpp)
endfunction()

function(expect_build_refused build)
  expect_refused("Plug-in Demo: BUILD '${build}' must be a number, not above 2147483647."
    NAME Demo VERSION 1.0 BUILD ${build} SOURCES a.cpp)
endfunction()

expect_refused("A KvSync plug-in needs NAME." VERSION 1.0 BUILD 1 SOURCES a.cpp)
expect_refused("A KvSync plug-in needs VERSION." NAME Demo BUILD 1 SOURCES a.cpp)
expect_refused("A KvSync plug-in needs BUILD." NAME Demo VERSION 1.0 SOURCES a.cpp)
expect_refused("A KvSync plug-in needs SOURCES." NAME Demo VERSION 1.0 BUILD 1)
expect_refused("A KvSync plug-in does not take: STATIC"
  STATIC NAME Demo VERSION 1.0 BUILD 1 SOURCES a.cpp)

foreach(name IN ITEMS De.mo .Demo Demo.)
  expect_name_refused(${name} "must hold no dot: the numbers after it would shift.")
endforeach()
foreach(name IN ITEMS Dämon 扫描)
  expect_name_refused(${name} "must be printable ASCII: the core finds no other.")
endforeach()
foreach(name IN ITEMS a/b a:b De[m]o De*mo Demo? <Demo> a|b)
  expect_name_refused(${name} "must hold none of [ ] / \\ : * ? \" < > |: in file names or in \
search patterns they stand for something else.")
endforeach()

foreach(version IN ITEMS 1 1.0.3 01.0 1.00 1.01 1. .1 1.x 1.-1 v1.0 2147483648.0 1.2147483648)
  expect_version_refused(${version})
endforeach()
foreach(build IN ITEMS x -1 1.5 2147483648 4294967297 99999999999999999999)
  expect_build_refused(${build})
endforeach()

expect_accepted(NAME Demo VERSION 1.0 BUILD 1 SOURCES a.cpp)
expect_accepted(NAME Demo VERSION 0.0 BUILD 0 SOURCES a.cpp b.cpp)
expect_accepted(NAME a_b-C9+1 VERSION 10.20 BUILD 007 SOURCES a.cpp)
expect_accepted(NAME Demo VERSION 2147483647.2147483647 BUILD 2147483647 SOURCES a.cpp)
file(REMOVE_RECURSE "${WORK_DIR}")
