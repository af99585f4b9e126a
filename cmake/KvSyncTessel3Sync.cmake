# KvSync::Tessel3Sync: the maker's closed library where KVSYNC_TESSEL3SYNC_ROOT names it, else the
# simulator that stands behind the same declarations.

if(KVSYNC_TESSEL3SYNC_ROOT)
  find_library(KVSYNC_TESSEL3SYNC_LIBRARY Tessel3Sync REQUIRED NO_DEFAULT_PATH
    PATHS "${KVSYNC_TESSEL3SYNC_ROOT}/lib" NO_CMAKE_FIND_ROOT_PATH)
  add_library(Tessel3Sync UNKNOWN IMPORTED GLOBAL)
  set_target_properties(Tessel3Sync PROPERTIES
    IMPORTED_LOCATION "${KVSYNC_TESSEL3SYNC_LIBRARY}")
  target_include_directories(Tessel3Sync INTERFACE "${CMAKE_CURRENT_SOURCE_DIR}/include")
  add_library(KvSync::Tessel3Sync ALIAS Tessel3Sync)
else()
  add_subdirectory(simulator/Tessel3Sync)
endif()
