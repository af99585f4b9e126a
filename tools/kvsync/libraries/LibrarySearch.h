#ifndef KVSYNC_LIBRARYSEARCH_H
#define KVSYNC_LIBRARYSEARCH_H

#include "LibraryFile.h"

#include <vector>

namespace KvSyncCli {

/// One library that a file needs, or that a library needs which it needs.
struct NeededLibrary
{
    QString name;
    QString neededBy; ///< a file's name or path
    QString path;     ///< where the system's loader finds it; empty if it is missing

    bool isMissing() const { return path.isEmpty(); }
};

/// Looks for everything that the file needs, as the system's loader would, without loading
/// anything. A library that this process holds already counts as complete. The file must be for
/// this process.
std::vector<NeededLibrary> findNeededLibraries(const QString &filePath, const LibraryFile &file);

/// The system's part: where the loader of this process finds a library, or an empty text.
/// `searchPaths` are looked through first, where the system knows such.
QString findLibrary(const QString &name, const QStringList &searchPaths);

/// Whether this process holds the library already.
bool isLoadedLibrary(const QString &name);

} // namespace KvSyncCli

#endif
