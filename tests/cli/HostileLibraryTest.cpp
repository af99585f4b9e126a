// The readers of library files over bytes that lie: whatever they are, reading ends in a result
// that stays within bounds, or in the one failure that is meant for it.

#include "BoundedReader.h"
#include "LibraryBytes.h"
#include "LibraryFile.h"

#include <QtCore/QFile>

#include <gtest/gtest.h>

#include <random>

using namespace KvSyncCli;
using namespace KvSyncTest;

namespace {

/// Whether there was a result.
bool survives(const QByteArray &bytes)
{
    try {
        EXPECT_LE(read(bytes).needed.size(), 1024);
        return true;
    } catch (const MalformedFile &damage) {
        EXPECT_STRNE(damage.what(), "");
        return false;
    }
}

// As the linker made it: an ELF file on Linux, a PE file on Windows.
QByteArray realLibrary()
{
    QFile file(realLibraryPath());
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << file.fileName().toStdString();
    return file.readAll();
}

struct LibraryRow
{
    const char *name;
    QByteArray (*make)();
};

void PrintTo(const LibraryRow &row, std::ostream *stream)
{
    *stream << row.name;
}

class HostileLibrary : public ::testing::TestWithParam<LibraryRow>
{
protected:
    const QByteArray whole = GetParam().make();
};

} // namespace

TEST_P(HostileLibrary, IsSoundBeforeAnythingIsDoneToIt)
{
    EXPECT_GE(read(whole).needed.size(), 1);
}

TEST_P(HostileLibrary, MayBeCutOffAnywhere)
{
    const QStringList needed = read(whole).needed;
    int damaged = 0;
    for (int size = 0; size < whole.size(); ++size) {
        const QByteArray cut = QByteArray::fromRawData(whole.constData(), size);
        if (!survives(cut)) {
            ++damaged;
        } else if (size >= 4) {
            EXPECT_EQ(read(cut).needed, needed) << size;
        }
    }
    EXPECT_GT(damaged, 64);
}

TEST_P(HostileLibrary, MayLieInEveryByte)
{
    QByteArray changed = whole;
    for (int at = 0; at < whole.size(); ++at) {
        for (const int value : {0x00, 0x01, 0x7f, 0x80, 0xff}) {
            changed[at] = static_cast<char>(value);
            survives(changed);
        }
        changed[at] = whole.at(at);
    }
}

TEST_P(HostileLibrary, MayLieInManyBitsAtOnce)
{
    constexpr int rounds = 20000;
    constexpr unsigned int headers = 1024;
    std::mt19937 random(20200424);
    const auto below = [&random](unsigned int end) { return static_cast<int>(random() % end); };
    const auto size = static_cast<unsigned int>(whole.size());
    int damaged = 0;
    for (int round = 0; round < rounds; ++round) {
        QByteArray changed = whole;
        // Every other round hits the headers, where most of the numbers stand.
        const unsigned int end = round % 2 == 0 ? qMin(size, headers) : size;
        for (int flips = 1 + below(16); flips > 0; --flips) {
            const int at = below(end);
            changed[at] = static_cast<char>(changed.at(at) ^ (1 << below(8)));
        }
        if (!survives(changed))
            ++damaged;
    }
    EXPECT_GT(damaged, 0);
    EXPECT_LT(damaged, rounds);
}

INSTANTIATE_TEST_SUITE_P(Libraries, HostileLibrary,
                         ::testing::Values(LibraryRow{"Elf", elf}, LibraryRow{"Pe", pe},
                                           LibraryRow{"Real", realLibrary}),
                         [](const auto &row) { return std::string(row.param.name); });
