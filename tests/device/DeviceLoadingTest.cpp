// loadDevicePlugin: its arguments, its directory, and what a second load does.

#include "device/support/DeviceLoading.h"
#include "support/CriticalLinesOff.h"

#include <QtCore/QCoreApplication>

namespace {

using namespace KvSyncTest;

// Arguments

TEST_F(DeviceLoading, AnEmptyNameIsAnInvalidParameter)
{
    const QString text = "plugin name or version is null";
    expectFailure(QString(), camera217, InvalidParameter,
                  {criticalLine(text), glogErrorLine(text)});
}

TEST_F(DeviceLoading, AVersionWithoutSegmentsIsAnInvalidParameter)
{
    const QString text = "plugin name or version is null";
    expectFailure(camera, QVersionNumber(), InvalidParameter,
                  {criticalLine(text), glogErrorLine(text)});
}

// Directory

TEST_F(DeviceLoading, AMissingDirectoryIsNamed)
{
    manager->setPluginDirPath("nowhere/at all");
    expectMissingDirectory(camera, camera217,
                           QCoreApplication::applicationDirPath() + "/nowhere/at all");
}

TEST_F(DeviceLoading, TheDirectoryOfANewManagerIsCalledDevice)
{
    manager = std::make_unique<KvSyncCore::DeviceManager>();
    expectMissingDirectory(camera, camera217, QCoreApplication::applicationDirPath() + "/Device");
}

TEST_F(DeviceLoading, AnEmptyDirectoryNameIsRefusedAndTheOldOneKept)
{
    put("Camera.2.1.3.dll");
    log.clear();
    EXPECT_EQ(manager->setPluginDirPath(QString()), InvalidParameter);
    const std::vector<LogLine> lines = log.lines();
    ASSERT_EQ(lines, std::vector{criticalLine("plugin path is null")});
    expectWrittenBy(lines.front(), "KvSyncCore::DeviceManager::setPluginDirPath(",
                    "DeviceManager.cpp");
    expectLoads(camera, camera217, "Camera.2.1.3.dll");
}

TEST_F(DeviceLoading, AnEmptyDirectoryNameIsRefusedInSilenceWithCriticalLinesOff)
{
    const CriticalLinesOff off;
    EXPECT_EQ(manager->setPluginDirPath(""), InvalidParameter);
    EXPECT_EQ(log.lines(), std::vector<LogLine>());
}

TEST_F(DeviceLoading, ADirectoryIsTakenInSilence)
{
    EXPECT_EQ(manager->setPluginDirPath("nowhere"), Success);
    EXPECT_EQ(log.lines(), std::vector<LogLine>());
}

TEST_F(DeviceLoading, AnAbsoluteDirectoryIsStillAppendedToTheApplicationDirectory)
{
    put("Camera.2.1.3.dll");
    EXPECT_EQ(manager->setPluginDirPath(folder.path()), Success);
    expectMissingDirectory(camera, camera217,
                           QCoreApplication::applicationDirPath() + QLatin1Char('/') +
                               folder.path());
}

TEST_F(DeviceLoading, TheDirectoryIsNamedAsItWasGivenNeverCleaned)
{
    manager->setPluginDirPath(folder.name() + "/./");
    const QString text = folder.path() + "/./ is no exist dll";
    expectFailure(camera, camera217, PluginFileNotExist, {criticalLine(text)});
}

TEST_F(DeviceLoading, ADirectoryOutsideLatin1IsNamedWithoutItsForeignLetters)
{
    // %s is read as UTF-8 from Latin-1 bytes: é becomes U+FFFD, 扫 a question mark.
    manager->setPluginDirPath(QStringLiteral("caf\u00e9 \u626b"));
    expectMissingDirectory(camera, camera217,
                           QCoreApplication::applicationDirPath() + QStringLiteral("/caf\ufffd ?"));
}

TEST_F(DeviceLoading, AFileOfTheDirectorysNameIsAMissingDirectory)
{
    folder.writeText("plugins");
    manager->setPluginDirPath(folder.name() + "/plugins");
    expectMissingDirectory(camera, camera217, folder.filePath("plugins"));
}

// Lines that the host has switched off

TEST_F(DeviceLoading, WithCriticalLinesOffFailuresStandInTheOtherLogAlone)
{
    const CriticalLinesOff off;
    const QString nothingGiven = "plugin name or version is null";
    expectFailure(QString(), camera217, InvalidParameter, {glogErrorLine(nothingGiven)});
    expectFailure(camera, camera217, PluginFileNotExist, {});
    manager->setPluginDirPath(folder.name() + "/none");
    expectFailure(camera, camera217, PathNotExist,
                  {glogErrorLine(folder.filePath("none") + " is no exist path")});
}

// Repetition

TEST_F(DeviceLoading, ALoadedVersionLineIsNotLoadedAgain)
{
    put("Camera.2.1.3.dll");
    expectLoads(camera, camera217, "Camera.2.1.3.dll");
    put("Camera.2.1.10.dll");
    log.clear();
    EXPECT_EQ(load(camera, QVersionNumber(2, 1, 0)), Success);
    EXPECT_EQ(log.lines(), std::vector<LogLine>());
}

TEST_F(DeviceLoading, ALoadedVersionLineNeedsNoDirectoryAnyMore)
{
    put("Camera.2.1.3.dll");
    expectLoads(camera, camera217, "Camera.2.1.3.dll");
    manager->setPluginDirPath("nowhere");
    EXPECT_EQ(load(camera, camera217), Success);
}

TEST_F(DeviceLoading, TwoVersionLinesOfOneNameStandSideBySide)
{
    put("Camera.2.1.3.dll");
    put("Camera.2.2.1.dll");
    expectLoads(camera, QVersionNumber(2, 1), "Camera.2.1.3.dll");
    expectLoads(camera, QVersionNumber(2, 2), "Camera.2.2.1.dll");
}

TEST_F(DeviceLoading, ANameInAnotherCaseIsAPluginOfItsOwnFromTheSameFile)
{
    const QString other = "CAMERA";
    put("Camera.2.1.3.dll");
    expectLoads(camera, camera217, "Camera.2.1.3.dll");
    EXPECT_EQ(manager->enumDevice(other, camera217).first, PluginNotLoaded);
    expectLoads(other, camera217, "Camera.2.1.3.dll");
    EXPECT_EQ(manager->enumDevice(other, camera217), qMakePair(Success, 5));
}

TEST_F(DeviceLoading, NamesThatDifferOnlyBeyondLatin1AreOnePlugin)
{
    put("AB.2.1.3.dll");
    expectLoads(QStringLiteral("\u626b\u63cf"), camera217, "AB.2.1.3.dll");
    log.clear();
    EXPECT_EQ(load(QStringLiteral("\u6f22\u5b57"), camera217), Success);
    EXPECT_EQ(log.lines(), std::vector<LogLine>());
}

} // namespace
