// Counting, creating and deleting devices, and what a handle is good for.

#include "device/support/DeviceRegistry.h"
#include "KvSyncCore/DeviceController.h"
#include "fixtures/plugins/PlainDevice.h"
#include "support/CriticalLinesOff.h"

#include <limits>
#include <stdexcept>
#include <utility>

namespace {

using namespace KvSyncTest;
using KvSyncCore::DeviceController;
using KvSyncCore::DeviceManager;

ErrorCode throwOperation(const Call &call)
{
    throw std::runtime_error(call.operation);
}

// Counting and creating

TEST_F(DeviceRegistry, CountsWhatTheFactoryReports)
{
    loadFixture(scripted);
    EXPECT_EQ(manager->enumDevice(scripted, version), qMakePair(Success, 5));
    EXPECT_EQ(log.lines(), nothing);
}

TEST_F(DeviceRegistry, HandsOutACountThatIsNone)
{
    class Overdrawn : public LendingScript
    {
    public:
        int enumDevices() override { return -3; }
    };

    Overdrawn script;
    DeviceScript::use(&script);
    loadFixture(scripted);
    EXPECT_EQ(manager->enumDevice(scripted, version), qMakePair(Success, -3));
    endManager();
}

TEST_F(DeviceRegistry, AHandleIsTheDevicesAddress)
{
    EXPECT_EQ(lend(device), addressOf(device));
    EXPECT_EQ(log.lines(), nothing);
}

TEST_F(DeviceRegistry, AnEmptyNameHasACodeOfItsOwnHere)
{
    const QString text = "plugin name or version is null";
    const std::vector<LogLine> lines = {criticalLine(text), glogErrorLine(text)};
    EXPECT_EQ(manager->enumDevice(QString(), version), qMakePair(PluginNameOrVersionNull, 0));
    expectLines(lines, "enumDevice");
    EXPECT_EQ(manager->createDevice(QString(), version),
              qMakePair(PluginNameOrVersionNull, qint64(0)));
    expectLines(lines, "createDevice");
}

TEST_F(DeviceRegistry, ANullVersionHasACodeOfItsOwnHere)
{
    loadFixture(scripted);
    const QString text = "plugin name or version is null";
    const std::vector<LogLine> lines = {criticalLine(text), glogErrorLine(text)};
    EXPECT_EQ(manager->enumDevice(scripted, QVersionNumber()),
              qMakePair(PluginNameOrVersionNull, 0));
    expectLines(lines, "enumDevice");
    EXPECT_EQ(manager->createDevice(scripted, QVersionNumber()),
              qMakePair(PluginNameOrVersionNull, qint64(0)));
    expectLines(lines, "createDevice");
}

TEST_F(DeviceRegistry, CountingDoesNotLoadThePlugin)
{
    copyFixture(scripted, "Scripted.1.0.1.dll");
    expectNotLoaded(scripted, version);
}

TEST_F(DeviceRegistry, NameAndVersionStandTogetherInTheTextWithEverySegment)
{
    expectNotLoaded("Camera", QVersionNumber({2, 1, 7, 0, 3}));
    expectNotLoaded(QStringLiteral("扫描"), QVersionNumber(2));
}

TEST_F(DeviceRegistry, AnotherMinorVersionIsNotLoaded)
{
    loadFixture(scripted);
    expectNotLoaded(scripted, QVersionNumber(1, 1));
}

TEST_F(DeviceRegistry, TheMicroSegmentDoesNotMatter)
{
    loadFixture(scripted);
    EXPECT_EQ(manager->enumDevice(scripted, QVersionNumber(1, 0, 99)).first, Success);
    EXPECT_EQ(manager->enumDevice(scripted, QVersionNumber(1)).first, Success);
}

// Name and kinds

TEST_F(DeviceRegistry, NameAndKindsAreThePluginsAndSilent)
{
    const DeviceHandle handle = lend(device);
    EXPECT_EQ(manager->name(handle), qMakePair(Success, QString("fake")));
    const auto types = manager->types(handle);
    EXPECT_EQ(types.first, Success);
    EXPECT_EQ(types.second, BaseDeviceSpace::CameraDevice | BaseDeviceSpace::ControllerDevice);
    EXPECT_EQ(log.lines(), nothing);
}

TEST_F(DeviceRegistry, NameAndKindsOfUnknownHandlesAreEmpty)
{
    const DeviceHandle known = lend(device);
    const std::vector<LogLine> lines = {criticalLine("The handle is invalid")};
    for (const DeviceHandle handle : {DeviceHandle(0), DeviceHandle(-1), known + 1}) {
        log.clear();
        EXPECT_EQ(manager->name(handle), qMakePair(HandleInvalid, QString()));
        expectLines(lines, "name");
        const auto types = manager->types(handle);
        EXPECT_EQ(types.first, HandleInvalid);
        EXPECT_EQ(static_cast<int>(types.second), 0);
        expectLines(lines, "types");
    }
}

TEST_F(DeviceRegistry, NameAndKindsOfAnotherManagersDeviceAreEmpty)
{
    const DeviceHandle handle = lend(device);
    DeviceManager other;
    EXPECT_EQ(other.name(handle), qMakePair(HandleInvalid, QString()));
    EXPECT_EQ(other.types(handle).first, HandleInvalid);
}

TEST_F(DeviceRegistry, WhatNameAndKindsThrowPassesThrough)
{
    BareDevice faulty(throwOperation);
    const DeviceHandle handle = lend(faulty);
    EXPECT_EQ(thrownBy([&] { manager->name(handle); }), "name");
    EXPECT_EQ(thrownBy([&] { manager->types(handle); }), "types");
    EXPECT_EQ(log.lines(), nothing);
    endManager();
}

// Deleting

TEST_F(DeviceRegistry, DeletingIsSilentAndEndsTheHandle)
{
    const DeviceHandle handle = lend(device);
    EXPECT_EQ(manager->deleteDevice(handle), Success);
    EXPECT_EQ(log.lines(), nothing);
    EXPECT_EQ(manager->name(handle).first, HandleInvalid);
}

TEST_F(DeviceRegistry, DeletingTwiceIsRefused)
{
    const DeviceHandle handle = lend(device);
    EXPECT_EQ(manager->deleteDevice(handle), Success);
    expectDeleteRefused(handle);
}

TEST_F(DeviceRegistry, HandlesThatNameNothingAreNotDeleted)
{
    const DeviceHandle known = lend(device);
    for (const DeviceHandle handle :
         {DeviceHandle(0), DeviceHandle(-1), known + 1, std::numeric_limits<DeviceHandle>::min()})
        expectDeleteRefused(handle);
    EXPECT_EQ(manager->name(known).first, Success);
}

TEST_F(DeviceRegistry, AHandleOfAnotherManagerIsNotDeleted)
{
    const DeviceHandle handle = lend(device);
    DeviceManager other;
    log.clear();
    EXPECT_EQ(other.deleteDevice(handle), HandleInvalid);
    EXPECT_EQ(manager->name(handle).first, Success);
}

TEST_F(DeviceRegistry, TheEndOfOneManagerLeavesThePluginOfAnother)
{
    // The first to load the file is the first to go.
    copyFixture(scripted, "Scripted.1.0.1.dll");
    auto other = std::make_unique<DeviceManager>();
    other->setPluginDirPath(folder.name());
    EXPECT_EQ(other->loadDevicePlugin(scripted, version), Success);
    EXPECT_EQ(manager->loadDevicePlugin(scripted, version), Success);
    other.reset();
    EXPECT_EQ(manager->enumDevice(scripted, version), qMakePair(Success, 5));
}

TEST_F(DeviceRegistry, AnAddressThatIsUsedAgainIsAHandleAgain)
{
    const DeviceHandle first = lend(device);
    EXPECT_EQ(manager->deleteDevice(first), Success);
    EXPECT_EQ(lend(device), first);
    EXPECT_EQ(manager->name(first).first, Success);
}

/// Makes a new device at the address that it was just given back.
class ReusingScript : public LendingScript
{
public:
    ErrorCode destroyDevice(BaseDeviceSpace::DeviceInterface *&device) override
    {
        if (manager)
            std::exchange(manager, nullptr)->createDevice("Scripted", QVersionNumber(1, 0));
        if (exchanged)
            device = exchanged;
        return Success;
    }

    DeviceManager *manager = nullptr;
    BaseDeviceSpace::DeviceInterface *exchanged = nullptr;
};

// As when another thread is given a device between the end of one and the end of its handle.
TEST_F(DeviceRegistry, ADeviceAtAnAddressThatIsJustGivenBackKeepsItsHandle)
{
    ReusingScript script;
    const DeviceHandle handle = createBy(script);
    script.manager = manager.get();
    EXPECT_EQ(manager->deleteDevice(handle), Success);
    EXPECT_EQ(manager->name(handle).first, Success);
    EXPECT_EQ(manager->deleteDevice(handle), Success);
    expectDeleteRefused(handle);
    endManager();
}

TEST_F(DeviceRegistry, AnExchangedPointerEndsTheOtherHandleEvenThen)
{
    PlainDevice other;
    ReusingScript script;
    script.next = &other;
    DeviceScript::use(&script);
    loadFixture(scripted);
    const DeviceHandle otherHandle = createFixtureDevice(scripted);
    script.next = &device;
    const DeviceHandle handle = createFixtureDevice(scripted);
    script.manager = manager.get();
    script.exchanged = &other;
    EXPECT_EQ(manager->deleteDevice(handle), Success);
    EXPECT_EQ(manager->name(handle).first, Success);
    expectDeleteRefused(otherHandle);
    endManager();
}

/// While a device is being ended, somebody else ends it first and is given a new one at its
/// address.
class OvertakingScript : public LendingScript
{
public:
    IFactory *factory(IFactory *root) override
    {
        if (DeviceManager *const other = std::exchange(manager, nullptr)) {
            EXPECT_EQ(other->deleteDevice(handle), Success);
            EXPECT_EQ(other->createDevice("Scripted", QVersionNumber(1, 0)),
                      qMakePair(Success, handle));
        }
        return root;
    }

    DeviceManager *manager = nullptr;
    qint64 handle = 0;
};

TEST_F(DeviceRegistry, ADeviceThatReplacesTheOneBeingEndedKeepsItsHandle)
{
    OvertakingScript script;
    const DeviceHandle handle = script.handle = createBy(script);
    script.manager = manager.get();
    EXPECT_EQ(manager->deleteDevice(handle), Success);
    EXPECT_EQ(manager->name(handle).first, Success);
    EXPECT_EQ(manager->deleteDevice(handle), Success);
    expectDeleteRefused(handle);
    endManager();
}

TEST_F(DeviceRegistry, ADeviceGivenTwiceIsOneHandle)
{
    const DeviceHandle handle = lend(device);
    EXPECT_EQ(lend(device), handle);
    EXPECT_EQ(manager->deleteDevice(handle), Success);
    expectDeleteRefused(handle);
}

// Lines that the host has switched off

TEST_F(DeviceRegistry, WithCriticalLinesOffRefusalsKeepTheirCodesAndTheOtherLog)
{
    const CriticalLinesOff off;
    const LogLine nullGiven = glogErrorLine("plugin name or version is null");
    EXPECT_EQ(manager->enumDevice(QString(), version).first, PluginNameOrVersionNull);
    EXPECT_EQ(manager->createDevice(QString(), version).first, PluginNameOrVersionNull);
    EXPECT_EQ(manager->enumDevice(scripted, version).first, PluginNotLoaded);
    EXPECT_EQ(manager->createDevice(scripted, version).first, PluginNotLoaded);
    EXPECT_EQ(manager->deleteDevice(1), HandleInvalid);
    EXPECT_EQ(manager->name(1).first, HandleInvalid);
    EXPECT_EQ(manager->types(1).first, HandleInvalid);
    EXPECT_EQ(manager->startStream(1, 0), HandleInvalid);
    EXPECT_EQ(log.lines(),
              (std::vector{nullGiven, nullGiven, glogInfoLine("The Scripted1.0 is not exist")}));
}

// Controllers

TEST_F(DeviceRegistry, TwoControllersOverOneManagerSeeTheSameDevices)
{
    loadFixture(scripted);
    lending.next = &device;
    DeviceController first(manager.get());
    DeviceController second(manager.get());
    const DeviceHandle handle = first.createDevice(scripted, version).second;
    EXPECT_EQ(second.name(handle).first, Success);
    EXPECT_EQ(second.deleteDevice(handle), Success);
    EXPECT_EQ(first.name(handle).first, HandleInvalid);
}

TEST_F(DeviceRegistry, AnAssignedControllerSeesTheDevicesOfTheSourcesManager)
{
    const DeviceHandle handle = lend(device);
    DeviceManager other;
    DeviceController source(manager.get());
    DeviceController target(&other);
    EXPECT_EQ(target.name(handle).first, HandleInvalid);
    target = source;
    EXPECT_EQ(target.name(handle).first, Success);
}

} // namespace
