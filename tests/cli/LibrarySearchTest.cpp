// Where the needed libraries are found: over small libraries in folders of a test's own.

#include "LibrarySearch.h"
#include "LibraryBytes.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QLibrary>
#include <QtCore/QTemporaryDir>

#include <gtest/gtest.h>

#include <sys/stat.h>

using namespace KvSyncCli;
using namespace KvSyncTest;

namespace {

class LibrarySearch : public ::testing::Test
{
protected:
    LibrarySearch() { EXPECT_TRUE(folder.isValid()); }

    QString path(const char *name) const { return folder.filePath(QString::fromUtf8(name)); }

    /// A file below the test's folder.
    void add(const char *name, const QByteArray &content)
    {
        EXPECT_TRUE(QDir().mkpath(QFileInfo(path(name)).path()));
        QFile file(path(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        EXPECT_EQ(file.write(content), content.size());
    }

    /// What the added file needs, in the order of the search: name, who needs it, where it is; all
    /// below the test's folder.
    std::string neededBy(const char *name) const
    {
        std::string result;
        for (const NeededLibrary &each : findNeededLibraries(path(name), libraryFileAt(path(name))))
            result += each.name.toStdString() + " for " + below(each.neededBy) + " in " +
                      (each.isMissing() ? "nothing" : below(each.path)) + "\n";
        return result;
    }

private:
    std::string below(QString file) const
    {
        return file.remove(folder.path() + QLatin1Char('/')).toStdString();
    }

    QTemporaryDir folder;
};

QByteArray leaf()
{
    return elfNeeding({}, "");
}

class LibraryPath
{
public:
    explicit LibraryPath(const QString &folders)
        : old(qgetenv("LD_LIBRARY_PATH"))
    {
        qputenv("LD_LIBRARY_PATH", QFile::encodeName(folders));
    }
    ~LibraryPath() { qputenv("LD_LIBRARY_PATH", old); }
    Q_DISABLE_COPY(LibraryPath)

private:
    const QByteArray old;
};

} // namespace

TEST_F(LibrarySearch, LibraryThatStandsNowhereIsMissing)
{
    add("top", elfNeeding({"libKvA.so"}, ""));
    EXPECT_EQ(neededBy("top"), "libKvA.so for top in nothing\n");
}

TEST_F(LibrarySearch, OriginIsTheFolderOfTheFileInBothSpellings)
{
    for (const QByteArray origin : {"$ORIGIN", "${ORIGIN}"}) {
        add("top", elfNeeding({"libKvA.so"}, "/nowhere:" + origin + "/sub"));
        add("sub/libKvA.so", leaf());
        EXPECT_EQ(neededBy("top"), "libKvA.so for top in sub/libKvA.so\n");
    }
}

TEST_F(LibrarySearch, LibraryOfALibraryMayBeMissing)
{
    add("top", elfNeeding({"libKvA.so"}, "$ORIGIN"));
    add("libKvA.so", elfNeeding({"libKvB.so"}, "$ORIGIN"));
    EXPECT_EQ(neededBy("top"), "libKvA.so for top in libKvA.so\n"
                               "libKvB.so for libKvA.so in nothing\n");
}

TEST_F(LibrarySearch, RunpathHoldsForTheFileAlone)
{
    add("top", elfNeeding({"libKvA.so"}, "$ORIGIN", runpathTag));
    add("libKvA.so", elfNeeding({"libKvB.so"}, "", rpathTag));
    add("libKvB.so", leaf());
    EXPECT_EQ(neededBy("top"), "libKvA.so for top in libKvA.so\n"
                               "libKvB.so for libKvA.so in nothing\n");
}

TEST_F(LibrarySearch, RpathHoldsForTheNeededLibrariesToo)
{
    add("top", elfNeeding({"libKvA.so"}, "$ORIGIN", rpathTag));
    add("libKvA.so", elfNeeding({"libKvB.so"}, "", rpathTag));
    add("libKvB.so", leaf());
    EXPECT_EQ(neededBy("top"), "libKvA.so for top in libKvA.so\n"
                               "libKvB.so for libKvA.so in libKvB.so\n");
}

TEST_F(LibrarySearch, RunpathOfALibraryOutweighsTheRpathAboveIt)
{
    add("top", elfNeeding({"libKvA.so"}, "$ORIGIN", rpathTag));
    add("libKvA.so", elfNeeding({"libKvB.so"}, "$ORIGIN/other", runpathTag));
    add("libKvB.so", leaf());
    EXPECT_EQ(neededBy("top"), "libKvA.so for top in libKvA.so\n"
                               "libKvB.so for libKvA.so in nothing\n");
}

TEST_F(LibrarySearch, RpathHoldsPastALibraryWithARunpath)
{
    add("top", elfNeeding({"libKvA.so"}, "$ORIGIN", rpathTag));
    add("libKvA.so", elfNeeding({"libKvB.so"}, "$ORIGIN/other", runpathTag));
    add("other/libKvB.so", elfNeeding({"libKvC.so"}, "", rpathTag));
    add("libKvC.so", leaf());
    EXPECT_EQ(neededBy("top"), "libKvA.so for top in libKvA.so\n"
                               "libKvB.so for libKvA.so in other/libKvB.so\n"
                               "libKvC.so for other/libKvB.so in libKvC.so\n");
}

TEST_F(LibrarySearch, LibrariesThatNeedEachOtherComeOnce)
{
    add("top", elfNeeding({"libKvA.so", "libKvB.so"}, "$ORIGIN"));
    add("libKvA.so", elfNeeding({"libKvB.so", "libKvA.so"}, "$ORIGIN"));
    add("libKvB.so", elfNeeding({"libKvA.so"}, "$ORIGIN"));
    EXPECT_EQ(neededBy("top"), "libKvA.so for top in libKvA.so\n"
                               "libKvB.so for top in libKvB.so\n");
}

TEST_F(LibrarySearch, EndsWithMoreLibrariesThanCanBeTrue)
{
    QList<QByteArray> libraries;
    for (int i = 0; i < 5; ++i) {
        QList<QByteArray> names;
        for (int j = 0; j < 1000; ++j)
            names.append("none/" + QByteArray::number(i * 1000 + j));
        libraries.append("libKv" + QByteArray::number(i) + ".so");
        add(libraries.back().constData(), elfNeeding(names, ""));
    }
    add("top", elfNeeding(libraries, "$ORIGIN"));
    EXPECT_EQ(findNeededLibraries(path("top"), libraryFileAt(path("top"))).size(), 4096u);
}

TEST_F(LibrarySearch, FilesThatThisProcessCannotLoadArePassedOver)
{
    add("top", elfNeeding({"libKvA.so"}, "$ORIGIN/1:$ORIGIN/2:$ORIGIN/3:$ORIGIN/4:$ORIGIN/5"));
    add("1/libKvA.so", with<quint16>(leaf(), 18, 183));
    add("2/libKvA.so", leaf().left(100));
    add("3/libKvA.so/file", "");
    ASSERT_TRUE(QDir().mkpath(path("4")));
    ASSERT_EQ(mkfifo(QFile::encodeName(path("4/libKvA.so")).constData(), 0600), 0);
    add("5/libKvA.so", leaf());
    EXPECT_EQ(neededBy("top"), "libKvA.so for top in 5/libKvA.so\n");
}

TEST_F(LibrarySearch, EnvironmentSeparatesItsFoldersInTwoWays)
{
    add("top", elfNeeding({"libKvA.so", "libKvB.so"}, ""));
    add("one/libKvA.so", leaf());
    add("two/libKvB.so", leaf());
    const LibraryPath set(path("nowhere") + QLatin1Char(':') + path("one") + QLatin1Char(';') +
                          path("two"));
    EXPECT_EQ(neededBy("top"), "libKvA.so for top in one/libKvA.so\n"
                               "libKvB.so for top in two/libKvB.so\n");
}

TEST_F(LibrarySearch, NameWithAFolderIsAPath)
{
    add("sub/libKvA.so", leaf());
    add("top", elfNeeding({QFile::encodeName(path("sub/libKvA.so")), "sub/libKvB.so"}, "$ORIGIN"));
    add("sub/libKvB.so", leaf());
    const QString full = path("sub/libKvA.so");
    EXPECT_EQ(neededBy("top"), full.toStdString() + " for top in sub/libKvA.so\n"
                                                    "sub/libKvB.so for top in nothing\n");
}

TEST_F(LibrarySearch, LoadedLibraryCountsAsComplete)
{
    add("top", elfNeeding({"libQt5Core.so.5"}, ""));
    const auto needed = findNeededLibraries(path("top"), libraryFileAt(path("top")));
    ASSERT_EQ(needed.size(), 1u);
    EXPECT_EQ(QFileInfo(needed.front().path).fileName().toStdString(), "libQt5Core.so.5");
    EXPECT_TRUE(QFileInfo::exists(needed.front().path));
}

TEST_F(LibrarySearch, LoadedLibraryIsFoundWhereverItStands)
{
    const QFileInfo real(realLibraryPath());
    EXPECT_EQ(findLibrary(real.fileName(), {}), QString());
    QLibrary library(real.filePath());
    ASSERT_TRUE(library.load()) << library.errorString().toStdString();
    EXPECT_EQ(QFileInfo(findLibrary(real.fileName(), {})), real);
    library.unload();
}

TEST_F(LibrarySearch, SystemsLibrariesAreFoundWithoutAPath)
{
    ASSERT_FALSE(isLoadedLibrary(QStringLiteral("libresolv.so.2")));
    add("top", elfNeeding({"libresolv.so.2"}, ""));
    const auto needed = findNeededLibraries(path("top"), libraryFileAt(path("top")));
    ASSERT_FALSE(needed.empty());
    EXPECT_TRUE(QFileInfo::exists(needed.front().path)) << needed.front().path.toStdString();
    EXPECT_FALSE(isLoadedLibrary(QStringLiteral("libresolv.so.2")));
}
