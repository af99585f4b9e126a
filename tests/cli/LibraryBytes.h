#ifndef KVSYNC_TESTS_CLI_LIBRARYBYTES_H
#define KVSYNC_TESTS_CLI_LIBRARYBYTES_H

#include "LibraryFile.h"

#include <QtCore/QByteArray>
#include <QtCore/QtEndian>

namespace KvSyncTest {

KvSyncCli::LibraryFile read(QByteArray bytes);

template <typename Number>
void put(QByteArray &bytes, int offset, Number value)
{
    qToLittleEndian(value, bytes.data() + offset);
}

template <typename Number>
QByteArray with(QByteArray bytes, int offset, Number value)
{
    put<Number>(bytes, offset, value);
    return bytes;
}

// Of an ELF file: two program headers, the dynamic section, the string table; addresses lie 0x1000
// above offsets.
constexpr int segments = 64;
constexpr int dynamicSection = 176;

constexpr quint64 rpathTag = 15;
constexpr quint64 runpathTag = 29;

/// The smallest library for this process that needs these. Its dynamic section: the needed ones,
/// the string table's place and size, the search path.
QByteArray elfNeeding(const QList<QByteArray> &needed, const QByteArray &searchPath,
                      quint64 searchTag = runpathTag);

/// One that needs libA.so. and libB.so and searches /one and /two: six dynamic entries.
QByteArray elf();

// Of a PE file: one section that holds the import table with one library; addresses lie 0x1000
// above offsets.
constexpr int peHeader = 64;
constexpr int optionalHeader = peHeader + 24;
constexpr int sectionHeader = optionalHeader + 240;
constexpr int imports = 400;

/// One that needs Qt5X.dll.
QByteArray pe();

/// One that the linker made; this program does not load it.
QString realLibraryPath();

} // namespace KvSyncTest

#endif
