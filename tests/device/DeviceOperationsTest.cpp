// The thirty-three handle-checked operations, each against every condition.

#include "device/support/DeviceTest.h"
#include "support/CriticalLinesOff.h"

#include <set>
#include <stdexcept>

using namespace KvSyncTest;
using KvSyncCore::DeviceManager;

namespace {

enum class Reached { Device, Camera, Controller, Motor, Projector };

struct Operation
{
    const char *name;
    Reached reached;
    std::function<Outcome<ErrorCode>(DeviceManager &, DeviceHandle, Sample)> invoke;
};

void PrintTo(const Operation &operation, std::ostream *stream)
{
    *stream << operation.name;
}

template <auto member>
Operation operationOf(const char *name, Reached reached)
{
    return {name, reached, [name](DeviceManager &manager, DeviceHandle handle, Sample sample) {
                return invoke(manager, name, member, handle, sample);
            }};
}

#define OPERATION(reached, name) operationOf<&DeviceManager::name>(#name, Reached::reached)

const std::vector<Operation> operations = {
    OPERATION(Device, connectDeviceByIndex),
    OPERATION(Device, getProperty),
    OPERATION(Device, setProperty),
    OPERATION(Camera, getExposureTimeRange),
    OPERATION(Camera, getGainRange),
    OPERATION(Camera, getMaxImageSize),
    OPERATION(Camera, setInterestSize),
    OPERATION(Camera, getInterestSize),
    OPERATION(Camera, setAOIOffset),
    OPERATION(Camera, getAOIOffset),
    OPERATION(Camera, getPixelFormat),
    OPERATION(Camera, setTriggerMode),
    OPERATION(Camera, getTriggerMode),
    OPERATION(Camera, discardFrames),
    OPERATION(Camera, startStream),
    OPERATION(Camera, stopStream),
    OPERATION(Controller, updateFireware),
    OPERATION(Controller, sendCommand),
    OPERATION(Controller, readCommand),
    OPERATION(Controller, lockCommandChannel),
    OPERATION(Controller, unlockCommandChannel),
    OPERATION(Motor, rotate),
    OPERATION(Motor, waitMotorStop),
    OPERATION(Motor, resetMotor),
    OPERATION(Motor, stopMotor),
    OPERATION(Projector, projectorPWM),
    OPERATION(Projector, currentProjectorPWM),
    OPERATION(Projector, projectorLEDSwitch),
    OPERATION(Projector, currentProjectorLEDSwitch),
    OPERATION(Projector, setProjectorLuminance),
    OPERATION(Projector, getProjectorLuminance),
    OPERATION(Projector, scan),
    OPERATION(Projector, writePatternToFlash),
};

std::vector<Operation> capabilityOperations()
{
    std::vector<Operation> chosen;
    for (const Operation &operation : operations) {
        if (operation.reached != Reached::Device)
            chosen.push_back(operation);
    }
    return chosen;
}

std::string nameOf(const ::testing::TestParamInfo<Operation> &info)
{
    return info.param.name;
}

constexpr ErrorCode ownCode = static_cast<ErrorCode>(0x5A5A0042);

class HandleCheckedOperation : public DeviceTest, public ::testing::WithParamInterface<Operation>
{
protected:
    Outcome<ErrorCode> callOn(DeviceHandle handle, Sample sample = Sample::Plain)
    {
        return GetParam().invoke(*manager, handle, sample);
    }

    Listener answering(ErrorCode code)
    {
        return [this, code](const Call &call) {
            calls.push_back(call);
            return code;
        };
    }

    void expectRefusal(DeviceHandle handle)
    {
        log.clear();
        const Outcome<ErrorCode> outcome = callOn(handle);
        EXPECT_EQ(outcome.result, HandleInvalid);
        EXPECT_TRUE(outcome.argumentsUntouched);
        EXPECT_TRUE(calls.empty());

        const std::string name = GetParam().name;
        const char *text =
            name == "connectDeviceByIndex" ? "The handle is invalid" : "handle is invalid";
        const std::vector<LogLine> lines = log.lines();
        ASSERT_EQ(lines, std::vector{criticalLine(QString::fromLatin1(text))});
        expectWrittenBy(lines.front(), "KvSyncCore::DeviceManager::" + name + "(",
                        "DeviceOperations.cpp");
    }

    std::vector<Call> calls;
};

class CapabilityOperation : public HandleCheckedOperation
{
};

// The handle stays with the manager; all else reaches the device.
Call withoutHandle(Call call)
{
    call.arguments.erase(call.arguments.begin());
    return call;
}

std::unique_ptr<BaseDeviceSpace::DeviceInterface> deviceLacking(Reached capability,
                                                                const Listener &listener)
{
    switch (capability) {
    case Reached::Device:
        break;
    case Reached::Camera:
        return std::make_unique<FakeDevice<FakeController, FakeMotor, FakeProjector>>(listener);
    case Reached::Controller:
        return std::make_unique<FakeDevice<FakeCamera, FakeMotor, FakeProjector>>(listener);
    case Reached::Motor:
        return std::make_unique<FakeDevice<FakeCamera, FakeController, FakeProjector>>(listener);
    case Reached::Projector:
        return std::make_unique<FakeDevice<FakeCamera, FakeController, FakeMotor>>(listener);
    }
    return nullptr;
}

} // namespace

TEST(HandleCheckedOperations, AreThirtyThree)
{
    std::set<std::string> names;
    for (const Operation &operation : operations)
        names.insert(operation.name);
    EXPECT_EQ(names.size(), 33u);
}

INSTANTIATE_TEST_SUITE_P(All, HandleCheckedOperation, ::testing::ValuesIn(operations), nameOf);
INSTANTIATE_TEST_SUITE_P(All, CapabilityOperation, ::testing::ValuesIn(capabilityOperations()),
                         nameOf);

TEST_P(HandleCheckedOperation, PassesEveryArgumentUnchangedAndLogsNothing)
{
    CompleteDevice device(answering(Success));
    const DeviceHandle handle = lend(device);
    const Outcome<ErrorCode> outcome = callOn(handle);
    EXPECT_EQ(outcome.result, Success);
    EXPECT_EQ(calls, std::vector{withoutHandle(outcome.call)});
    EXPECT_TRUE(outcome.argumentsUntouched); // the fake writes nothing, nor must the manager
    EXPECT_EQ(log.lines(), std::vector<LogLine>());
}

TEST_P(HandleCheckedOperation, PassesTheExtremesOfEveryArgument)
{
    CompleteDevice device(answering(Success));
    const Outcome<ErrorCode> outcome = callOn(lend(device), Sample::Extreme);
    EXPECT_EQ(calls, std::vector{withoutHandle(outcome.call)});
}

TEST_P(HandleCheckedOperation, HandsOutThePluginsOwnCode)
{
    CompleteDevice device(answering(ownCode));
    const DeviceHandle handle = lend(device);
    EXPECT_EQ(callOn(handle).result, ownCode);
    EXPECT_EQ(log.lines(), std::vector<LogLine>());
}

TEST_P(HandleCheckedOperation, RefusesAnUnknownHandle)
{
    CompleteDevice device(answering(Success));
    const DeviceHandle handle = lend(device);
    expectRefusal(handle + 1);
}

TEST_P(HandleCheckedOperation, RefusesAHandleWhoseDeviceIsDeleted)
{
    CompleteDevice device(answering(Success));
    const DeviceHandle handle = lend(device);
    ASSERT_EQ(manager->deleteDevice(handle), Success);
    expectRefusal(handle);
}

TEST_P(HandleCheckedOperation, RefusesHandleZero)
{
    expectRefusal(0);
}

TEST_P(HandleCheckedOperation, RefusesHandleMinusOne)
{
    expectRefusal(-1);
}

TEST_P(HandleCheckedOperation, RefusesHandleZeroEvenWhenAFactoryGaveNull)
{
    loadFixture(QStringLiteral("NullDevice"));
    ASSERT_EQ(createFixtureDevice(QStringLiteral("NullDevice")), 0);
    expectRefusal(0);
}

TEST_P(HandleCheckedOperation, RefusesAHandleOfAnotherManager)
{
    CompleteDevice device(answering(Success));
    const DeviceHandle handle = lend(device);
    DeviceManager other;
    log.clear();
    EXPECT_EQ(GetParam().invoke(other, handle, Sample::Plain).result, HandleInvalid);
    EXPECT_TRUE(calls.empty());
    EXPECT_EQ(log.lines().size(), 1u);
}

TEST_P(HandleCheckedOperation, RefusesInSilenceWithCriticalLinesOff)
{
    const CriticalLinesOff off;
    EXPECT_EQ(callOn(1).result, HandleInvalid);
    EXPECT_EQ(log.lines(), std::vector<LogLine>());
}

TEST_P(HandleCheckedOperation, LetsAnExceptionOfThePluginPass)
{
    CompleteDevice device([](const Call &) -> ErrorCode { throw std::out_of_range("lens cap"); });
    const DeviceHandle handle = lend(device);
    try {
        callOn(handle);
        FAIL() << "nothing thrown";
    } catch (const std::out_of_range &exception) {
        EXPECT_STREQ(exception.what(), "lens cap");
    }
    EXPECT_EQ(log.lines(), std::vector<LogLine>());
}

TEST_P(CapabilityOperation, RefusesADeviceWithoutTheCapability)
{
    const auto device = deviceLacking(GetParam().reached, answering(Success));
    const DeviceHandle handle = lend(*device);
    expectRefusal(handle);
}

TEST_P(CapabilityOperation, RefusesADeviceWithNoCapabilityAtAll)
{
    BareDevice device(answering(Success));
    const DeviceHandle handle = lend(device);
    expectRefusal(handle);
}

// A base operation needs no capability.
using BaseOperation = DeviceTest;

TEST_F(BaseOperation, WorksOnADeviceWithNoCapability)
{
    BareDevice device([](const Call &) { return ownCode; });
    const DeviceHandle handle = lend(device);
    QMap<QString, QVariant> values;
    EXPECT_EQ(manager->name(handle), qMakePair(Success, QStringLiteral("fake")));
    EXPECT_EQ(manager->types(handle).first, Success);
    EXPECT_EQ(manager->connectDeviceByIndex(handle, 0), ownCode);
    EXPECT_EQ(manager->getProperty(handle, QStringLiteral("any"), values), ownCode);
    EXPECT_EQ(manager->setProperty(handle, QStringLiteral("any"), values), ownCode);
    EXPECT_EQ(log.lines(), std::vector<LogLine>());
}
