# kvsync_add_test(NAME Name SOURCES ... [LIBRARIES ...])
#
# One GoogleTest program and its tests. It stands in a folder of its own, which is its application
# folder: plug-in directories are looked up below it, so programs never see each other's files.
# kvsync_add_test_program, of the same form, makes the program alone.

include(GoogleTest)

# Each test in a process of its own shows that none needs another; once is enough, so only the preset
# "dev" asks for it. Elsewhere, above all under Wine and the sanitizers, where processes are dear, a
# program runs all of its tests.
option(KVSYNC_TESTS_ALONE "Run each test in a process of its own" OFF)

# What scripts need that build a project outside this build (tests/package/OutsideProject.cmake).
string(REPLACE ";" "\\;" prefix_path "${CMAKE_PREFIX_PATH}")
string(REPLACE ";" "\\;" emulator "${CMAKE_CROSSCOMPILING_EMULATOR}")
set(KVSYNC_OUTSIDE_PROJECT
  -DSOURCE_DIR=${PROJECT_SOURCE_DIR}
  -DBUILD_DIR=${PROJECT_BINARY_DIR}
  -DGENERATOR=${CMAKE_GENERATOR}
  -DTOOLCHAIN=${CMAKE_TOOLCHAIN_FILE}
  "-DWINDOWS_PREFIX=${KVSYNC_WINDOWS_PREFIX}"
  "-DCOMPILER=${CMAKE_CXX_COMPILER}"
  "-DLAUNCHER=${CMAKE_CXX_COMPILER_LAUNCHER}"
  "-DPREFIX_PATH=${prefix_path}"
  "-DSANITIZERS=${KVSYNC_SANITIZERS}"
  "-DEMULATOR=${emulator}"
  -DBUILD_TYPE=${CMAKE_BUILD_TYPE}
  -DTESSEL3SYNC_ROOT=${KVSYNC_TESSEL3SYNC_ROOT})

function(kvsync_add_test_program)
  cmake_parse_arguments(PARSE_ARGV 0 arg "" "NAME" "SOURCES;LIBRARIES")
  add_executable(${arg_NAME} ${arg_SOURCES})
  kvsync_configure_target(${arg_NAME})
  target_link_libraries(${arg_NAME} PRIVATE KvSyncTestSupport ${arg_LIBRARIES})
  set(folder "${CMAKE_BINARY_DIR}/tests/${arg_NAME}")
  set_target_properties(${arg_NAME} PROPERTIES RUNTIME_OUTPUT_DIRECTORY "${folder}")
endfunction()

function(kvsync_add_test)
  cmake_parse_arguments(PARSE_ARGV 0 arg "" "NAME" "SOURCES;LIBRARIES")
  kvsync_add_test_program(${ARGV})
  # scripts/test.sh quick chooses programs by the folder of their sources below tests/.
  cmake_path(RELATIVE_PATH CMAKE_CURRENT_SOURCE_DIR
    BASE_DIRECTORY "${PROJECT_SOURCE_DIR}/tests" OUTPUT_VARIABLE folder)
  set_property(GLOBAL APPEND PROPERTY KVSYNC_TEST_PROGRAMS "${folder} ${arg_NAME}")
  if(KVSYNC_TESTS_ALONE)
    gtest_discover_tests(${arg_NAME}
      DISCOVERY_MODE PRE_TEST
      NO_PRETTY_VALUES
      DISCOVERY_TIMEOUT 120
      PROPERTIES TIMEOUT 120)
  else()
    add_test(NAME ${arg_NAME} COMMAND ${arg_NAME})
    set_tests_properties(${arg_NAME} PROPERTIES TIMEOUT 900)
  endif()
endfunction()
