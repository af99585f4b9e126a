# Build rules for plug-ins, for this project and for authors outside it:
#
#   kvsync_add_command_plugin(NAME Demo VERSION 1.0 BUILD 12 SOURCES Demo.cpp
#                             [TARGET target] [OUTPUT_DIRECTORY dir])
#   kvsync_add_device_plugin(...)
#
# Both make a module named <NAME>.<VERSION>.<BUILD>.dll, on every platform: that is the name by
# which the core finds it. NAME must hold no dot. The file goes to Logic/ (command) or Device/
# (device) below OUTPUT_DIRECTORY, by default the folder of the executables. The target is called
# NAME unless TARGET says otherwise.

# Macros, so that Qt is found in the caller's own scope, where its moc is looked for.
macro(kvsync_add_command_plugin)
  find_package(Qt5 5.15 REQUIRED COMPONENTS Core)
  _kvsync_add_plugin(Logic KvSync::KvSyncCore ${ARGN})
endmacro()

macro(kvsync_add_device_plugin)
  find_package(Qt5 5.15 REQUIRED COMPONENTS Core)
  _kvsync_add_plugin(Device KvSync::DeviceContract ${ARGN})
endmacro()

function(_kvsync_add_plugin folder contract)
  cmake_parse_arguments(PARSE_ARGV 2 arg "" "NAME;VERSION;BUILD;TARGET;OUTPUT_DIRECTORY" "SOURCES")
  foreach(required IN ITEMS NAME VERSION BUILD SOURCES)
    if(NOT DEFINED arg_${required})
      message(FATAL_ERROR "A KvSync plug-in needs ${required}.")
    endif()
  endforeach()
  if(arg_UNPARSED_ARGUMENTS)
    message(FATAL_ERROR "A KvSync plug-in does not take: ${arg_UNPARSED_ARGUMENTS}")
  endif()
  if(NOT arg_NAME MATCHES "^[^.]+$")
    message(FATAL_ERROR "The plug-in name '${arg_NAME}' must hold no dot.")
  endif()
  if(NOT arg_VERSION MATCHES "^[0-9]+\\.[0-9]+$" OR NOT arg_BUILD MATCHES "^[0-9]+$")
    message(FATAL_ERROR "Plug-in ${arg_NAME}: VERSION is major.minor, BUILD a number.")
  endif()

  if(NOT arg_TARGET)
    set(arg_TARGET ${arg_NAME})
  endif()
  if(NOT arg_OUTPUT_DIRECTORY)
    set(arg_OUTPUT_DIRECTORY "${CMAKE_RUNTIME_OUTPUT_DIRECTORY}")
  endif()
  if(NOT arg_OUTPUT_DIRECTORY)
    set(arg_OUTPUT_DIRECTORY "${CMAKE_CURRENT_BINARY_DIR}")
  endif()

  add_library(${arg_TARGET} MODULE ${arg_SOURCES})
  target_link_libraries(${arg_TARGET} PRIVATE ${contract})
  set_target_properties(${arg_TARGET} PROPERTIES
    AUTOMOC ON
    CXX_VISIBILITY_PRESET hidden
    VISIBILITY_INLINES_HIDDEN ON
    PREFIX ""
    OUTPUT_NAME "${arg_NAME}.${arg_VERSION}.${arg_BUILD}"
    SUFFIX ".dll"
    LIBRARY_OUTPUT_DIRECTORY "${arg_OUTPUT_DIRECTORY}/${folder}"
    RUNTIME_OUTPUT_DIRECTORY "${arg_OUTPUT_DIRECTORY}/${folder}"
    INSTALL_RPATH "$ORIGIN/..:$ORIGIN/../../${CMAKE_INSTALL_LIBDIR}")
  target_compile_features(${arg_TARGET} PRIVATE cxx_std_17)
endfunction()
