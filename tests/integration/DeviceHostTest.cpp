#include "integration/HostFixture.h"

#include "KvSyncCore/DeviceController.h"

#include <memory>

namespace {

using namespace KvSyncTest;
using KvSyncCore::DeviceController;
using KvSyncCore::SyncCore;

const QVersionNumber version(1, 0);

/// Device plug-in files as a host drives them: over the controller that a command plug-in got.
class DeviceHost : public HostFixture
{
protected:
    DeviceHost()
        : controller(controllerOf(core))
    {
    }

    DeviceController &controllerOf(SyncCore &facade)
    {
        folder.makeFolder("Device");
        facade.init(folder.name(), folder.name() + "/Device");
        facade.loadCommandPlugin("Demo", {1, 0});
        return *control().controllers().last();
    }

    void put(const QString &fixture, const QString &fileName)
    {
        folder.copyModule(deviceFixture(fixture), "Device/" + fileName);
    }

    void load(const QString &fixture)
    {
        put(fixture, fixture + ".1.0.1.dll");
        ASSERT_EQ(controller.loadDevicePlugin(fixture, version), Success);
        log.clear();
    }

    DeviceHandle create(const QString &fixture)
    {
        load(fixture);
        const QPair<ErrorCode, qint64> created = controller.createDevice(fixture, version);
        EXPECT_EQ(created.first, Success);
        return created.second;
    }

    void expectInvalid(ErrorCode code, const char *text = "handle is invalid")
    {
        EXPECT_EQ(code, HandleInvalid);
        EXPECT_EQ(log.lines(), std::vector{criticalLine(text)});
        log.clear();
    }

    int callsOf(DeviceHandle handle)
    {
        QMap<QString, QVariant> values;
        EXPECT_EQ(controller.getProperty(handle, "calls", values), Success);
        return values.value("calls").toInt();
    }

    const ErrorCode motorsOwnCode = static_cast<ErrorCode>(0x01F20007);
    DeviceController &controller;
};

// A device with one capability

TEST_F(DeviceHost, CountsAndDescribesADevice)
{
    const DeviceHandle handle = create("MotorOnly");
    EXPECT_EQ(controller.enumDevice("MotorOnly", version), qMakePair(Success, 1));
    EXPECT_EQ(controller.name(handle), qMakePair(Success, QString("motor")));
    const auto types = controller.types(handle);
    EXPECT_EQ(types.first, Success);
    EXPECT_EQ(types.second, BaseDeviceSpace::MotorDevice);
    EXPECT_EQ(log.lines(), std::vector<LogLine>());
}

TEST_F(DeviceHost, ReachesACapabilityAcrossTheModules)
{
    const DeviceHandle handle = create("MotorOnly");
    EXPECT_EQ(controller.rotate(handle, {}), motorsOwnCode);
    EXPECT_EQ(controller.waitMotorStop(handle, {}), motorsOwnCode);
    EXPECT_EQ(controller.resetMotor(handle, {}), motorsOwnCode);
    EXPECT_EQ(controller.stopMotor(handle, {}), motorsOwnCode);
    EXPECT_EQ(callsOf(handle), 4);
    EXPECT_EQ(log.lines(), std::vector<LogLine>());
}

TEST_F(DeviceHost, IsRefusedTheCapabilitiesThatADeviceLacks)
{
    const DeviceHandle handle = create("MotorOnly");
    expectInvalid(controller.startStream(handle, 0));
    expectInvalid(controller.lockCommandChannel(handle));
    expectInvalid(controller.projectorPWM(handle, true));
    EXPECT_EQ(callsOf(handle), 0);
}

TEST_F(DeviceHost, IsRefusedEveryKindOfOperationOnADeletedDevice)
{
    const DeviceHandle handle = create("MotorOnly");
    EXPECT_EQ(controller.deleteDevice(handle), Success);
    EXPECT_EQ(log.lines(), std::vector<LogLine>());
    QMap<QString, QVariant> values;
    expectInvalid(controller.deleteDevice(handle));
    expectInvalid(controller.getProperty(handle, "calls", values));
    expectInvalid(controller.stopMotor(handle, {}));
    expectInvalid(controller.connectDeviceByIndex(handle, 0), "The handle is invalid");
    expectInvalid(controller.name(handle).first, "The handle is invalid");
    expectInvalid(controller.types(handle).first, "The handle is invalid");
}

// Controllers

TEST_F(DeviceHost, SharesItsDevicesWithEveryCopyOfTheController)
{
    const DeviceHandle handle = create("MotorOnly");
    DeviceController copy(controller);
    EXPECT_EQ(copy.stopMotor(handle, {}), motorsOwnCode);
    EXPECT_EQ(copy.deleteDevice(handle), Success);
    expectInvalid(controller.stopMotor(handle, {}));
}

TEST_F(DeviceHost, ReachesAnotherFacadesDevicesByAssignmentAlone)
{
    const DeviceHandle handle = create("MotorOnly");
    SyncCore second;
    DeviceController other(controllerOf(second));
    log.clear();
    expectInvalid(other.stopMotor(handle, {}));
    expectInvalid(other.deleteDevice(handle));
    other = controller;
    EXPECT_EQ(other.stopMotor(handle, {}), motorsOwnCode);
}

TEST_F(DeviceHost, KeepsItsDevicesWhenAnotherFacadeThatLoadedTheFileFirstEnds)
{
    put("MotorOnly", "Motor.1.0.1.dll");
    auto first = std::make_unique<SyncCore>();
    ASSERT_EQ(controllerOf(*first).loadDevicePlugin("Motor", version), Success);
    ASSERT_EQ(controller.loadDevicePlugin("Motor", version), Success);
    const DeviceHandle handle = controller.createDevice("Motor", version).second;
    first.reset();
    EXPECT_EQ(controller.stopMotor(handle, {}), motorsOwnCode);
}

} // namespace
