# The SDK: headers, libraries and the package KvSyncCore, for hosts and plug-in authors.

include(CMakePackageConfigHelpers)

set(package_dir "${CMAKE_INSTALL_LIBDIR}/cmake/KvSyncCore")
set(exported_targets KvSyncTool DeviceContract CommandContract KvSyncCore)
if(NOT KVSYNC_TESSEL3SYNC_ROOT)
  list(APPEND exported_targets Tessel3Sync)
endif()

install(TARGETS ${exported_targets} EXPORT KvSyncCoreTargets
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
  INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(EXPORT KvSyncCoreTargets NAMESPACE KvSync:: DESTINATION "${package_dir}")

install(DIRECTORY "${PROJECT_SOURCE_DIR}/include/" DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
  FILES_MATCHING PATTERN "*.h")

configure_package_config_file(
  "${PROJECT_SOURCE_DIR}/cmake/KvSyncCoreConfig.cmake.in"
  "${PROJECT_BINARY_DIR}/KvSyncCoreConfig.cmake"
  INSTALL_DESTINATION "${package_dir}")
write_basic_package_version_file("${PROJECT_BINARY_DIR}/KvSyncCoreConfigVersion.cmake"
  COMPATIBILITY SameMajorVersion)
install(FILES
  "${PROJECT_BINARY_DIR}/KvSyncCoreConfig.cmake"
  "${PROJECT_BINARY_DIR}/KvSyncCoreConfigVersion.cmake"
  "${PROJECT_SOURCE_DIR}/cmake/KvSyncPlugins.cmake"
  DESTINATION "${package_dir}")
