# What compilers let pass in the libraries' sources: a second file that knows glog, and macros under
# names that belong to the compiler.
#   cmake -DSOURCE_DIR=dir -P CheckSources.cmake

file(GLOB_RECURSE sources
  "${SOURCE_DIR}/include/*.h" "${SOURCE_DIR}/support/*.[ch]*" "${SOURCE_DIR}/src/*.[ch]*")
if(NOT sources)
  message(FATAL_ERROR "No sources below ${SOURCE_DIR}.")
endif()

set(faults "")
foreach(source IN LISTS sources)
  file(READ "${source}" content)
  if(content MATCHES "#[ \t]*define[ \t]+(_[A-Z_][A-Za-z0-9_]*)")
    string(APPEND faults "${source} defines the reserved name ${CMAKE_MATCH_1}.\n")
  endif()
  if(NOT source MATCHES "/GlogChannel\\.h$" AND content MATCHES "google::|<glog/")
    string(APPEND faults "${source} uses glog; only GlogChannel.h does.\n")
  endif()
endforeach()
if(faults)
  message(FATAL_ERROR "${faults}")
endif()
