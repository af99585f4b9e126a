#include "LibrarySearch.h"

#include <QtCore/QFileInfo>
#include <QtCore/QSet>

#include <deque>

namespace KvSyncCli {

namespace {

constexpr int mostLibraries = 4096;

struct Waiting
{
    QString filePath;
    LibraryFile file;
    QStringList rpathsAbove; ///< of those for whose sake it is loaded, the nearest first
};

QString nameKey(const QString &name)
{
#if defined(Q_OS_WIN)
    return name.toLower();
#else
    return name;
#endif
}

// A library with a RUNPATH of its own heeds nobody's RPATH, but does not void it for what it needs.
SearchFolders foldersFor(const Waiting &library, const QStringList &rpaths)
{
    return {library.file.hasRunpath ? QStringList() : rpaths,
            expandedFolders(library.file.runpath, library.filePath)};
}

} // namespace

QStringList expandedFolders(const QStringList &folders, const QString &filePath)
{
    const QString origin = QFileInfo(filePath).absolutePath();
    QStringList result = folders;
    result.replaceInStrings(QStringLiteral("${ORIGIN}"), origin);
    return result.replaceInStrings(QStringLiteral("$ORIGIN"), origin);
}

std::vector<NeededLibrary> findNeededLibraries(const QString &filePath, const LibraryFile &file)
{
    std::vector<NeededLibrary> found;
    QSet<QString> seen;
    std::deque<Waiting> waiting{{filePath, file, foldersOfThisProcess()}};
    for (; !waiting.empty(); waiting.pop_front()) {
        const Waiting &current = waiting.front();
        const QStringList rpaths =
            expandedFolders(current.file.rpath, current.filePath) + current.rpathsAbove;
        const SearchFolders folders = foldersFor(current, rpaths);
        for (const QString &name : current.file.needed) {
            if (seen.contains(nameKey(name)) || found.size() >= mostLibraries)
                continue;
            seen.insert(nameKey(name));
            const QString path = findLibrary(name, folders);
            found.push_back({name, current.filePath, path});
            if (!path.isEmpty() && !isLoadedLibrary(name))
                waiting.push_back({path, libraryFileAt(path), rpaths});
        }
    }
    return found;
}

} // namespace KvSyncCli
