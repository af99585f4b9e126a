#include "LibrarySearch.h"
#include "LoaderCache.h"

#include <QtCore/QFile>

#include <dlfcn.h>
#include <link.h>

namespace KvSyncCli {

namespace {

constexpr const char *standardFolders[] = {"/lib64", "/usr/lib64", "/lib", "/usr/lib"};

/// Where the process holds the library, or an empty text. Loads nothing.
QString loadedPath(const QString &name)
{
    void *const handle = dlopen(QFile::encodeName(name).constData(), RTLD_LAZY | RTLD_NOLOAD);
    if (!handle)
        return {};
    link_map *map = nullptr;
    const bool known = dlinfo(handle, RTLD_DI_LINKMAP, &map) == 0;
    QString path = known ? QFile::decodeName(map->l_name) : name;
    dlclose(handle);
    return path;
}

QStringList candidates(const QString &name, const QStringList &searchPaths)
{
    QStringList folders = searchPaths;
    folders +=
        QFile::decodeName(qgetenv("LD_LIBRARY_PATH")).split(QLatin1Char(':'), Qt::SkipEmptyParts);
    QStringList paths;
    for (const QString &folder : qAsConst(folders))
        paths.append(folder + QLatin1Char('/') + name);
    QFile cache(QStringLiteral("/etc/ld.so.cache"));
    if (cache.open(QIODevice::ReadOnly))
        paths += cachedPaths(cache, name);
    for (const char *const folder : standardFolders)
        paths.append(QString::fromLatin1(folder) + QLatin1Char('/') + name);
    return paths;
}

} // namespace

QString findLibrary(const QString &name, const QStringList &searchPaths)
{
    QString loaded = loadedPath(name);
    if (!loaded.isEmpty())
        return loaded;
    // A name with a folder in it is a path to the loader, and nothing is looked through.
    const QStringList paths =
        name.contains(QLatin1Char('/')) ? QStringList(name) : candidates(name, searchPaths);
    // The loader passes over files for other machines.
    for (const QString &path : paths)
        if (libraryFileAt(path).isForThisProcess())
            return path;
    return {};
}

bool isLoadedLibrary(const QString &name)
{
    return !loadedPath(name).isEmpty();
}

} // namespace KvSyncCli
