// loadDevicePlugin: what is chosen, what is loaded, and every way in which it fails.

#include "device/support/DeviceTest.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QFile>

#include <stdexcept>

using namespace KvSyncTest;

namespace {

const QString camera = QStringLiteral("Camera");
const QVersionNumber camera217(2, 1, 7);

class DeviceLoading : public DeviceTest
{
protected:
    /// A fixture that loads, under that file name.
    void put(const QString &fileName) { copyFixture(QStringLiteral("Scripted"), fileName); }

    ErrorCode load(const QString &name, const QVersionNumber &wanted)
    {
        return manager->loadDevicePlugin(name, wanted);
    }

    void expectLoads(const QString &name, const QVersionNumber &wanted, const QString &fileName)
    {
        log.clear();
        EXPECT_EQ(load(name, wanted), Success);
        const QString text = QStringLiteral("load device plugin ") + folder.filePath(fileName);
        EXPECT_EQ(log.lines(), (std::vector{glogInfoLine(text), debugLine(text)}));
    }

    void expectFailure(const QString &name, const QVersionNumber &wanted, ErrorCode code,
                       const std::vector<LogLine> &lines)
    {
        log.clear();
        EXPECT_EQ(load(name, wanted), code);
        EXPECT_EQ(log.lines(), lines);
        for (const LogLine &line : log.lines(Channel::QtCritical)) {
            expectWrittenBy(line, "KvSyncCore::DeviceManager::loadDevicePlugin(",
                            "DevicePlugins.cpp");
        }
        // Nothing is stored: the plug-in still counts as not loaded.
        if (!name.isEmpty() && !wanted.isNull()) {
            EXPECT_EQ(manager->enumDevice(name, wanted).first, PluginNotLoaded);
        }
    }

    /// A file was chosen and did not load.
    void expectLoadFailure(const QString &name, const QVersionNumber &wanted,
                           const QString &fileName, const QString &reason)
    {
        const QString text = QStringLiteral("load device plugin ") + folder.filePath(fileName);
        expectFailure(
            name, wanted, PluginLoadFailed,
            {glogInfoLine(text), debugLine(text), criticalLine(reason), glogErrorLine(reason)});
    }
};

} // namespace

// Arguments

TEST_F(DeviceLoading, AnEmptyNameIsAnInvalidParameter)
{
    const QString text = QStringLiteral("plugin name or version is null");
    expectFailure(QString(), camera217, InvalidParameter,
                  {criticalLine(text), glogErrorLine(text)});
}

TEST_F(DeviceLoading, AVersionWithoutSegmentsIsAnInvalidParameter)
{
    const QString text = QStringLiteral("plugin name or version is null");
    expectFailure(camera, QVersionNumber(), InvalidParameter,
                  {criticalLine(text), glogErrorLine(text)});
}

// Directory

TEST_F(DeviceLoading, AMissingDirectoryIsNamed)
{
    manager->setPluginDirPath(QStringLiteral("nowhere/at all"));
    const QString text =
        QCoreApplication::applicationDirPath() + QStringLiteral("/nowhere/at all is no exist path");
    expectFailure(camera, camera217, PathNotExist, {criticalLine(text), glogErrorLine(text)});
}

TEST_F(DeviceLoading, TheDirectoryOfANewManagerIsCalledDevice)
{
    manager = std::make_unique<KvSyncCore::DeviceManager>();
    const QString text =
        QCoreApplication::applicationDirPath() + QStringLiteral("/Device is no exist path");
    expectFailure(camera, camera217, PathNotExist, {criticalLine(text), glogErrorLine(text)});
}

TEST_F(DeviceLoading, AnEmptyDirectoryNameIsRefusedAndTheOldOneKept)
{
    put(QStringLiteral("Camera.2.1.3.dll"));
    log.clear();
    EXPECT_EQ(manager->setPluginDirPath(QString()), InvalidParameter);
    const std::vector<LogLine> lines = log.lines();
    ASSERT_EQ(lines, std::vector{criticalLine(QStringLiteral("plugin path is null"))});
    expectWrittenBy(lines.front(), "KvSyncCore::DeviceManager::setPluginDirPath(",
                    "DeviceManager.cpp");
    expectLoads(camera, camera217, QStringLiteral("Camera.2.1.3.dll"));
}

TEST_F(DeviceLoading, AnAbsoluteDirectoryIsStillAppendedToTheApplicationDirectory)
{
    put(QStringLiteral("Camera.2.1.3.dll"));
    EXPECT_EQ(manager->setPluginDirPath(folder.path()), Success);
    const QString text = QCoreApplication::applicationDirPath() + QLatin1Char('/') + folder.path() +
                         QStringLiteral(" is no exist path");
    expectFailure(camera, camera217, PathNotExist, {criticalLine(text), glogErrorLine(text)});
}

TEST_F(DeviceLoading, TheDirectoryIsNamedAsItWasGivenNeverCleaned)
{
    manager->setPluginDirPath(folder.name() + QStringLiteral("/./"));
    const QString text = folder.path() + QStringLiteral("/./ is no exist dll");
    expectFailure(camera, camera217, PluginFileNotExist, {criticalLine(text)});
}

TEST_F(DeviceLoading, ADirectoryOutsideLatin1IsNamedWithoutItsForeignLetters)
{
    // %s is read as UTF-8 from Latin-1 bytes: é becomes U+FFFD, 扫 a question mark.
    manager->setPluginDirPath(QStringLiteral("caf\u00e9 \u626b"));
    const QString text =
        QCoreApplication::applicationDirPath() + QStringLiteral("/caf\ufffd ? is no exist path");
    expectFailure(camera, camera217, PathNotExist, {criticalLine(text), glogErrorLine(text)});
}

// Choice

TEST_F(DeviceLoading, ADirectoryWithoutAMatchingFileIsNamedOnTheQtChannelAlone)
{
    put(QStringLiteral("Camera.2.2.1.dll"));
    put(QStringLiteral("Camera2.1.1.dll"));
    put(QStringLiteral("Camera.2.1.1.so"));
    const QString text = folder.path() + QStringLiteral(" is no exist dll");
    expectFailure(camera, camera217, PluginFileNotExist, {criticalLine(text)});
}

TEST_F(DeviceLoading, TheHighestBuildIsLoadedAndALetterCountsAsZero)
{
    for (const char *build : {"3", "10", "x"})
        put(QStringLiteral("Camera.2.1.%1.dll").arg(QLatin1String(build)));
    expectLoads(camera, camera217, QStringLiteral("Camera.2.1.10.dll"));
}

TEST_F(DeviceLoading, OfEqualBuildsTheFirstOfTheListingIsLoaded)
{
    put(QStringLiteral("Camera.2.1.07.dll"));
    put(QStringLiteral("Camera.2.1.7.dll"));
    put(QStringLiteral("Camera.2.1.007.dll"));
    expectLoads(camera, camera217, QStringLiteral("Camera.2.1.007.dll"));
}

TEST_F(DeviceLoading, OfBuildsThatAreNoNumbersTheFirstOfTheListingIsLoaded)
{
    put(QStringLiteral("Camera.2.1.beta.dll"));
    put(QStringLiteral("Camera.2.1.alpha.dll"));
    expectLoads(camera, camera217, QStringLiteral("Camera.2.1.alpha.dll"));
}

TEST_F(DeviceLoading, ABuildBeyond32BitsCountsAsZero)
{
    put(QStringLiteral("Camera.2.1.1.dll"));
    put(QStringLiteral("Camera.2.1.4294967296.dll"));
    put(QStringLiteral("Camera.2.1.9223372036854775807.dll"));
    expectLoads(camera, camera217, QStringLiteral("Camera.2.1.1.dll"));
}

TEST_F(DeviceLoading, TheLargestIntIsStillANumber)
{
    put(QStringLiteral("Camera.2.1.2147483646.dll"));
    put(QStringLiteral("Camera.2.1.2147483647.dll"));
    put(QStringLiteral("Camera.2.1.2147483648.dll"));
    expectLoads(camera, camera217, QStringLiteral("Camera.2.1.2147483647.dll"));
}

TEST_F(DeviceLoading, AnEmptyBuildCountsAsZero)
{
    put(QStringLiteral("Camera.2.1..dll"));
    put(QStringLiteral("Camera.2.1.1.dll"));
    expectLoads(camera, camera217, QStringLiteral("Camera.2.1.1.dll"));
}

TEST_F(DeviceLoading, ADottedNameShiftsThePartThatIsCompared)
{
    // Part 3 is the minor version here, equal in both: the listing's order decides, not the build.
    put(QStringLiteral("Cam.era.2.1.3.dll"));
    put(QStringLiteral("Cam.era.2.1.10.dll"));
    expectLoads(QStringLiteral("Cam.era"), camera217, QStringLiteral("Cam.era.2.1.10.dll"));

    put(QStringLiteral("Cam.dot.2.1.1.dll"));
    put(QStringLiteral("Cam.dot.2.1.9.dll"));
    expectLoads(QStringLiteral("Cam.dot"), camera217, QStringLiteral("Cam.dot.2.1.1.dll"));
}

TEST_F(DeviceLoading, ABuildOfSeveralPartsIsComparedByItsFirst)
{
    put(QStringLiteral("Camera.2.1.4.99.dll"));
    put(QStringLiteral("Camera.2.1.5.1.dll"));
    expectLoads(camera, camera217, QStringLiteral("Camera.2.1.5.1.dll"));
}

TEST_F(DeviceLoading, AVersionOfOneSegmentSearchesMinorZero)
{
    put(QStringLiteral("Camera.2.0.4.dll"));
    put(QStringLiteral("Camera.2.1.5.dll"));
    expectLoads(camera, QVersionNumber(2), QStringLiteral("Camera.2.0.4.dll"));
    EXPECT_EQ(manager->enumDevice(camera, QVersionNumber(2, 0, 9)).first, Success);
}

TEST_F(DeviceLoading, FileNamesMatchWithoutRegardToCase)
{
    put(QStringLiteral("CAMERA.2.1.6.DLL"));
    expectLoads(camera, camera217, QStringLiteral("CAMERA.2.1.6.DLL"));
}

TEST_F(DeviceLoading, ADirectoryNamedLikeAPluginIsNoFile)
{
    folder.makeFolder(QStringLiteral("Camera.2.1.9.dll"));
    const QString text = folder.path() + QStringLiteral(" is no exist dll");
    expectFailure(camera, camera217, PluginFileNotExist, {criticalLine(text)});
}

TEST_F(DeviceLoading, ADirectoryNamedLikeAHigherBuildDoesNotShadowAFile)
{
    folder.makeFolder(QStringLiteral("Camera.2.1.9.dll"));
    put(QStringLiteral("Camera.2.1.3.dll"));
    expectLoads(camera, camera217, QStringLiteral("Camera.2.1.3.dll"));
}

// Repetition

TEST_F(DeviceLoading, ALoadedVersionLineIsNotLoadedAgain)
{
    put(QStringLiteral("Camera.2.1.3.dll"));
    expectLoads(camera, camera217, QStringLiteral("Camera.2.1.3.dll"));
    put(QStringLiteral("Camera.2.1.10.dll"));
    log.clear();
    EXPECT_EQ(load(camera, QVersionNumber(2, 1, 0)), Success);
    EXPECT_EQ(log.lines(), std::vector<LogLine>());
}

TEST_F(DeviceLoading, ALoadedVersionLineNeedsNoDirectoryAnyMore)
{
    put(QStringLiteral("Camera.2.1.3.dll"));
    expectLoads(camera, camera217, QStringLiteral("Camera.2.1.3.dll"));
    manager->setPluginDirPath(QStringLiteral("nowhere"));
    EXPECT_EQ(load(camera, camera217), Success);
}

TEST_F(DeviceLoading, TwoVersionLinesOfOneNameStandSideBySide)
{
    put(QStringLiteral("Camera.2.1.3.dll"));
    put(QStringLiteral("Camera.2.2.1.dll"));
    expectLoads(camera, QVersionNumber(2, 1), QStringLiteral("Camera.2.1.3.dll"));
    expectLoads(camera, QVersionNumber(2, 2), QStringLiteral("Camera.2.2.1.dll"));
}

TEST_F(DeviceLoading, AFailedLoadIsTriedAgain)
{
    folder.writeText(QStringLiteral("Camera.2.1.3.dll"));
    EXPECT_EQ(load(camera, camera217), PluginLoadFailed);
    put(QStringLiteral("Camera.2.1.4.dll"));
    expectLoads(camera, camera217, QStringLiteral("Camera.2.1.4.dll"));
}

// Files that do not load

TEST_F(DeviceLoading, AFileThatIsNoModuleFailsWithTheLoadersReason)
{
    const QString fileName = QStringLiteral("Camera.2.1.3.dll");
    folder.writeText(fileName);
    log.clear();
    EXPECT_EQ(load(camera, camera217), PluginLoadFailed);
    const std::vector<LogLine> lines = log.lines(Channel::QtCritical);
    ASSERT_EQ(lines.size(), 1u);
    const QString reason = lines.front().text;
    EXPECT_TRUE(reason.contains(fileName)) << reason.toStdString();
    expectLoadFailure(camera, camera217, fileName, reason);
}

TEST_F(DeviceLoading, AnEmptyFileFailsToLoad)
{
    folder.writeText(QStringLiteral("Camera.2.1.3.dll"), QString());
    EXPECT_EQ(load(camera, camera217), PluginLoadFailed);
    EXPECT_EQ(log.lines(Channel::QtCritical).size(), 1u);
}

TEST_F(DeviceLoading, ATruncatedModuleFailsToLoad)
{
    folder.writeTruncated(deviceFixture(QStringLiteral("Scripted")),
                          QStringLiteral("Camera.2.1.3.dll"));
    EXPECT_EQ(load(camera, camera217), PluginLoadFailed);
}

TEST_F(DeviceLoading, AModuleWhoseLibraryIsMissingFailsToLoad)
{
    folder.copyModule(commandFixture(QStringLiteral("MissingLibrary")),
                      QStringLiteral("Camera.2.1.3.dll"));
    EXPECT_EQ(load(camera, camera217), PluginLoadFailed);
    EXPECT_EQ(log.lines(Channel::QtCritical).size(), 1u);
}

TEST_F(DeviceLoading, ABrokenHighestBuildIsNotReplacedByALowerOne)
{
    put(QStringLiteral("Camera.2.1.3.dll"));
    folder.writeText(QStringLiteral("Camera.2.1.4.dll"));
    EXPECT_EQ(load(camera, camera217), PluginLoadFailed);
}

TEST_F(DeviceLoading, AConstructorThatThrowsPassesThroughAndStoresNothing)
{
    const QString name = QStringLiteral("FactoryThrowsWhenLoaded");
    copyFixture(name, name + QStringLiteral(".1.0.1.dll"));
    for (int attempt = 0; attempt < 2; ++attempt) {
        try {
            load(name, version);
            FAIL() << "nothing thrown";
        } catch (const std::runtime_error &exception) {
            EXPECT_STREQ(exception.what(), "no driver");
        }
        EXPECT_EQ(manager->enumDevice(name, version).first, PluginNotLoaded);
    }
}

// Links

#ifdef Q_OS_UNIX

TEST_F(DeviceLoading, ALinkToAPluginIsLoadedUnderItsOwnName)
{
    put(QStringLiteral("elsewhere.bin"));
    ASSERT_TRUE(QFile::link(folder.filePath(QStringLiteral("elsewhere.bin")),
                            folder.filePath(QStringLiteral("Camera.2.1.3.dll"))));
    expectLoads(camera, camera217, QStringLiteral("Camera.2.1.3.dll"));
}

TEST_F(DeviceLoading, ALinkToNothingIsNoFile)
{
    ASSERT_TRUE(QFile::link(folder.filePath(QStringLiteral("gone.bin")),
                            folder.filePath(QStringLiteral("Camera.2.1.3.dll"))));
    const QString text = folder.path() + QStringLiteral(" is no exist dll");
    expectFailure(camera, camera217, PluginFileNotExist, {criticalLine(text)});
}

TEST_F(DeviceLoading, ALinkToADirectoryIsNoFile)
{
    folder.makeFolder(QStringLiteral("folder"));
    ASSERT_TRUE(QFile::link(folder.filePath(QStringLiteral("folder")),
                            folder.filePath(QStringLiteral("Camera.2.1.3.dll"))));
    const QString text = folder.path() + QStringLiteral(" is no exist dll");
    expectFailure(camera, camera217, PluginFileNotExist, {criticalLine(text)});
}

#endif
