# Runs while installing a Windows build: copies every DLL that the installed files need, and that is
# not Windows's own, to the folder of the executables.
#   dll_folders  where to look, objdump  what reads a DLL's imports, bindir  where they go

set(target "$ENV{DESTDIR}${CMAKE_INSTALL_PREFIX}/${bindir}")
file(GLOB executables "${target}/*.exe")
file(GLOB_RECURSE modules "${target}/*.dll")

set(CMAKE_GET_RUNTIME_DEPENDENCIES_PLATFORM "windows+pe")
set(CMAKE_GET_RUNTIME_DEPENDENCIES_TOOL objdump)
set(CMAKE_GET_RUNTIME_DEPENDENCIES_COMMAND "${objdump}")
file(GET_RUNTIME_DEPENDENCIES
  EXECUTABLES ${executables}
  MODULES ${modules}
  DIRECTORIES "${target}" ${dll_folders}
  RESOLVED_DEPENDENCIES_VAR found
  UNRESOLVED_DEPENDENCIES_VAR missing
  PRE_EXCLUDE_REGEXES "^api-ms-" "^ext-ms-"
    "^(advapi32|bcrypt|comdlg32|crypt32|d3d9|d3d11|dbghelp|dnsapi|dwmapi|dwrite|dxgi|gdi32|imm32|iphlpapi|kernel32|mpr|msvcrt|netapi32|ntdll|ole32|oleaut32|rpcrt4|setupapi|shell32|shlwapi|user32|userenv|uuid|version|winmm|winspool|ws2_32|wtsapi32)\\.(dll|drv)$")
if(missing)
  message(FATAL_ERROR "DLLs that are needed and not found: ${missing}")
endif()
foreach(dll IN LISTS found)
  cmake_path(GET dll PARENT_PATH folder)
  if(NOT folder STREQUAL target)
    file(COPY "${dll}" DESTINATION "${target}")
  endif()
endforeach()
