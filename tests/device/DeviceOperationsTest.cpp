// The thirty-three handle-checked operations, each against every condition.

#include "device/support/DeviceTest.h"
#include "device/support/HandleCheckedOperations.h"
#include "support/CriticalLinesOff.h"
#include "support/RowName.h"

#include <set>
#include <stdexcept>

namespace {

using namespace KvSyncTest;
using KvSyncCore::DeviceManager;
using Operation = HandleCheckedOperation;

std::vector<Operation> capabilityOperations()
{
    std::vector<Operation> chosen;
    for (const Operation &operation : handleCheckedOperations()) {
        if (operation.reached != Reached::Device)
            chosen.push_back(operation);
    }
    return chosen;
}

constexpr ErrorCode ownCode = static_cast<ErrorCode>(0x5A5A0042);

class EachOperation : public DeviceTest, public ::testing::WithParamInterface<Operation>
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

class CapabilityOperation : public EachOperation
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

TEST(HandleCheckedOperations, AreThirtyThree)
{
    std::set<std::string> names;
    for (const Operation &operation : handleCheckedOperations())
        names.insert(operation.name);
    EXPECT_EQ(names.size(), 33u);
}

INSTANTIATE_TEST_SUITE_P(HandleChecked, EachOperation,
                         ::testing::ValuesIn(handleCheckedOperations()), rowName);
INSTANTIATE_TEST_SUITE_P(HandleChecked, CapabilityOperation,
                         ::testing::ValuesIn(capabilityOperations()), rowName);

TEST_P(EachOperation, PassesEveryArgumentUnchangedAndLogsNothing)
{
    CompleteDevice device(answering(Success));
    const DeviceHandle handle = lend(device);
    const Outcome<ErrorCode> outcome = callOn(handle);
    EXPECT_EQ(outcome.result, Success);
    EXPECT_EQ(calls, std::vector{withoutHandle(outcome.call)});
    EXPECT_TRUE(outcome.argumentsUntouched); // the fake writes nothing, nor must the manager
    EXPECT_EQ(log.lines(), std::vector<LogLine>());
}

TEST_P(EachOperation, PassesTheExtremesOfEveryArgument)
{
    CompleteDevice device(answering(Success));
    const Outcome<ErrorCode> outcome = callOn(lend(device), Sample::Extreme);
    EXPECT_EQ(calls, std::vector{withoutHandle(outcome.call)});
}

TEST_P(EachOperation, HandsOutThePluginsOwnCode)
{
    CompleteDevice device(answering(ownCode));
    const DeviceHandle handle = lend(device);
    EXPECT_EQ(callOn(handle).result, ownCode);
    EXPECT_EQ(log.lines(), std::vector<LogLine>());
}

TEST_P(EachOperation, RefusesAnUnknownHandle)
{
    CompleteDevice device(answering(Success));
    const DeviceHandle handle = lend(device);
    expectRefusal(handle + 1);
}

TEST_P(EachOperation, RefusesAHandleWhoseDeviceIsDeleted)
{
    CompleteDevice device(answering(Success));
    const DeviceHandle handle = lend(device);
    ASSERT_EQ(manager->deleteDevice(handle), Success);
    expectRefusal(handle);
}

TEST_P(EachOperation, RefusesHandleZero)
{
    expectRefusal(0);
}

TEST_P(EachOperation, RefusesHandleMinusOne)
{
    expectRefusal(-1);
}

TEST_P(EachOperation, RefusesHandleZeroEvenWhenAFactoryGaveNull)
{
    loadFixture("NullDevice");
    ASSERT_EQ(createFixtureDevice("NullDevice"), 0);
    expectRefusal(0);
}

TEST_P(EachOperation, RefusesAHandleOfAnotherManager)
{
    CompleteDevice device(answering(Success));
    const DeviceHandle handle = lend(device);
    DeviceManager other;
    log.clear();
    EXPECT_EQ(GetParam().invoke(other, handle, Sample::Plain).result, HandleInvalid);
    EXPECT_TRUE(calls.empty());
    EXPECT_EQ(log.lines().size(), 1u);
}

TEST_P(EachOperation, RefusesInSilenceWithCriticalLinesOff)
{
    const CriticalLinesOff off;
    EXPECT_EQ(callOn(1).result, HandleInvalid);
    EXPECT_EQ(log.lines(), std::vector<LogLine>());
}

TEST_P(EachOperation, LetsAnExceptionOfThePluginPass)
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
    EXPECT_EQ(manager->name(handle), qMakePair(Success, QString("fake")));
    EXPECT_EQ(manager->types(handle).first, Success);
    EXPECT_EQ(manager->connectDeviceByIndex(handle, 0), ownCode);
    EXPECT_EQ(manager->getProperty(handle, "any", values), ownCode);
    EXPECT_EQ(manager->setProperty(handle, "any", values), ownCode);
    EXPECT_EQ(log.lines(), std::vector<LogLine>());
}

} // namespace
