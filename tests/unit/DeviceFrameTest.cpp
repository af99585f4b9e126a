#include "KvSyncCore/DeviceController.h"
#include "device/DeviceManager.h"
#include "support/CriticalLinesOff.h"
#include "support/LogCapture.h"

#include <QtCore/QCoreApplication>
#include <gtest/gtest.h>

#include <type_traits>

namespace {

using namespace KvSyncTest;
using KvSyncCore::DeviceController;
using KvSyncCore::DeviceManager;

/// The directory that a device plug-in is looked for in, as the failure to find it names it.
template <typename Loader>
QString directoryOf(Loader &loader)
{
    const LogCapture log;
    EXPECT_EQ(loader.loadDevicePlugin("Demo", {1, 0}), PathNotExist);
    const std::vector<LogLine> lines = log.lines(Channel::QtCritical);
    const QString prefix = QCoreApplication::applicationDirPath() + "/";
    const QString suffix = " is no exist path";
    if (lines.size() != 1 || !lines[0].text.startsWith(prefix) || !lines[0].text.endsWith(suffix))
        return "no such line";
    return lines[0].text.mid(prefix.size()).chopped(suffix.size());
}

TEST(DeviceFrame, LooksIntoDeviceAtFirst)
{
    DeviceManager manager;
    EXPECT_EQ(directoryOf(manager), "Device");
}

TEST(DeviceFrame, LooksIntoTheDirectoryThatWasSet)
{
    DeviceManager manager;
    EXPECT_EQ(manager.setPluginDirPath("nowhere"), Success);
    EXPECT_EQ(directoryOf(manager), "nowhere");
}

TEST(DeviceFrame, LogsNothingWhenADirectoryIsSet)
{
    const LogCapture log;
    DeviceManager manager;
    manager.setPluginDirPath("nowhere");
    EXPECT_EQ(log.lines(), std::vector<LogLine>());
}

TEST(DeviceFrame, RefusesAnEmptyDirectoryAndLogsItOnTheQtChannelAlone)
{
    const LogCapture log;
    DeviceManager manager;
    EXPECT_EQ(manager.setPluginDirPath(""), InvalidParameter);
    ASSERT_EQ(log.lines(), std::vector{criticalLine("plugin path is null")});
    expectWrittenBy(log.lines().front(), "KvSyncCore::DeviceManager::setPluginDirPath(",
                    "DeviceManager.cpp");
}

TEST(DeviceFrame, KeepsDeviceWhenAnEmptyDirectoryIsRefused)
{
    DeviceManager manager;
    manager.setPluginDirPath("");
    EXPECT_EQ(directoryOf(manager), "Device");
}

TEST(DeviceFrame, KeepsTheDirectorySetBeforeWhenAnEmptyOneIsRefused)
{
    DeviceManager manager;
    manager.setPluginDirPath("nowhere");
    manager.setPluginDirPath("");
    EXPECT_EQ(directoryOf(manager), "nowhere");
}

TEST(DeviceFrame, AppendsAnAbsoluteDirectoryAsItStands)
{
    DeviceManager manager;
    EXPECT_EQ(manager.setPluginDirPath("/no/such"), Success);
    EXPECT_EQ(directoryOf(manager), "/no/such");
}

TEST(DeviceFrame, SetsADirectoryWithCriticalLinesOffInTheSameWay)
{
    const CriticalLinesOff off;
    const LogCapture log;
    DeviceManager manager;
    EXPECT_EQ(manager.setPluginDirPath(""), InvalidParameter);
    EXPECT_EQ(log.lines(), std::vector<LogLine>());
}

TEST(DeviceControllerFrame, ServesItsManager)
{
    DeviceManager manager;
    manager.setPluginDirPath("first");
    DeviceController controller(&manager);
    EXPECT_EQ(directoryOf(controller), "first");
    manager.setPluginDirPath("second");
    EXPECT_EQ(directoryOf(controller), "second");
}

TEST(DeviceControllerFrame, AssignedFromAnotherServesTheOthersManager)
{
    DeviceManager first;
    DeviceManager second;
    first.setPluginDirPath("first");
    second.setPluginDirPath("second");
    DeviceController controller(&second);
    const DeviceController other(&first);
    EXPECT_EQ(&(controller = other), &controller);
    EXPECT_EQ(directoryOf(controller), "first");
}

TEST(DeviceControllerFrame, CopiedServesTheSameManager)
{
    DeviceManager manager;
    manager.setPluginDirPath("shared");
    const DeviceController original(&manager);
    DeviceController copy(original);
    EXPECT_EQ(directoryOf(copy), "shared");
}

TEST(DeviceControllerFrame, EndsWithoutTouchingItsManager)
{
    DeviceManager manager;
    {
        const DeviceController brief(&manager);
    }
    DeviceController nothing(nullptr);
    EXPECT_EQ(directoryOf(manager), "Device");
}

TEST(DeviceControllerFrame, IsAPointerInValueForm)
{
    static_assert(!std::is_polymorphic_v<DeviceController>);
    static_assert(std::is_copy_constructible_v<DeviceController>);
    static_assert(std::is_copy_assignable_v<DeviceController>);
    static_assert(!std::is_convertible_v<DeviceManager *, DeviceController>);
    static_assert(!std::is_copy_constructible_v<DeviceManager>);
    static_assert(!std::is_copy_assignable_v<DeviceManager>);
    EXPECT_EQ(sizeof(DeviceController), sizeof(void *));
}

} // namespace
