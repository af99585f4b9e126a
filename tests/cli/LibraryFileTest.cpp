// The readers of ELF and PE files, over bytes made up for them.

#include "LibraryFile.h"
#include "BoundedReader.h"
#include "LibraryBytes.h"

#include <gtest/gtest.h>

using namespace KvSyncCli;
using namespace KvSyncTest;

namespace {

std::string damageOf(const QByteArray &bytes)
{
    try {
        read(bytes);
    } catch (const MalformedFile &damage) {
        return damage.what();
    }
    return "none";
}

} // namespace

TEST(LibraryFile, ElfNamesNeededLibrariesAndSearchPaths)
{
    const LibraryFile file = read(elf());
    EXPECT_EQ(file.format, LibraryFormat::Elf);
    EXPECT_EQ(file.bits, 64);
    EXPECT_EQ(file.machine, 62);
    EXPECT_EQ(file.needed, QStringList({QStringLiteral("libA.so."), QStringLiteral("libB.so")}));
    EXPECT_EQ(file.runpath, QStringList({QStringLiteral("/one"), QStringLiteral("/two")}));
    EXPECT_EQ(file.rpath, QStringList());
}

TEST(LibraryFile, ElfNamesItsOlderSearchPathsApart)
{
    const LibraryFile file = read(with<quint64>(elf(), dynamicSection + 64, 15));
    EXPECT_EQ(file.rpath, QStringList({QStringLiteral("/one"), QStringLiteral("/two")}));
    EXPECT_EQ(file.runpath, QStringList());
    EXPECT_FALSE(file.hasRunpath);
}

TEST(LibraryFile, NothingBetweenTwoColonsIsTheWorkingFolder)
{
    EXPECT_EQ(read(elfNeeding({}, "/one::/two:")).runpath,
              QStringList({QStringLiteral("/one"), QStringLiteral("."), QStringLiteral("/two"),
                           QStringLiteral(".")}));
    EXPECT_EQ(read(elfNeeding({}, "")).runpath, QStringList());
    EXPECT_TRUE(read(elfNeeding({}, "")).hasRunpath);
}

TEST(LibraryFile, WhatFollowsTheEndOfTheDynamicSectionDoesNotCount)
{
    const LibraryFile file = read(with<quint64>(elf(), dynamicSection + 64, 0));
    EXPECT_EQ(file.needed.size(), 2);
    EXPECT_EQ(file.runpath.size(), 0);
    QByteArray moved = with<quint64>(elf(), dynamicSection, 0);
    EXPECT_EQ(damageOf(moved), "an address lies in none of its segments");
}

TEST(LibraryFile, HalfAnEntryAtTheEndOfTheDynamicSectionDoesNotCount)
{
    EXPECT_EQ(read(with<quint64>(elf(), segments + 56 + 32, 4 * 16 + 8)).needed.size(), 2);
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

TEST(LibraryFile, FormatWidthAndByteOrderMustBeThoseOfThisProcess)
{
    EXPECT_FALSE(read(with<quint16>(pe(), peHeader + 4, 62)).isForThisProcess());
    EXPECT_FALSE(read(with<quint16>(elf(), 18, 0x8664)).isForThisProcess());
    EXPECT_FALSE(read(with<quint8>(elf(), 4, 1)).isForThisProcess());
    EXPECT_FALSE(read(with<quint16>(with<quint8>(elf(), 5, 2), 18, 62 << 8)).isForThisProcess());
    // A narrow optional header whose directories are none.
    const QByteArray narrow = with<quint16>(pe(), optionalHeader, 0x10b);
    EXPECT_EQ(read(narrow).machine, 0x8664);
    EXPECT_FALSE(read(narrow).isForThisProcess());
}

TEST(LibraryFile, BigEndianAndNarrowElfAreKnownByTheirHeaders)
{
    QByteArray file = elf();
    file[5] = 2;
    put<quint16>(file, 18, 0x1500);
    EXPECT_TRUE(read(file).bigEndian);
    EXPECT_EQ(read(file).machine, 21);
    EXPECT_EQ(read(file).needed.size(), 0);
    file = elf();
    file[4] = 1;
    EXPECT_EQ(read(file).bits, 32);
    EXPECT_EQ(read(file).needed.size(), 0);
}

TEST(LibraryFile, EmptyAndTextFilesHaveNoFormat)
{
    for (const QByteArray &bytes : {QByteArray(), QByteArray("M"), QByteArray("some text")})
        EXPECT_EQ(read(bytes).format, LibraryFormat::None);
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

constexpr quint64 elfTextsSize = sizeof("\0libA.so.\0libB.so\0/one:/two");
constexpr quint64 elfSize = dynamicSection + 6 * 16 + elfTextsSize;

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
    {"ElfTextOutsideTable", [] { return with<quint64>(elf(), dynamicSection + 8, elfTextsSize); },
     "a text lies outside its string table"},
    {"ElfTableBeforeItsSegment", [] { return with<quint64>(elf(), dynamicSection + 40, 0xfff); },
     "an address lies in none of its segments"},
    {"ElfTableBeforeAnEndlessSegment",
     [] {
         const QByteArray file = with<quint64>(elf(), segments + 32, ~quint64(0));
         return with<quint64>(file, dynamicSection + 40, 0xff0);
     },
     "an address lies in none of its segments"},
    {"ElfTableBehindItsSegment",
     [] { return with<quint64>(elf(), dynamicSection + 40, 0x1000 + elfSize); },
     "an address lies in none of its segments"},
    {"ElfTableInASegmentOfAnotherKind", [] { return with<quint32>(elf(), segments, 6); },
     "an address lies in none of its segments"},
    {"ElfSegmentBehindTheEnd", [] { return with<quint64>(elf(), segments + 8, quint64(1) << 40); },
     outside},
    {"ElfDynamicBehindTheEnd", [] { return with<quint64>(elf(), segments + 56 + 8, elfSize + 1); },
     outside},
    {"ElfDynamicOneByteTooLong",
     [] { return with<quint64>(elf(), segments + 56 + 32, elfSize - dynamicSection + 1); },
     outside},
    {"ElfHeaderCutOff", [] { return elf().left(63); }, outside},
    {"ElfIdentificationCutOff", [] { return elf().left(19); }, outside},
    {"PeHeaderOutside", [] { return with<quint32>(pe(), 60, 0xffffffff); }, outside},
    {"PeNoHeader", [] { return with<quint16>(pe(), peHeader, 0); }, "it has no PE header"},
    {"PeProgram", [] { return with<quint16>(pe(), peHeader + 22, 2); }, "it is no DLL"},
    {"PeShortOptionalHeader", [] { return with<quint16>(pe(), peHeader + 20, 8); },
     "a header is cut off"},
    {"PeUnknownKind", [] { return with<quint16>(pe(), optionalHeader, 7); },
     "its optional header is of no known kind"},
    {"PeImportsBeforeTheirSection",
     [] { return with<quint32>(pe(), optionalHeader + 120, 0x1000 + imports - 1); },
     "an address lies in none of its sections"},
    {"PeImportsBeforeAnEndlessSection",
     [] {
         const QByteArray file = with<quint32>(pe(), sectionHeader + 16, ~quint32(0));
         return with<quint32>(file, optionalHeader + 120, 0x1000 + imports - 20);
     },
     "an address lies in none of its sections"},
    {"PeImportsBehindTheirSection",
     [] { return with<quint32>(pe(), optionalHeader + 120, 0x1000 + imports + 80); },
     "an address lies in none of its sections"},
    {"PeSectionsBehindTheEnd", [] { return with<quint16>(pe(), peHeader + 6, 4); }, outside},
    {"PeOptionalHeaderBehindTheEnd", [] { return with<quint16>(pe(), peHeader + 20, 393); },
     outside},
    {"PeTextBehindTheEnd",
     [] {
         const QByteArray file = with<quint32>(pe(), sectionHeader + 16, 1000);
         return with<quint32>(file, imports + 12, 0x1000 + 480);
     },
     outside},
    {"PeStubCutOff", [] { return pe().left(63); }, outside},
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
    QList<QByteArray> names;
    while (names.size() < 1024)
        names.append("a");
    EXPECT_EQ(read(elfNeeding(names, "")).needed.size(), 1024);
    names.append("a");
    EXPECT_EQ(damageOf(elfNeeding(names, "")), "it needs more libraries than can be true");
}

TEST(LibraryFile, ManyImportsAreNotBelieved)
{
    for (const int count : {1024, 1025}) {
        QByteArray file = pe() + QByteArray((count + 1) * 20, '\0');
        for (int i = 0; i < count; ++i)
            put<quint32>(file, 480 + i * 20 + 12, 0x1000 + imports + 60);
        put<quint32>(file, optionalHeader + 120, 0x1000 + 480);
        put<quint32>(file, sectionHeader + 16, static_cast<quint32>(file.size() - imports));
        EXPECT_EQ(damageOf(file),
                  count == 1024 ? "none" : "it needs more libraries than can be true");
    }
}

TEST(LibraryFile, LargeTablesAreNotBelieved)
{
    constexpr int largest = 4 * 1024 * 1024;
    QByteArray file = elf();
    file += QByteArray(dynamicSection + largest - file.size() + 1, '\0');
    put<quint64>(file, segments + 56 + 32, largest);
    EXPECT_EQ(read(file).needed.size(), 2);
    put<quint64>(file, segments + 56 + 32, largest + 1);
    EXPECT_EQ(damageOf(file), "one of its tables is larger than can be true");
}

TEST(LibraryFile, LongTextsAreNotBelieved)
{
    const QByteArray longest(4095, 'x');
    EXPECT_EQ(read(elfNeeding({longest}, "")).needed, QStringList(QString::fromLatin1(longest)));
    EXPECT_EQ(damageOf(elfNeeding({longest + 'x'}, "")), "one of its texts has no end");
}

TEST(LibraryFile, NarrowPeIsReadToo)
{
    QByteArray file = with<quint16>(pe(), optionalHeader, 0x10b);
    put<quint32>(file, optionalHeader + 108, 0);
    put<quint32>(file, optionalHeader + 120, 0);
    put<quint32>(file, optionalHeader + 92, 2);
    put<quint32>(file, optionalHeader + 104, 0x1000 + imports);
    // Its optional header is shorter, and the sections follow it.
    put<quint16>(file, peHeader + 20, 224);
    file.replace(sectionHeader - 16, 40, file.mid(sectionHeader, 40));
    put<quint32>(file, sectionHeader - 16 + 40, 0);
    EXPECT_EQ(read(file).bits, 32);
    EXPECT_EQ(read(file).needed, QStringList(QStringLiteral("Qt5X.dll")));
}

TEST(LibraryFile, PeMayImportNothing)
{
    EXPECT_EQ(read(with<quint32>(pe(), optionalHeader + 108, 1)).needed.size(), 0);
    EXPECT_EQ(read(with<quint32>(pe(), optionalHeader + 120, 0)).needed.size(), 0);
}

TEST(LibraryFile, WordsForPeopleNameFormatWidthAndMachine)
{
    EXPECT_EQ(read(elf()).kindText(), QStringLiteral("ELF, 64 bits, machine 62"));
    EXPECT_EQ(read(pe()).kindText(), QStringLiteral("PE, 64 bits, machine 34404"));
    EXPECT_EQ(LibraryFile().kindText(), QStringLiteral("neither ELF nor PE"));
}
