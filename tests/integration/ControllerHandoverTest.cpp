#include "integration/HostFixture.h"

#include "KvSyncCore/DeviceController.h"

#include <QtCore/QCoreApplication>

namespace {

using namespace KvSyncTest;
using KvSyncCore::DeviceController;
using KvSyncCore::SyncCore;

/// How command plug-ins, and hosts through them, get hold of the device side.
class ControllerHandover : public HostFixture
{
};

TEST_F(ControllerHandover, HappensOnLoading)
{
    const auto controllers = loadDemo().controllers();
    ASSERT_EQ(controllers.size(), 1);
    EXPECT_NE(controllers[0], nullptr);
}

TEST_F(ControllerHandover, HappensOnEachLoadingWithTheSameController)
{
    loadDemo();
    CommandInterface *const plugin = core.getCommandPlugin("Demo", {1, 0});
    const auto controllers = loadDemo().controllers();
    EXPECT_EQ(core.getCommandPlugin("Demo", {1, 0}), plugin);
    ASSERT_EQ(controllers.size(), 2);
    EXPECT_EQ(controllers[0], controllers[1]);
}

TEST_F(ControllerHandover, GivesEveryPluginTheSameController)
{
    folder.copyModule(commandFixture("Recorder"), "Other.3.1.1.dll");
    core.loadCommandPlugin("Other", {3, 1});
    auto *const other = qobject_cast<RecorderControl *>(core.getCommandPlugin("Other", {}));
    EXPECT_EQ(loadDemo().controllers(), other->controllers());
}

TEST_F(ControllerHandover, GivesAnotherControllerForEveryFacade)
{
    SyncCore second;
    second.init(folder.name(), "Elsewhere");
    loadDemo();
    second.loadCommandPlugin("Demo", {1, 0});
    const auto controllers = control().controllers();
    ASSERT_EQ(controllers.size(), 2);
    EXPECT_NE(controllers[0], controllers[1]);
}

TEST_F(ControllerHandover, DoesNotHappenOnLookupOrDispatch)
{
    RecorderControl &demo = loadDemo();
    execute("getRunningDevList");
    EXPECT_EQ(demo.controllers().size(), 1);
}

TEST_F(ControllerHandover, LetsThePluginReachTheDirectoryThatTheHostSet)
{
    RecorderControl &demo = loadDemo();
    core.init(folder.name(), "Elsewhere");
    log.clear();
    EXPECT_EQ(demo.loadDevicePlugin("Virtual", {1, 0}), PathNotExist);
    const QString text = QCoreApplication::applicationDirPath() + "/Elsewhere is no exist path";
    EXPECT_EQ(log.lines(), (std::vector{criticalLine(text), glogErrorLine(text)}));
}

TEST_F(ControllerHandover, LetsTheHostAskThePluginForTheController)
{
    DeviceController *const controller = loadDemo().controllers().first();
    EXPECT_EQ(controller->deleteDevice(12345), HandleInvalid);
    EXPECT_EQ(log.lines().back(), criticalLine("handle is invalid"));
}

} // namespace
