# Build rules for plug-ins, for this project and for authors outside it:
#
#   kvsync_add_command_plugin(NAME Demo VERSION 1.0 BUILD 12 SOURCES Demo.cpp
#                             [TARGET target] [OUTPUT_DIRECTORY dir])
#   kvsync_add_device_plugin(...)
#
# Both make a module named <NAME>.<VERSION>.<BUILD>.dll, on every platform: that is the name by
# which the core finds it. What it would never find or load is refused here: a NAME with a dot or
# outside ASCII, a VERSION that is not major.minor as the core writes it, a BUILD beyond 32 bits,
# and, when the module is linked, a symbol that no library gives. The file goes to Logic/ (command)
# or Device/ (device) below OUTPUT_DIRECTORY, by default the folder of the executables. The target
# is called NAME unless TARGET says otherwise.

# Macros, so that Qt is found in the caller's own scope, where its moc is looked for.
macro(kvsync_add_command_plugin)
  _kvsync_check_plugin(${ARGN})
  find_package(Qt5 5.15 REQUIRED COMPONENTS Core)
  _kvsync_add_plugin(Logic KvSync::KvSyncCore ${ARGN})
endmacro()

macro(kvsync_add_device_plugin)
  _kvsync_check_plugin(${ARGN})
  find_package(Qt5 5.15 REQUIRED COMPONENTS Core)
  _kvsync_add_plugin(Device KvSync::DeviceContract ${ARGN})
endmacro()

macro(_kvsync_parse_plugin first)
  cmake_parse_arguments(PARSE_ARGV ${first} arg
    "" "NAME;VERSION;BUILD;TARGET;OUTPUT_DIRECTORY" "SOURCES")
endmacro()

function(_kvsync_check_plugin)
  _kvsync_parse_plugin(0)
  foreach(required IN ITEMS NAME VERSION BUILD SOURCES)
    if(NOT DEFINED arg_${required})
      message(FATAL_ERROR "A KvSync plug-in needs ${required}.")
    endif()
  endforeach()
  if(arg_UNPARSED_ARGUMENTS)
    message(FATAL_ERROR "A KvSync plug-in does not take: ${arg_UNPARSED_ARGUMENTS}")
  endif()
  _kvsync_check_plugin_name("${arg_NAME}")
  _kvsync_check_plugin_numbers("${arg_NAME}" "${arg_VERSION}" "${arg_BUILD}")
endfunction()

function(_kvsync_check_plugin_name name)
  if(name MATCHES "[.]")
    message(FATAL_ERROR
      "The plug-in name '${name}' must hold no dot: the numbers after it would shift.")
  endif()
  if(name MATCHES "[^ -~]")
    message(FATAL_ERROR
      "The plug-in name '${name}' must be printable ASCII: the core finds no other.")
  endif()
  if(name MATCHES "[][/\\:*?\"<>|]")
    message(FATAL_ERROR "The plug-in name '${name}' must hold none of [ ] / \\ : * ? \" < > |: "
      "in file names or in search patterns they stand for something else.")
  endif()
endfunction()

function(_kvsync_check_plugin_numbers name version build)
  set(largest 2147483647)
  set(segment "(0|[1-9][0-9]*)")
  if(NOT version MATCHES "^${segment}\\.${segment}$"
      OR CMAKE_MATCH_1 GREATER largest OR CMAKE_MATCH_2 GREATER largest)
    message(FATAL_ERROR "Plug-in ${name}: VERSION '${version}' must be major.minor, "
      "two numbers without leading zeros, none above ${largest}.")
  endif()
  if(NOT build MATCHES "^[0-9]+$" OR build GREATER largest)
    message(FATAL_ERROR
      "Plug-in ${name}: BUILD '${build}' must be a number, not above ${largest}.")
  endif()
endfunction()

function(_kvsync_add_plugin folder contract)
  _kvsync_parse_plugin(2)
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
  _kvsync_refuse_undefined_symbols(${arg_TARGET})
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

# An ELF linker leaves to run time what no library gives, where the module then fails to load; on
# Windows it cannot. Under clang the sanitizers' runtime is in the program alone, so every module
# built with them has symbols that nothing gives.
function(_kvsync_refuse_undefined_symbols target)
  string(TOUPPER "${CMAKE_BUILD_TYPE}" configuration)
  get_directory_property(link_options LINK_OPTIONS)
  set(flags "${CMAKE_CXX_FLAGS} ${CMAKE_CXX_FLAGS_${configuration}} ${link_options}")
  if(CMAKE_CXX_COMPILER_ID MATCHES "Clang" AND flags MATCHES "-fsanitize=")
    return()
  endif()
  if(UNIX AND NOT APPLE)
    target_link_options(${target} PRIVATE -Wl,--no-undefined)
  endif()
endfunction()
