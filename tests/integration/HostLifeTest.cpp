// Several facades over one plug-in file, and facades that end while plug-in code runs.

#include "integration/HostFixture.h"

#include "KvSyncCore/DeviceController.h"
#include "fixtures/plugins/PlainDevice.h"
#include "fixtures/plugins/Scripted/DeviceScript.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QPointer>

#include <memory>

namespace {

using namespace KvSyncTest;
using KvSyncCore::DeviceController;
using KvSyncCore::SyncCore;

class HostLife : public HostFixture
{
protected:
    /// Another facade that has loaded the same plug-in, and counts what arrives.
    std::unique_ptr<SyncCore> another(int &arrivals)
    {
        auto facade = std::make_unique<SyncCore>();
        facade->init(folder.name(), "Device");
        facade->loadCommandPlugin("Demo", {1, 0});
        QObject::connect(facade.get(), &SyncCore::sendSignals, [&] { ++arrivals; });
        return facade;
    }

    static QVariant list(SyncCore &facade)
    {
        return facade.execute("Demo", "getRunningDevList", {}, {1, 0});
    }

    int firstArrivals = 0;
    int secondArrivals = 0;
};

TEST_F(HostLife, TwoFacadesOverOneFileShareItsObject)
{
    const auto first = another(firstArrivals);
    const auto second = another(secondArrivals);
    EXPECT_EQ(first->getCommandPlugin("Demo", {}), second->getCommandPlugin("Demo", {}));
}

TEST_F(HostLife, TheSecondFacadeGoesOnWhenTheFirstEnds)
{
    auto first = another(firstArrivals);
    const auto second = another(secondArrivals);
    RecorderControl &demo = loadDemo();
    demo.answerWith(QVariantList{7});
    first.reset();
    EXPECT_EQ(list(*second), QVariant(QVariantList{7}));
    demo.emitEvent({});
    EXPECT_EQ(firstArrivals, 0);
    EXPECT_EQ(secondArrivals, 1);
    EXPECT_EQ(demo.controllers().at(1)->deleteDevice(1), HandleInvalid);
}

TEST_F(HostLife, TheFirstFacadeGoesOnWhenTheSecondEnds)
{
    const auto first = another(firstArrivals);
    auto second = another(secondArrivals);
    RecorderControl &demo = loadDemo();
    demo.answerWith(QVariantList{7});
    second.reset();
    EXPECT_EQ(list(*first), QVariant(QVariantList{7}));
    demo.emitEvent({});
    EXPECT_EQ(firstArrivals, 1);
    EXPECT_EQ(secondArrivals, 0);
    EXPECT_EQ(demo.controllers().at(0)->deleteDevice(1), HandleInvalid);
}

TEST_F(HostLife, AFacadeThatComesLaterFindsTheObjectThatAnotherLeft)
{
    auto first = another(firstArrivals);
    CommandInterface *const plugin = first->getCommandPlugin("Demo", {});
    first.reset();
    EXPECT_EQ(another(secondArrivals)->getCommandPlugin("Demo", {}), plugin);
}

TEST_F(HostLife, AFacadeThatDidNotLoadThePluginDoesNotKnowIt)
{
    loadDemo();
    SyncCore second;
    second.init(folder.name(), "Device");
    expectThrows(PluginNotLoaded, "Demo.1.0 plugin is not exist", [&] { list(second); });
}

TEST_F(HostLife, ASlotMayEndTheFacade)
{
    auto brief = another(firstArrivals);
    const auto second = another(secondArrivals);
    QObject::connect(brief.get(), &SyncCore::sendSignals, [&] { brief.reset(); });
    RecorderControl &demo = loadDemo();
    demo.emitEvent({});
    EXPECT_EQ(brief, nullptr);
    demo.emitEvent({});
    EXPECT_EQ(firstArrivals, 1);
    EXPECT_EQ(secondArrivals, 2);
}

// The narrow case: this plug-in uses no controller after it has emitted.
TEST_F(HostLife, InACallOfAPluginThatIsDoneWithItsControllerASlotMayEndTheFacade)
{
    auto brief = another(firstArrivals);
    QObject::connect(brief.get(), &SyncCore::sendSignals, [&] { brief.reset(); });
    RecorderControl &demo = loadDemo();
    demo.answerWith(QVariantList{7});
    demo.doInside([&] { demo.emitEvent({}); });
    SyncCore *const running = brief.get();
    EXPECT_EQ(list(*running), QVariant(QVariantList{7}));
    EXPECT_EQ(brief, nullptr);
}

TEST_F(HostLife, ASlotThatDefersTheEndLeavesTheRunningPluginItsController)
{
    const QPointer<SyncCore> brief(another(firstArrivals).release());
    QObject::connect(brief, &SyncCore::sendSignals, brief, &QObject::deleteLater);
    auto &demo = *qobject_cast<RecorderControl *>(brief->getCommandPlugin("Demo", {}));
    demo.answerWith(QVariantList{7});
    ErrorCode code = Success;
    demo.doInside([&] {
        demo.emitEvent({});
        ASSERT_TRUE(brief);
        code = demo.controllers().last()->deleteDevice(1);
    });
    EXPECT_EQ(list(*brief), QVariant(QVariantList{7}));
    EXPECT_EQ(code, HandleInvalid);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_FALSE(brief);
    demo.doInside({});
}

/// Lends one device; its end makes a command plug-in emit.
class ParentingScript : public DeviceScript
{
public:
    int enumDevices() override { return 1; }
    BaseDeviceSpace::DeviceInterface *createDevice() override { return &device; }

    ErrorCode destroyDevice(BaseDeviceSpace::DeviceInterface *&) override
    {
        demo->emitEvent({});
        return Success;
    }

    RecorderControl *demo = nullptr;

private:
    PlainDevice device;
};

TEST_F(HostLife, SlotsHearEventsWhileTheFacadeIsBeingDestroyed)
{
    ParentingScript script;
    DeviceScript::use(&script);
    folder.makeFolder("Rigs");
    folder.copyModule(deviceFixture("Scripted"), "Rigs/Rig.1.0.1.dll");
    auto brief = another(firstArrivals);
    brief->init(folder.name(), folder.name() + "/Rigs");
    script.demo = qobject_cast<RecorderControl *>(brief->getCommandPlugin("Demo", {}));
    DeviceController &controller = *script.demo->controllers().last();
    ASSERT_EQ(controller.loadDevicePlugin("Rig", {1, 0}), Success);
    ASSERT_EQ(controller.createDevice("Rig", {1, 0}).first, Success);
    brief.reset();
    EXPECT_EQ(firstArrivals, 1);
    DeviceScript::use(nullptr);
}

} // namespace
