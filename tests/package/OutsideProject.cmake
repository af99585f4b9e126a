# How a project outside this build is configured; KVSYNC_OUTSIDE_PROJECT of cmake/KvSyncTests.cmake
# gives what is named here.

# outside_project_options(sdk result): options for cmake. sdk is the folder of an installed SDK, or
# empty if the project finds KvSync by itself.
function(outside_project_options sdk result)
  set(options -G "${GENERATOR}" "-DCMAKE_BUILD_TYPE=${BUILD_TYPE}"
    "-DCMAKE_CXX_COMPILER_LAUNCHER=${LAUNCHER}")
  if(TOOLCHAIN)
    list(APPEND options "-DCMAKE_TOOLCHAIN_FILE=${TOOLCHAIN}"
      "-DKVSYNC_WINDOWS_PREFIX=${WINDOWS_PREFIX}")
  else()
    list(APPEND options "-DCMAKE_CXX_COMPILER=${COMPILER}")
  endif()
  if(SANITIZERS)
    list(APPEND options "-DCMAKE_CXX_FLAGS=-fsanitize=${SANITIZERS}")
  endif()
  if(sdk)
    # Named in full, since a cross build searches the folders of its own system alone.
    file(GLOB_RECURSE config "${sdk}/KvSyncCoreConfig.cmake")
    cmake_path(GET config PARENT_PATH config)
    list(APPEND options "-DKvSyncCore_DIR=${config}")
  endif()
  list(JOIN PREFIX_PATH "\;" prefixes)
  list(APPEND options "-DCMAKE_PREFIX_PATH=${prefixes}")
  set(${result} "${options}" PARENT_SCOPE)
endfunction()
