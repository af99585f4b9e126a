#include "BoundedReader.h"

#include <QtCore/QIODevice>

namespace KvSyncCli {

namespace {

constexpr quint64 largestPiece = quint64(4) * 1024 * 1024;
constexpr int longestText = 4096;

} // namespace

QByteArray BoundedReader::bytes(quint64 offset, quint64 size) const
{
    const auto end = static_cast<quint64>(file.size());
    if (offset > end || size > end - offset)
        throw MalformedFile("it is cut off, or points outside itself");
    if (size > largestPiece)
        throw MalformedFile("one of its tables is larger than can be true");
    if (!file.seek(static_cast<qint64>(offset)))
        throw MalformedFile("it cannot be read");
    QByteArray piece = file.read(static_cast<qint64>(size));
    if (static_cast<quint64>(piece.size()) != size)
        throw MalformedFile("it cannot be read");
    return piece;
}

QByteArray BoundedReader::text(quint64 offset) const
{
    const auto end = static_cast<quint64>(file.size());
    if (offset >= end)
        throw MalformedFile("it is cut off, or points outside itself");
    const QByteArray piece = bytes(offset, qMin<quint64>(longestText, end - offset));
    const int length = piece.indexOf('\0');
    if (length < 0)
        throw MalformedFile("one of its texts has no end");
    return piece.left(length);
}

} // namespace KvSyncCli
