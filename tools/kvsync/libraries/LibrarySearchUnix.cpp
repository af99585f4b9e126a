#include "LibrarySearch.h"
#include "LoaderCache.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QFile>
#include <QtCore/QRegularExpression>

#include <dlfcn.h>
#include <link.h>

#include <vector>

namespace KvSyncCli {

namespace {

/// A library that the process holds; nothing is loaded for it.
class HeldLibrary
{
public:
    explicit HeldLibrary(const char *name)
        : handle(dlopen(name, RTLD_LAZY | RTLD_NOLOAD))
    {
    }
    ~HeldLibrary()
    {
        if (handle)
            dlclose(handle);
    }
    HeldLibrary(const HeldLibrary &) = delete;
    HeldLibrary &operator=(const HeldLibrary &) = delete;

    /// Empty if the process does not hold it.
    QString path() const
    {
        link_map *map = nullptr;
        if (!handle || dlinfo(handle, RTLD_DI_LINKMAP, &map) != 0)
            return {};
        return QFile::decodeName(map->l_name);
    }

    /// Where the loader searches on behalf of this library.
    QStringList searchFolders() const
    {
        Dl_serinfo header;
        if (!handle || dlinfo(handle, RTLD_DI_SERINFOSIZE, &header) != 0)
            return {};
        std::vector<char> buffer(header.dls_size);
        auto *const list = reinterpret_cast<Dl_serinfo *>(buffer.data());
        *list = header;
        if (dlinfo(handle, RTLD_DI_SERINFO, list) != 0)
            return {};
        QStringList folders;
        for (unsigned int i = 0; i < list->dls_cnt; ++i)
            folders.append(QFile::decodeName(list->dls_serpath[i].dls_name));
        return folders;
    }

private:
    void *const handle;
};

QString loadedPath(const QString &name)
{
    return HeldLibrary(QFile::encodeName(name).constData()).path();
}

/// The library that calls the loader for plug-ins.
QString qtCorePath()
{
    Dl_info info;
    const bool known =
        dladdr(reinterpret_cast<const void *>(&QCoreApplication::applicationFilePath), &info) != 0;
    return known ? QFile::decodeName(info.dli_fname) : QString();
}

// Nothing between two separators is the working folder.
QStringList environmentFolders()
{
    const QString list = QFile::decodeName(qgetenv("LD_LIBRARY_PATH"));
    QStringList folders =
        list.isEmpty() ? QStringList() : list.split(QRegularExpression(QStringLiteral("[:;]")));
    for (QString &folder : folders)
        if (folder.isEmpty())
            folder = QStringLiteral(".");
    return folders;
}

// The loader tells them itself, for a library that brings no folders of its own. Before them it
// names those of the environment, where a search has been by then.
QStringList standardFolders()
{
    return HeldLibrary("libc.so.6").searchFolders();
}

QStringList filesIn(const QStringList &folders, const QString &name)
{
    QStringList paths;
    for (const QString &folder : folders)
        paths.append(folder + QLatin1Char('/') + name);
    return paths;
}

QStringList candidates(const QString &name, const SearchFolders &folders)
{
    QStringList paths =
        filesIn(folders.beforeEnvironment + environmentFolders() + folders.afterEnvironment, name);
    QFile cache(QStringLiteral("/etc/ld.so.cache"));
    if (cache.open(QIODevice::ReadOnly))
        paths += cachedPaths(cache, name);
    return paths + filesIn(standardFolders(), name);
}

} // namespace

QString findLibrary(const QString &name, const SearchFolders &folders)
{
    QString loaded = loadedPath(name);
    if (!loaded.isEmpty())
        return loaded;
    // A name with a folder in it is a path to the loader, and nothing is looked through.
    const QStringList paths =
        name.contains(QLatin1Char('/')) ? QStringList(name) : candidates(name, folders);
    // The loader passes over files for other machines.
    for (const QString &path : paths)
        if (libraryFileAt(path).isForThisProcess())
            return path;
    return {};
}

QStringList foldersOfThisProcess()
{
    QStringList folders;
    for (const QString &path : {qtCorePath(), QCoreApplication::applicationFilePath()})
        folders += expandedFolders(libraryFileAt(path).rpath, path);
    return folders;
}

bool isLoadedLibrary(const QString &name)
{
    return !loadedPath(name).isEmpty();
}

} // namespace KvSyncCli
