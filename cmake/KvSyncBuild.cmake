# How every target of this project is compiled. Consumers of the installed package never see it.

set(KVSYNC_SANITIZERS "" CACHE STRING "Sanitizers of the whole build: address,undefined or thread")
if(KVSYNC_SANITIZERS)
  add_compile_options(-fsanitize=${KVSYNC_SANITIZERS} -fno-omit-frame-pointer
    -fno-sanitize-recover=all)
  add_link_options(-fsanitize=${KVSYNC_SANITIZERS})
endif()

if(KVSYNC_BUILD_FUZZERS)
  # Coverage of the whole build guides the fuzzers; only their programs link libFuzzer.
  add_compile_options(-fsanitize=fuzzer-no-link)
endif()

if(PROJECT_IS_TOP_LEVEL)
  # Hosts, libraries and plug-ins share one folder, as they do on a customer's machine; below it
  # stand Logic/ and Device/.
  set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/bin")
  set(CMAKE_LIBRARY_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/bin")
  set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
endif()

function(kvsync_configure_target target)
  set_target_properties(${target} PROPERTIES
    AUTOMOC ON
    CXX_STANDARD 17
    CXX_STANDARD_REQUIRED ON
    CXX_EXTENSIONS OFF
    # What would fail on Windows for a missing export fails on Linux first.
    CXX_VISIBILITY_PRESET hidden
    VISIBILITY_INLINES_HIDDEN ON
    POSITION_INDEPENDENT_CODE ON)
  target_compile_definitions(${target} PRIVATE
    # File, line and signature belong to every log line, in release builds too.
    QT_MESSAGELOGCONTEXT
    QT_NO_KEYWORDS
    QT_NO_FOREACH)
  if(MSVC)
    target_compile_options(${target} PRIVATE /W4 /permissive- /utf-8
      $<$<BOOL:${KVSYNC_WARNINGS_AS_ERRORS}>:/WX>)
  else()
    target_compile_options(${target} PRIVATE
      -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Wcast-align
      -Wformat=2 -Wimplicit-fallthrough -Wunused
      # Qt's logging macros leave their variable arguments out.
      $<$<CXX_COMPILER_ID:Clang>:-Wno-gnu-zero-variadic-macro-arguments>
      $<$<BOOL:${KVSYNC_WARNINGS_AS_ERRORS}>:-Werror>)
  endif()
  if(WIN32)
    target_compile_definitions(${target} PRIVATE
      GLOG_NO_ABBREVIATED_SEVERITIES NOMINMAX WIN32_LEAN_AND_MEAN)
  endif()
endfunction()

# A shared library that keeps every symbol it needs resolved, as a DLL must.
function(kvsync_configure_shared_library target)
  kvsync_configure_target(${target})
  _kvsync_refuse_undefined_symbols(${target})
  set_target_properties(${target} PROPERTIES
    BUILD_RPATH_USE_ORIGIN ON
    INSTALL_RPATH "$ORIGIN")
  if(MINGW)
    # Customers know the DLLs by these names; MinGW would begin them with "lib".
    set_target_properties(${target} PROPERTIES PREFIX "")
  endif()
endfunction()
