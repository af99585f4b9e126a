#include "LibraryBytes.h"

#include <QtCore/QBuffer>
#include <QtCore/QCoreApplication>
#include <QtCore/QList>
#include <gtest/gtest.h>

#include <utility>
#include <vector>

namespace KvSyncTest {

namespace {

constexpr int dynamicEntrySize = 16;

quint64 append(QByteArray &texts, const QByteArray &text)
{
    const auto index = static_cast<quint64>(texts.size());
    texts += text + '\0';
    return index;
}

QByteArray elfHeader()
{
    QByteArray header(dynamicSection, '\0');
    header.replace(0, 7, QByteArray("\177ELF\2\1\1", 7));
    put<quint16>(header, 16, 3);
    put<quint16>(header, 18, 62);
    put<quint64>(header, 32, segments);
    put<quint16>(header, 54, 56);
    put<quint16>(header, 56, 2);
    put<quint32>(header, segments, 1);
    put<quint64>(header, segments + 16, 0x1000);
    put<quint32>(header, segments + 56, 2);
    put<quint64>(header, segments + 56 + 8, dynamicSection);
    return header;
}

} // namespace

KvSyncCli::LibraryFile read(QByteArray bytes)
{
    QBuffer buffer(&bytes);
    EXPECT_TRUE(buffer.open(QIODevice::ReadOnly));
    return KvSyncCli::readLibraryFile(buffer);
}

QByteArray elfNeeding(const QList<QByteArray> &needed, const QByteArray &searchPath,
                      quint64 searchTag)
{
    QByteArray texts(1, '\0');
    std::vector<std::pair<quint64, quint64>> entries;
    for (const QByteArray &name : needed)
        entries.emplace_back(1, append(texts, name));
    const quint64 search = append(texts, searchPath);
    const int size = (needed.size() + 4) * dynamicEntrySize;
    entries.insert(
        entries.end(),
        {{5, 0x1000 + dynamicSection + size}, {10, texts.size()}, {searchTag, search}, {0, 0}});
    QByteArray dynamic(size, '\0');
    for (int i = 0; i < needed.size() + 4; ++i) {
        put<quint64>(dynamic, i * dynamicEntrySize, entries.at(static_cast<std::size_t>(i)).first);
        put<quint64>(dynamic, i * dynamicEntrySize + 8,
                     entries.at(static_cast<std::size_t>(i)).second);
    }
    QByteArray file = elfHeader() + dynamic + texts;
    put<quint64>(file, segments + 32, static_cast<quint64>(file.size()));
    put<quint64>(file, segments + 56 + 32, static_cast<quint64>(size));
    return file;
}

QByteArray elf()
{
    return elfNeeding({"libA.so.", "libB.so"}, "/one:/two");
}

QByteArray pe()
{
    QByteArray file(480, '\0');
    file.replace(0, 2, "MZ");
    put<quint32>(file, 60, peHeader);
    file.replace(peHeader, 2, "PE");
    put<quint16>(file, peHeader + 4, 0x8664);
    put<quint16>(file, peHeader + 6, 1);
    put<quint16>(file, peHeader + 20, 240);
    put<quint16>(file, peHeader + 22, 0x2000);
    put<quint16>(file, optionalHeader, 0x20b);
    put<quint32>(file, optionalHeader + 108, 16);
    put<quint32>(file, optionalHeader + 120, 0x1000 + imports);
    put<quint32>(file, sectionHeader + 12, 0x1000 + imports);
    put<quint32>(file, sectionHeader + 16, 80);
    put<quint32>(file, sectionHeader + 20, imports);
    put<quint32>(file, imports + 12, 0x1000 + imports + 60);
    file.replace(imports + 60, 8, "Qt5X.dll");
    return file;
}

QString realLibraryPath()
{
    // Test programs stand in tests/<program>/: the build tree may be moved.
    return QCoreApplication::applicationDirPath() +
           QStringLiteral("/../fixtures/plugins/absent/" KVSYNC_REAL_LIBRARY);
}

} // namespace KvSyncTest
