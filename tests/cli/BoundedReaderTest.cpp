// The reader of files whose every number may be a lie, and the loader's cache, which it reads.

#include "BoundedReader.h"
#include "LibraryBytes.h"
#include "LoaderCache.h"

#include <QtCore/QBuffer>
#include <QtCore/QStringList>

#include <gtest/gtest.h>

using namespace KvSyncCli;
using namespace KvSyncTest;

namespace {

/// A file that shrinks, or whose disk fails, after its size was asked.
class FailingFile : public QBuffer
{
public:
    enum Fault { Seek, Read, ShortRead };

    explicit FailingFile(Fault chosen)
        : fault(chosen)
    {
        setData("12345678");
        EXPECT_TRUE(open(QIODevice::ReadOnly | QIODevice::Unbuffered));
    }

    bool seek(qint64 position) override { return fault != Seek && QBuffer::seek(position); }

protected:
    qint64 readData(char *data, qint64 size) override
    {
        return fault == Read ? -1 : QBuffer::readData(data, fault == ShortRead ? 3 : size);
    }

private:
    const Fault fault;
};

std::string failureOf(FailingFile::Fault fault)
{
    FailingFile file(fault);
    try {
        BoundedReader(file).bytes(0, 8);
    } catch (const MalformedFile &damage) {
        return damage.what();
    }
    return "none";
}

QByteArray cacheOf(const QList<QPair<QByteArray, QByteArray>> &libraries)
{
    const int textsAt = 48 + libraries.size() * 24;
    QByteArray cache = QByteArray("glibc-ld.so.cache1.1").leftJustified(textsAt, '\0');
    put<quint32>(cache, 20, static_cast<quint32>(libraries.size()));
    for (int i = 0; i < libraries.size(); ++i) {
        put<quint32>(cache, 48 + i * 24 + 4, static_cast<quint32>(cache.size()));
        cache += libraries.at(i).first + '\0';
        put<quint32>(cache, 48 + i * 24 + 8, static_cast<quint32>(cache.size()));
        cache += libraries.at(i).second + '\0';
    }
    return cache;
}

QStringList pathsIn(QByteArray cache, const char *name)
{
    QBuffer buffer(&cache);
    EXPECT_TRUE(buffer.open(QIODevice::ReadOnly));
    return cachedPaths(buffer, QString::fromLatin1(name));
}

const QList<QPair<QByteArray, QByteArray>> libraries = {
    {"libA.s", "/x/libA.s"}, {"libB.s", "/x/libB.s"}, {"libA.s", "/y/libA.s"}};

} // namespace

TEST(BoundedReader, FileThatShrinksOrFailsIsReported)
{
    EXPECT_EQ(failureOf(FailingFile::Seek), "it cannot be read");
    EXPECT_EQ(failureOf(FailingFile::Read), "it cannot be read");
    EXPECT_EQ(failureOf(FailingFile::ShortRead), "it cannot be read");
}

TEST(BoundedReader, PieceMayEndWithTheFile)
{
    QByteArray content("123\0", 4);
    QBuffer file(&content);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const BoundedReader reader(file);
    EXPECT_EQ(reader.bytes(2, 2), QByteArray("3\0", 2));
    EXPECT_EQ(reader.bytes(4, 0), QByteArray());
    EXPECT_EQ(reader.text(1), QByteArray("23"));
    EXPECT_EQ(reader.text(3), QByteArray());
    EXPECT_THROW(reader.bytes(2, 3), MalformedFile);
    EXPECT_THROW(reader.bytes(5, 0), MalformedFile);
    EXPECT_THROW(reader.text(4), MalformedFile);
}

TEST(BoundedReader, NumberLiesWithinItsPiece)
{
    const QByteArray piece("\1\2\3\4", 4);
    EXPECT_EQ(numberAt<quint16>(piece, 2), 0x0403);
    EXPECT_THROW(numberAt<quint16>(piece, 3), MalformedFile);
    EXPECT_THROW(numberAt<quint16>(piece, -1), MalformedFile);
}

TEST(LoaderCache, GivesThePathsOfALibraryInTheCachesOrder)
{
    EXPECT_EQ(pathsIn(cacheOf(libraries), "libA.s"),
              QStringList({QStringLiteral("/x/libA.s"), QStringLiteral("/y/libA.s")}));
    EXPECT_EQ(pathsIn(cacheOf(libraries), "libC.s"), QStringList());
}

TEST(LoaderCache, GivesNothingWhenItIsDamaged)
{
    EXPECT_EQ(pathsIn(with<quint32>(cacheOf(libraries), 20, 0xffffffff), "libA.s"), QStringList());
    EXPECT_EQ(pathsIn(with<quint32>(cacheOf(libraries), 48 + 8, 0xffffffff), "libA.s"),
              QStringList());
    EXPECT_EQ(pathsIn(cacheOf(libraries).left(40), "libA.s"), QStringList());
}

TEST(LoaderCache, GivesNothingWhenItIsOfAnotherFormat)
{
    EXPECT_EQ(pathsIn(cacheOf(libraries).replace("1.1", "1.2"), "libA.s"), QStringList());
}
