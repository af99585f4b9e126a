#ifndef KVSYNC_FORMATS_H
#define KVSYNC_FORMATS_H

#include "LibraryFile.h"

namespace KvSyncCli {

class BoundedReader;

// Each is called for a file that begins as its format does, and throws MalformedFile.
LibraryFile readElfFile(const BoundedReader &reader);
LibraryFile readPeFile(const BoundedReader &reader);

/// No honest library needs more.
constexpr int mostNeededLibraries = 1024;

} // namespace KvSyncCli

#endif
