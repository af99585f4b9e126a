// The readers of ELF and PE files, over bytes made up for them.

#include "LibraryFile.h"
#include "BoundedReader.h"
#include "LoaderCache.h"

#include <QtCore/QBuffer>
#include <QtCore/QtEndian>

#include <gtest/gtest.h>

using namespace KvSyncCli;

namespace {

template <typename Number>
void put(QByteArray &bytes, int offset, Number value)
{
    qToLittleEndian(value, bytes.data() + offset);
}

LibraryFile read(QByteArray bytes)
{
    QBuffer buffer(&bytes);
    EXPECT_TRUE(buffer.open(QIODevice::ReadOnly));
    return readLibraryFile(buffer);
}

std::string damageOf(const QByteArray &bytes)
{
    try {
        read(bytes);
    } catch (const MalformedFile &damage) {
        return damage.what();
    }
    return "none";
}

constexpr int segments = 64;
constexpr int dynamicSection = 176;
constexpr int texts = 272;

// Two program headers, five dynamic entries, one string table; addresses lie 0x1000 above offsets.
QByteArray elf()
{
    QByteArray file(320, '\0');
    file.replace(0, 7, QByteArray("\177ELF\2\1\1", 7));
    put<quint16>(file, 16, 3);
    put<quint16>(file, 18, 62);
    put<quint64>(file, 32, segments);
    put<quint16>(file, 54, 56);
    put<quint16>(file, 56, 2);
    put<quint32>(file, segments, 1);
    put<quint64>(file, segments + 16, 0x1000);
    put<quint64>(file, segments + 32, 320);
    put<quint32>(file, segments + 56, 2);
    put<quint64>(file, segments + 56 + 8, dynamicSection);
    put<quint64>(file, segments + 56 + 32, 96);
    const quint64 entries[][2] = {{1, 1}, {1, 10}, {5, 0x1000 + texts}, {10, 48}, {29, 20}, {0, 0}};
    for (int i = 0; i < 6; ++i) {
        put<quint64>(file, dynamicSection + i * 16, entries[i][0]);
        put<quint64>(file, dynamicSection + i * 16 + 8, entries[i][1]);
    }
    file.replace(texts + 1, 9, QByteArray("libA.so.\0", 9));
    file.replace(texts + 10, 8, QByteArray("libB.so\0", 8));
    file.replace(texts + 20, 9, QByteArray("/one:/two", 9));
    return file;
}

constexpr int peHeader = 64;
constexpr int optionalHeader = peHeader + 24;
constexpr int sectionHeader = optionalHeader + 240;
constexpr int imports = 400;

// One section that holds the import table with one library; addresses lie 0x1000 above offsets.
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

template <typename Number>
QByteArray with(QByteArray file, int offset, Number value)
{
    put<Number>(file, offset, value);
    return file;
}

} // namespace

TEST(LibraryFile, ElfNamesNeededLibrariesAndSearchPaths)
{
    const LibraryFile file = read(elf());
    EXPECT_EQ(file.format, LibraryFormat::Elf);
    EXPECT_EQ(file.bits, 64);
    EXPECT_EQ(file.machine, 62);
    EXPECT_EQ(file.needed, QStringList({QStringLiteral("libA.so."), QStringLiteral("libB.so")}));
    EXPECT_EQ(file.searchPaths, QStringList({QStringLiteral("/one"), QStringLiteral("/two")}));
    EXPECT_FALSE(file.searchPathsInherited);
}

TEST(LibraryFile, OlderSearchPathHoldsForNeededLibrariesToo)
{
    const LibraryFile file = read(with<quint64>(elf(), dynamicSection + 64, 15));
    EXPECT_EQ(file.searchPaths.size(), 2);
    EXPECT_TRUE(file.searchPathsInherited);
}

TEST(LibraryFile, PeNamesNeededLibraries)
{
    const LibraryFile file = read(pe());
    EXPECT_EQ(file.format, LibraryFormat::Pe);
    EXPECT_EQ(file.bits, 64);
    EXPECT_EQ(file.machine, 0x8664);
    EXPECT_EQ(file.needed, QStringList(QStringLiteral("Qt5X.dll")));
}

TEST(LibraryFile, OfAnotherMachineIsNotForThisProcess)
{
#if defined(_WIN32)
    EXPECT_TRUE(read(pe()).isForThisProcess());
    EXPECT_FALSE(read(elf()).isForThisProcess());
#else
    EXPECT_TRUE(read(elf()).isForThisProcess());
    EXPECT_FALSE(read(pe()).isForThisProcess());
#endif
    EXPECT_FALSE(read(with<quint16>(elf(), 18, 183)).isForThisProcess());
    EXPECT_FALSE(read(with<quint16>(pe(), peHeader + 4, 0xaa64)).isForThisProcess());
}

TEST(LibraryFile, BigEndianAndNarrowElfAreKnownByTheirHeaders)
{
    QByteArray file = elf();
    file[5] = 2;
    put<quint16>(file, 18, 0x1500);
    EXPECT_TRUE(read(file).bigEndian);
    EXPECT_EQ(read(file).machine, 21);
    file = elf();
    file[4] = 1;
    EXPECT_EQ(read(file).bits, 32);
}

TEST(LibraryFile, EmptyAndTextFilesHaveNoFormat)
{
    for (const QByteArray &bytes : {QByteArray(), QByteArray("M"), QByteArray("some text")})
        EXPECT_EQ(read(bytes).format, LibraryFormat::None);
}

TEST(LibraryFile, CutOffAnywhereIsDamagedOrPoorerButNeverMore)
{
    for (const QByteArray &whole : {elf(), pe()})
        for (int size = 4; size < whole.size(); ++size)
            try {
                EXPECT_LE(read(whole.left(size)).needed.size(), 2);
            } catch (const MalformedFile &damage) {
                EXPECT_STRNE(damage.what(), "");
            }
}

TEST(LibraryFile, EveryByteMayLie)
{
    for (const QByteArray &whole : {elf(), pe()})
        for (int at = 0; at < whole.size(); ++at)
            for (const int value : {0x00, 0x01, 0x7f, 0x80, 0xff}) {
                QByteArray changed = whole;
                changed[at] = static_cast<char>(value);
                try {
                    EXPECT_LE(read(changed).needed.size(), 1025);
                } catch (const MalformedFile &damage) {
                    EXPECT_STRNE(damage.what(), "");
                }
            }
}

struct DamageRow
{
    const char *name;
    QByteArray (*make)();
    const char *text;
};

class DamagedLibrary : public ::testing::TestWithParam<DamageRow>
{
};

TEST_P(DamagedLibrary, IsToldFromASoundOne)
{
    EXPECT_EQ(damageOf(GetParam().make()), GetParam().text);
}

constexpr char outside[] = "it is cut off, or points outside itself";

const DamageRow damages[] = {
    {"ElfSegmentsFarOutside", [] { return with<quint64>(elf(), 32, ~quint64(0)); }, outside},
    {"ElfDynamicSizeOverflows",
     [] { return with<quint64>(elf(), segments + 56 + 32, ~quint64(0) - 8); }, outside},
    {"ElfNoDynamicSection", [] { return with<quint32>(elf(), segments + 56, 7); },
     "it has no dynamic section"},
    {"ElfExecutable", [] { return with<quint16>(elf(), 16, 2); }, "it is no shared object"},
    {"ElfOtherHeaderSize", [] { return with<quint16>(elf(), 54, 1); },
     "its program headers have a size of their own"},
    {"ElfTextOutsideTable", [] { return with<quint64>(elf(), dynamicSection + 8, 48); },
     "a text lies outside its string table"},
    {"ElfTableInNoSegment", [] { return with<quint64>(elf(), dynamicSection + 40, 16); },
     "an address lies in none of its segments"},
    {"PeHeaderOutside", [] { return with<quint32>(pe(), 60, 0xffffffff); }, outside},
    {"PeNoHeader", [] { return with<quint16>(pe(), peHeader, 0); }, "it has no PE header"},
    {"PeProgram", [] { return with<quint16>(pe(), peHeader + 22, 2); }, "it is no DLL"},
    {"PeShortOptionalHeader", [] { return with<quint16>(pe(), peHeader + 20, 8); },
     "a header is cut off"},
    {"PeUnknownKind", [] { return with<quint16>(pe(), optionalHeader, 7); },
     "its optional header is of no known kind"},
    {"PeImportsInNoSection", [] { return with<quint32>(pe(), optionalHeader + 120, 5); },
     "an address lies in none of its sections"},
    {"PeNameWithoutEnd",
     [] {
         QByteArray file = pe();
         file.replace(imports + 60, 20, QByteArray(20, 'x'));
         return file;
     },
     "one of its texts has no end"},
};

INSTANTIATE_TEST_SUITE_P(Damages, DamagedLibrary, ::testing::ValuesIn(damages),
                         [](const auto &row) { return std::string(row.param.name); });

TEST(LibraryFile, ManyNeededLibrariesAreNotBelieved)
{
    QByteArray file = elf();
    QByteArray table(2000 * 16, '\0');
    for (int i = 0; i < 2000; ++i)
        put<quint64>(table, i * 16, 1);
    put<quint64>(file, segments + 56 + 8, static_cast<quint64>(file.size()));
    put<quint64>(file, segments + 56 + 32, static_cast<quint64>(table.size()));
    EXPECT_EQ(damageOf(file + table), "it needs more libraries than can be true");
}

TEST(LoaderCache, GivesThePathsOfALibraryAndNothingWhenItIsDamaged)
{
    QByteArray cache = QByteArray("glibc-ld.so.cache1.1").leftJustified(48 + 24, '\0');
    put<quint32>(cache, 20, 1);
    put<quint32>(cache, 48 + 4, 72);
    put<quint32>(cache, 48 + 8, 79);
    cache += QByteArray("libA.s\0/x/libA.s\0", 17);
    for (const bool damaged : {false, true}) {
        if (damaged)
            put<quint32>(cache, 20, 0xffffffff);
        QBuffer buffer(&cache);
        ASSERT_TRUE(buffer.open(QIODevice::ReadOnly));
        EXPECT_EQ(cachedPaths(buffer, QStringLiteral("libA.s")),
                  damaged ? QStringList() : QStringList(QStringLiteral("/x/libA.s")));
        EXPECT_EQ(cachedPaths(buffer, QStringLiteral("libB.s")), QStringList());
    }
}
