# kvsync_add_vtable_test(ABI compiler flags...)
#
# The order of the virtual operations is a binary contract with plug-ins that were built long ago,
# by another compiler. This test reads it from clang and compares it with vtables/<ABI>.txt.

set(KVSYNC_VTABLES_DIR "${CMAKE_CURRENT_LIST_DIR}")

function(kvsync_add_vtable_test abi)
  string(TOLOWER "${abi}" abi_file)
  list(JOIN ARGN "|" compile)
  add_test(NAME VtableLayouts.${abi}TablesAreTheCheckedInOnes
    COMMAND ${CMAKE_COMMAND}
      "-DCOMPILE=${compile}"
      "-DPROBE=${KVSYNC_VTABLES_DIR}/Probe.cpp"
      "-DEXPECTED=${KVSYNC_VTABLES_DIR}/${abi_file}.txt"
      "-DACTUAL=${CMAKE_CURRENT_BINARY_DIR}/${abi_file}.txt"
      -P "${KVSYNC_VTABLES_DIR}/CompareVtables.cmake")
endfunction()
