#ifndef KVSYNC_BOUNDEDREADER_H
#define KVSYNC_BOUNDEDREADER_H

#include <QtCore/QByteArray>
#include <QtCore/QtEndian>

#include <stdexcept>

class QIODevice;

namespace KvSyncCli {

/// A file that is not what it says it is. what() is a text for people.
class MalformedFile : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

/// Reads pieces of a file whose every number may be a lie. What lies outside the file, and what
/// is larger than any honest file needs, raises MalformedFile before memory is spent on it.
class BoundedReader
{
public:
    /// The device is open, can seek, and outlives the reader.
    explicit BoundedReader(QIODevice &device)
        : file(device)
    {
    }

    QByteArray bytes(quint64 offset, quint64 size) const;

    /// Up to the zero byte that ends it.
    QByteArray text(quint64 offset) const;

private:
    QIODevice &file;
};

/// The little-endian number at an offset of a piece that was read. Offsets are the caller's own
/// constants; a piece that is too short raises MalformedFile nevertheless.
template <typename Number>
Number numberAt(const QByteArray &piece, int offset)
{
    if (offset < 0 || piece.size() - offset < static_cast<int>(sizeof(Number)))
        throw MalformedFile("a header is cut off");
    return qFromLittleEndian<Number>(piece.constData() + offset);
}

} // namespace KvSyncCli

#endif
