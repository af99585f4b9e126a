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

/// Folders for one search, where the system knows such.
struct SearchFolders
{
    QStringList beforeEnvironment;
    QStringList afterEnvironment;
};

/// The system's part: where the loader of this process finds a library, or an empty text.
QString findLibrary(const QString &name, const SearchFolders &folders);

/// The system's part: what is looked through, before the environment's folders, for every library
/// that this process loads, unless the one that needs it says otherwise.
QStringList foldersOfThisProcess();

/// The paths of a file, with its own folder put in where they say so.
QStringList expandedFolders(const QStringList &folders, const QString &filePath);

/// Whether this process holds the library already.
bool isLoadedLibrary(const QString &name);

} // namespace KvSyncCli

#endif
