#include "LoaderCache.h"

#include "BoundedReader.h"

#include <QtCore/QIODevice>

namespace KvSyncCli {

namespace {

constexpr char magic[] = "glibc-ld.so.cache1.1";
constexpr int countOffset = sizeof(magic) - 1;
constexpr int headerSize = 48;
constexpr int entrySize = 24;

QStringList search(const BoundedReader &cache, const QByteArray &name)
{
    const QByteArray header = cache.bytes(0, headerSize);
    if (!header.startsWith(magic))
        return {};
    const quint64 count = numberAt<quint32>(header, countOffset);
    const QByteArray entries = cache.bytes(headerSize, count * entrySize);
    QStringList paths;
    for (int at = 0; at < entries.size(); at += entrySize)
        if (cache.text(numberAt<quint32>(entries, at + 4)) == name)
            paths.append(QString::fromLocal8Bit(cache.text(numberAt<quint32>(entries, at + 8))));
    return paths;
}

} // namespace

QStringList cachedPaths(QIODevice &cache, const QString &libraryName)
{
    try {
        return search(BoundedReader(cache), libraryName.toLocal8Bit());
    } catch (const MalformedFile &) {
        return {};
    }
}

} // namespace KvSyncCli
