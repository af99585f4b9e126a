#include "BoundedReader.h"
#include "Formats.h"

#include <vector>

namespace KvSyncCli {

namespace {

constexpr quint16 narrowMagic = 0x10b;
constexpr quint16 wideMagic = 0x20b;
constexpr quint16 dllFlag = 0x2000;
constexpr int fileHeaderSize = 24;
constexpr int sectionHeaderSize = 40;
constexpr int importDescriptorSize = 20;

struct Section
{
    quint32 address;
    quint32 fileSize;
    quint32 offset;
};

using Sections = std::vector<Section>;

Sections readSections(const BoundedReader &reader, quint64 offset, quint16 count)
{
    const QByteArray table = reader.bytes(offset, quint64(count) * sectionHeaderSize);
    Sections sections;
    for (int at = 0; at < table.size(); at += sectionHeaderSize)
        sections.push_back({numberAt<quint32>(table, at + 12), numberAt<quint32>(table, at + 16),
                            numberAt<quint32>(table, at + 20)});
    return sections;
}

quint64 fileOffset(const Sections &sections, quint32 address)
{
    for (const Section &section : sections)
        if (address >= section.address && address - section.address < section.fileSize)
            return quint64(section.offset) + (address - section.address);
    throw MalformedFile("an address lies in none of its sections");
}

QStringList readImports(const BoundedReader &reader, const Sections &sections, quint32 table)
{
    QStringList names;
    for (quint64 address = table; names.size() <= mostNeededLibraries;
         address += importDescriptorSize) {
        const QByteArray descriptor =
            reader.bytes(fileOffset(sections, static_cast<quint32>(address)), importDescriptorSize);
        const auto name = numberAt<quint32>(descriptor, 12);
        if (name == 0)
            return names;
        names.append(QString::fromLatin1(reader.text(fileOffset(sections, name))));
    }
    throw MalformedFile("it needs more libraries than can be true");
}

/// Where the import table lies; 0 if there is none. PE32+ has wider numbers before the directories.
quint32 importTable(const QByteArray &optionalHeader)
{
    const auto magic = numberAt<quint16>(optionalHeader, 0);
    if (magic != narrowMagic && magic != wideMagic)
        throw MalformedFile("its optional header is of no known kind");
    const int directories = magic == wideMagic ? 112 : 96;
    constexpr quint32 importDirectory = 1;
    if (numberAt<quint32>(optionalHeader, directories - 4) <= importDirectory)
        return 0;
    return numberAt<quint32>(optionalHeader, directories + 8);
}

} // namespace

LibraryFile readPeFile(const BoundedReader &reader)
{
    const quint64 start = numberAt<quint32>(reader.bytes(0, 64), 60);
    const QByteArray header = reader.bytes(start, fileHeaderSize);
    if (!header.startsWith(QByteArray("PE\0\0", 4)))
        throw MalformedFile("it has no PE header");
    const auto optionalSize = numberAt<quint16>(header, 20);
    const QByteArray optionalHeader = reader.bytes(start + fileHeaderSize, optionalSize);
    LibraryFile file;
    file.format = LibraryFormat::Pe;
    file.machine = numberAt<quint16>(header, 4);
    const quint32 imports = importTable(optionalHeader);
    file.bits = numberAt<quint16>(optionalHeader, 0) == wideMagic ? 64 : 32;
    if (!(numberAt<quint16>(header, 22) & dllFlag))
        throw MalformedFile("it is no DLL");
    const Sections sections =
        readSections(reader, start + fileHeaderSize + optionalSize, numberAt<quint16>(header, 6));
    if (imports != 0)
        file.needed = readImports(reader, sections, imports);
    return file;
}

} // namespace KvSyncCli
