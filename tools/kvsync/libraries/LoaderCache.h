#ifndef KVSYNC_LOADERCACHE_H
#define KVSYNC_LOADERCACHE_H

#include <QtCore/QStringList>

class QIODevice;

namespace KvSyncCli {

/// The paths that the loader's cache (/etc/ld.so.cache) gives for a library, in its order. A cache
/// that cannot be read gives none.
QStringList cachedPaths(QIODevice &cache, const QString &libraryName);

} // namespace KvSyncCli

#endif
