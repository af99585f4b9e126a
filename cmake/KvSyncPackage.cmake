# The program as customers get it: kvsync, the libraries and the sample plug-ins in one folder, on
# Windows with every DLL that they need.
#
#   cmake --install build/<preset> --component program --prefix <folder>
#   cpack --config build/<preset>/CPackConfig.cmake

if(NOT KVSYNC_BUILD_TOOLS)
  return()
endif()

set(program_libraries KvSyncTool KvSyncCore)
if(NOT KVSYNC_TESSEL3SYNC_ROOT)
  list(APPEND program_libraries Tessel3Sync)
endif()
install(TARGETS kvsync ${program_libraries}
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT program
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT program
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT program EXCLUDE_FROM_ALL)

# Plug-in folders stand beside the executable, everywhere.
install(TARGETS Scanner
  LIBRARY DESTINATION ${CMAKE_INSTALL_BINDIR}/Logic COMPONENT program)
if(TARGET VirtualScanner)
  install(TARGETS VirtualScanner
    LIBRARY DESTINATION ${CMAKE_INSTALL_BINDIR}/Device COMPONENT program)
endif()

if(MINGW)
  list(TRANSFORM CMAKE_FIND_ROOT_PATH APPEND "/bin" OUTPUT_VARIABLE dll_folders)
  install(CODE "
    set(dll_folders \"${dll_folders}\")
    set(objdump \"${CMAKE_OBJDUMP}\")
    set(bindir \"${CMAKE_INSTALL_BINDIR}\")
    include(\"${PROJECT_SOURCE_DIR}/cmake/CollectWindowsDlls.cmake\")"
    COMPONENT program)
endif()

set(CPACK_PACKAGE_NAME KvSync)
set(CPACK_PACKAGE_VENDOR KvSync)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${PROJECT_DESCRIPTION}")
set(CPACK_GENERATOR ZIP)
set(CPACK_COMPONENTS_ALL program)
set(CPACK_ARCHIVE_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_GROUPING ALL_COMPONENTS_IN_ONE)
include(CPack)
