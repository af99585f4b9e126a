# The program as customers get it: kvsync, the libraries and the sample plug-ins in one folder, with
# every DLL that they need on Windows.
#
#   cpack --config build/<preset>/CPackConfig.cmake

if(NOT KVSYNC_BUILD_TOOLS)
  return()
endif()

set(runtime_libraries KvSyncTool KvSyncCore)
if(NOT KVSYNC_TESSEL3SYNC_ROOT)
  list(APPEND runtime_libraries Tessel3Sync)
endif()

# A program finds its DLLs, and everywhere its plug-in folders, beside it.
install(TARGETS kvsync ${runtime_libraries}
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT program
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT program NAMELINK_SKIP
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT program EXCLUDE_FROM_ALL)
install(TARGETS Scanner
  LIBRARY DESTINATION ${CMAKE_INSTALL_BINDIR}/Logic COMPONENT program)
if(TARGET VirtualScanner)
  install(TARGETS VirtualScanner
    LIBRARY DESTINATION ${CMAKE_INSTALL_BINDIR}/Device COMPONENT program)
endif()
