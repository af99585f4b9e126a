# kvsync_add_test(NAME Name SOURCES ... [LIBRARIES ...])
#
# One GoogleTest program. It stands in a folder of its own, which is its application folder: plug-in
# directories are looked up below it, so programs never see each other's files.

include(GoogleTest)

# Each test in a process of its own shows that none needs another; where processes are dear, under
# Wine and the sanitizers, a program runs all of its tests.
if(CMAKE_CROSSCOMPILING OR KVSYNC_SANITIZERS)
  set(tests_alone OFF)
else()
  set(tests_alone ON)
endif()

function(kvsync_add_test)
  cmake_parse_arguments(PARSE_ARGV 0 arg "" "NAME" "SOURCES;LIBRARIES")
  add_executable(${arg_NAME} ${arg_SOURCES})
  kvsync_configure_target(${arg_NAME})
  target_link_libraries(${arg_NAME} PRIVATE KvSyncTestSupport ${arg_LIBRARIES})
  set(folder "${CMAKE_BINARY_DIR}/tests/${arg_NAME}")
  set_target_properties(${arg_NAME} PROPERTIES RUNTIME_OUTPUT_DIRECTORY "${folder}")
  if(tests_alone)
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
