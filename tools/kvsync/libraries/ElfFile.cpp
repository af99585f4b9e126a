#include "BoundedReader.h"
#include "Formats.h"

#include <vector>

namespace KvSyncCli {

namespace {

constexpr quint16 sharedObject = 3;
constexpr int programHeaderSize = 56;
constexpr quint32 loadedSegment = 1;
constexpr quint32 dynamicSegment = 2;

constexpr int dynamicEntrySize = 16;
constexpr quint64 endTag = 0;
constexpr quint64 neededTag = 1;
constexpr quint64 stringTableTag = 5;
constexpr quint64 stringTableSizeTag = 10;
constexpr quint64 rpathTag = 15;
constexpr quint64 runpathTag = 29;

struct Segment
{
    quint32 type;
    quint64 offset;
    quint64 address;
    quint64 fileSize;
};

using Segments = std::vector<Segment>;

Segments readSegments(const BoundedReader &reader, const QByteArray &header)
{
    const auto tableOffset = numberAt<quint64>(header, 32);
    const auto entrySize = numberAt<quint16>(header, 54);
    const auto count = numberAt<quint16>(header, 56);
    if (count > 0 && entrySize != programHeaderSize)
        throw MalformedFile("its program headers have a size of their own");
    const QByteArray table = reader.bytes(tableOffset, quint64(count) * programHeaderSize);
    Segments segments;
    for (int at = 0; at < table.size(); at += programHeaderSize)
        segments.push_back({numberAt<quint32>(table, at), numberAt<quint64>(table, at + 8),
                            numberAt<quint64>(table, at + 16), numberAt<quint64>(table, at + 32)});
    return segments;
}

quint64 fileOffset(const Segments &segments, quint64 address)
{
    for (const Segment &segment : segments)
        if (segment.type == loadedSegment && address >= segment.address &&
            address - segment.address < segment.fileSize)
            return segment.offset + (address - segment.address);
    throw MalformedFile("an address lies in none of its segments");
}

/// The dynamic section: what the loader reads first.
struct Dynamic
{
    std::vector<quint64> needed;
    std::vector<quint64> rpaths;
    std::vector<quint64> runpaths;
    quint64 stringTable = 0;
    quint64 stringTableSize = 0;

    void take(quint64 tag, quint64 value)
    {
        if (tag == neededTag)
            needed.push_back(value);
        else if (tag == rpathTag)
            rpaths.push_back(value);
        else if (tag == runpathTag)
            runpaths.push_back(value);
        else if (tag == stringTableTag)
            stringTable = value;
        else if (tag == stringTableSizeTag)
            stringTableSize = value;
    }
};

Dynamic readDynamic(const BoundedReader &reader, const Segment &segment)
{
    const QByteArray table = reader.bytes(segment.offset, segment.fileSize);
    Dynamic dynamic;
    for (int at = 0; at + dynamicEntrySize <= table.size(); at += dynamicEntrySize) {
        const auto tag = numberAt<quint64>(table, at);
        if (tag == endTag)
            break;
        dynamic.take(tag, numberAt<quint64>(table, at + 8));
        if (dynamic.needed.size() > mostNeededLibraries)
            throw MalformedFile("it needs more libraries than can be true");
    }
    return dynamic;
}

class StringTable
{
public:
    StringTable(const BoundedReader &source, const Segments &segments, const Dynamic &dynamic)
        : reader(source)
        , offset(fileOffset(segments, dynamic.stringTable))
        , size(dynamic.stringTableSize)
    {
    }

    QString at(quint64 index) const
    {
        if (index >= size)
            throw MalformedFile("a text lies outside its string table");
        return QString::fromLocal8Bit(reader.text(offset + index));
    }

private:
    const BoundedReader &reader;
    const quint64 offset;
    const quint64 size;
};

// An empty list is none; in a longer one, nothing between two colons is the working folder.
QStringList folders(const QString &list)
{
    QStringList result = list.isEmpty() ? QStringList() : list.split(QLatin1Char(':'));
    for (QString &folder : result)
        if (folder.isEmpty())
            folder = QStringLiteral(".");
    return result;
}

void readLibraries(LibraryFile &file, const Dynamic &dynamic, const StringTable &texts)
{
    for (const quint64 index : dynamic.needed)
        file.needed.append(texts.at(index));
    file.hasRunpath = !dynamic.runpaths.empty();
    for (const quint64 index : dynamic.runpaths)
        file.runpath += folders(texts.at(index));
    if (file.hasRunpath)
        return;
    for (const quint64 index : dynamic.rpaths)
        file.rpath += folders(texts.at(index));
}

} // namespace

LibraryFile readElfFile(const BoundedReader &reader)
{
    const QByteArray identification = reader.bytes(0, 20);
    LibraryFile file;
    file.format = LibraryFormat::Elf;
    file.bits = identification.at(4) == 2 ? 64 : 32;
    file.bigEndian = identification.at(5) == 2;
    const auto machine = numberAt<quint16>(identification, 18);
    file.machine = file.bigEndian ? qbswap(machine) : machine;
    if (file.bits != 64 || file.bigEndian)
        return file;
    if (numberAt<quint16>(identification, 16) != sharedObject)
        throw MalformedFile("it is no shared object");
    const Segments segments = readSegments(reader, reader.bytes(0, 64));
    for (const Segment &segment : segments) {
        if (segment.type != dynamicSegment)
            continue;
        const Dynamic dynamic = readDynamic(reader, segment);
        readLibraries(file, dynamic, StringTable(reader, segments, dynamic));
        return file;
    }
    throw MalformedFile("it has no dynamic section");
}

} // namespace KvSyncCli
