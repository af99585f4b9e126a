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
    QStringList inheritedPaths;
};

QStringList expanded(const QStringList &paths, const QString &filePath)
{
    const QString origin = QFileInfo(filePath).absolutePath();
    QStringList result = paths;
    result.replaceInStrings(QStringLiteral("${ORIGIN}"), origin);
    return result.replaceInStrings(QStringLiteral("$ORIGIN"), origin);
}

QString nameKey(const QString &name)
{
#if defined(Q_OS_WIN)
    return name.toLower();
#else
    return name;
#endif
}

} // namespace

std::vector<NeededLibrary> findNeededLibraries(const QString &filePath, const LibraryFile &file)
{
    std::vector<NeededLibrary> found;
    QSet<QString> seen;
    std::deque<Waiting> waiting{{filePath, file, {}}};
    for (; !waiting.empty(); waiting.pop_front()) {
        const Waiting &current = waiting.front();
        const QStringList own = expanded(current.file.searchPaths, current.filePath);
        const QStringList inherited =
            current.file.searchPathsInherited ? own + current.inheritedPaths : QStringList();
        const QStringList paths = current.file.searchPathsInherited ? inherited : own;
        for (const QString &name : current.file.needed) {
            if (seen.contains(nameKey(name)) || found.size() >= mostLibraries)
                continue;
            seen.insert(nameKey(name));
            const QString path = findLibrary(name, paths);
            found.push_back({name, current.filePath, path});
            if (!path.isEmpty() && !isLoadedLibrary(name))
                waiting.push_back({path, libraryFileAt(path), inherited});
        }
    }
    return found;
}

} // namespace KvSyncCli
