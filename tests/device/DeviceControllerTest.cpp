// The exported controller alone: the list of its operations, and that each reaches the manager's
// operation of the same name, with its arguments and its result as they are.

#include "KvSyncCore/DeviceController.h"
#include "device/support/FakeDeviceManager.h"
#include "support/LogCapture.h"

#include <gtest/gtest.h>

#include <functional>
#include <set>
#include <type_traits>

namespace {

using namespace KvSyncTest;
using KvSyncCore::DeviceController;
using KvSyncCore::DeviceManager;

using CodeAndCount = QPair<ErrorCode, int>;
using CodeAndHandle = QPair<ErrorCode, qint64>;
using CodeAndText = QPair<ErrorCode, QString>;
using CodeAndTypes = QPair<ErrorCode, QFlags<BaseDeviceSpace::DeviceType>>;
using Values = QMap<QString, QVariant>;

/// What one call through the controller came to.
struct Forwarding
{
    Call made;
    std::vector<Call> arrived;
    bool cameFromTheRightManager;
    bool resultIsTheManagers;
    std::vector<LogLine> lines;
};

struct Operation
{
    const char *name;
    std::function<Forwarding(Sample)> forward;
};

void PrintTo(const Operation &operation, std::ostream *stream)
{
    *stream << operation.name;
}

constexpr DeviceHandle someHandle = Q_INT64_C(0x7654321012345678);

template <typename Result, typename... Parameters>
Forwarding forwardingOf(const char *name, Result (DeviceController::*operation)(Parameters...),
                        Sample sample)
{
    const LogCapture log;
    DeviceManager manager;
    DeviceController controller(&manager);
    takeManagerCalls();
    const Outcome<Result> outcome = invoke(controller, name, operation, someHandle, sample);
    Forwarding forwarding{outcome.call, {}, true, outcome.result == answer<Result>(), log.lines()};
    for (const auto &[receiver, call] : takeManagerCalls()) {
        forwarding.arrived.push_back(call);
        forwarding.cameFromTheRightManager &= receiver == &manager;
    }
    return forwarding;
}

// The member pointer's type holds every argument type and width at compile time.
template <auto operation, typename Result, typename... Parameters>
Operation exactly(const char *name)
{
    static_assert(std::is_same_v<decltype(operation), Result (DeviceController::*)(Parameters...)>);
    return {name, [name](Sample sample) { return forwardingOf(name, operation, sample); }};
}

#define OPERATION(name, ...) exactly<&DeviceController::name, __VA_ARGS__>(#name)

const std::vector<Operation> operations = {
    OPERATION(loadDevicePlugin, ErrorCode, QString, QVersionNumber),
    OPERATION(enumDevice, CodeAndCount, const QString &, const QVersionNumber &),
    OPERATION(createDevice, CodeAndHandle, const QString &, const QVersionNumber &),
    OPERATION(deleteDevice, ErrorCode, DeviceHandle),
    OPERATION(name, CodeAndText, DeviceHandle),
    OPERATION(types, CodeAndTypes, DeviceHandle),
    OPERATION(connectDeviceByIndex, ErrorCode, DeviceHandle, int),
    OPERATION(getProperty, ErrorCode, DeviceHandle, const QString &, Values &),
    OPERATION(setProperty, ErrorCode, DeviceHandle, const QString &, const Values &),
    OPERATION(getExposureTimeRange, ErrorCode, DeviceHandle, unsigned int &, unsigned int &,
              signed char),
    OPERATION(getGainRange, ErrorCode, DeviceHandle, unsigned short &, unsigned int &, signed char),
    OPERATION(getMaxImageSize, ErrorCode, DeviceHandle, unsigned int &, unsigned int &,
              signed char),
    OPERATION(setInterestSize, ErrorCode, DeviceHandle, unsigned int, unsigned int, signed char),
    OPERATION(getInterestSize, ErrorCode, DeviceHandle, unsigned int &, unsigned int &,
              signed char),
    OPERATION(setAOIOffset, ErrorCode, DeviceHandle, unsigned int, unsigned int, signed char),
    OPERATION(getAOIOffset, ErrorCode, DeviceHandle, unsigned int &, unsigned int &, signed char),
    OPERATION(getPixelFormat, ErrorCode, DeviceHandle, CameraSpace::PixelFormatType &, signed char),
    OPERATION(setTriggerMode, ErrorCode, DeviceHandle, CameraSpace::TriggerMode, signed char),
    OPERATION(getTriggerMode, ErrorCode, DeviceHandle, CameraSpace::TriggerMode &, signed char),
    OPERATION(discardFrames, ErrorCode, DeviceHandle, signed char),
    OPERATION(startStream, ErrorCode, DeviceHandle, signed char),
    OPERATION(stopStream, ErrorCode, DeviceHandle, signed char),
    OPERATION(updateFireware, ErrorCode, DeviceHandle, ControllerSpace::FirewareType,
              const QByteArray &),
    OPERATION(sendCommand, ErrorCode, DeviceHandle, ControllerSpace::CmdType, const QByteArray &),
    OPERATION(readCommand, ErrorCode, DeviceHandle, ControllerSpace::CmdType, QByteArray &),
    OPERATION(lockCommandChannel, ErrorCode, DeviceHandle),
    OPERATION(unlockCommandChannel, ErrorCode, DeviceHandle),
    OPERATION(rotate, ErrorCode, DeviceHandle, const QList<MotorSpace::RotateInfo> &),
    OPERATION(waitMotorStop, ErrorCode, DeviceHandle, const QList<MotorSpace::AxisType> &),
    OPERATION(resetMotor, ErrorCode, DeviceHandle, const QList<MotorSpace::AxisType> &),
    OPERATION(stopMotor, ErrorCode, DeviceHandle, const QList<MotorSpace::AxisType> &),
    OPERATION(projectorPWM, ErrorCode, DeviceHandle, bool),
    OPERATION(currentProjectorPWM, ErrorCode, DeviceHandle, bool &),
    OPERATION(projectorLEDSwitch, ErrorCode, DeviceHandle, bool),
    OPERATION(currentProjectorLEDSwitch, ErrorCode, DeviceHandle, bool &),
    OPERATION(setProjectorLuminance, ErrorCode, DeviceHandle, unsigned char, unsigned char,
              unsigned char),
    OPERATION(getProjectorLuminance, ErrorCode, DeviceHandle, unsigned char &, unsigned char &,
              unsigned char &),
    OPERATION(scan, ErrorCode, DeviceHandle, ProjectorSpace::ScanType, bool),
    OPERATION(writePatternToFlash, ErrorCode, DeviceHandle, ProjectorSpace::MajorPatternType,
              ProjectorSpace::SubPatternType, int, int, int, const QByteArray &),
    OPERATION(connectDeviceBySerial, ErrorCode, DeviceHandle, const QString &),
    OPERATION(reconnectDevice, ErrorCode, DeviceHandle),
    OPERATION(disconnectDevice, ErrorCode, DeviceHandle),
    OPERATION(isConnectedOnU3, ErrorCode, const QString &, bool &),
    OPERATION(getFirewareVersion, ErrorCode, const QString &, const QString &, QString &),
    OPERATION(getCamerasInformation, ErrorCode, const QString &, QStringList &, QVector<int> &,
              QVector<int> &, QVector<bool> &, int &),
    OPERATION(getCameraCount, ErrorCode, const QString &, int &),
    OPERATION(getStatusDescriptionString, ErrorCode, const int &, QString &),
    OPERATION(getConnectCameraCount, ErrorCode, int &),
    OPERATION(getCameraSerialNumber, ErrorCode, const int &, QString &),
    OPERATION(getCameraResolution, ErrorCode, const int &, int &, int &),
    OPERATION(setScanCallback, ErrorCode, DeviceHandle, void *, void *),
    OPERATION(setStatusCallback, ErrorCode, DeviceHandle, void *, void *),
    OPERATION(startScan, ErrorCode, Values &),
    OPERATION(stopScan, ErrorCode),
    OPERATION(executeCommand, ErrorCode, DeviceHandle, const QString &, Values &),
    OPERATION(setGainAndExpo, ErrorCode, DeviceHandle, unsigned short, double, signed char),
    OPERATION(getGainAndExpo, ErrorCode, DeviceHandle, unsigned short &, double &, signed char),
    OPERATION(setExopsureTime, ErrorCode, DeviceHandle, double, signed char),
    OPERATION(getExposureTime, ErrorCode, DeviceHandle, double &, signed char),
    OPERATION(setGain, ErrorCode, DeviceHandle, unsigned short, signed char),
    OPERATION(getGain, ErrorCode, DeviceHandle, unsigned short &, signed char),
    OPERATION(setVideoTriggerPeriod, ErrorCode, int),
    OPERATION(getVideoTriggerPeriod, ErrorCode, int &),
    OPERATION(setStrobeDutioRatio, ErrorCode, const int &, const int &, const int &),
    OPERATION(getStrobeDutioRatio, ErrorCode, int &, int &, int &),
    OPERATION(setProjectDutioRatio, ErrorCode, int),
    OPERATION(getProjectDutioRatio, ErrorCode, int &),
    OPERATION(setProjectorBrightness, ErrorCode, int),
    OPERATION(getProjectorBrightness, ErrorCode, int &),
    OPERATION(getLaserLineDutioRatio, ErrorCode, int &),
    OPERATION(getIRLaserDutioRatio, ErrorCode, int &),
    OPERATION(setDistanceIndicate, ErrorCode, int),
    OPERATION(grabImage, ErrorCode, DeviceHandle, unsigned int, QList<CameraSpace::ImageBlock *> &),
    OPERATION(writeCustomInfo, ErrorCode, DeviceHandle, unsigned int, const QByteArray &),
    OPERATION(readCustomInfo, ErrorCode, DeviceHandle, unsigned int, QByteArray &),
    OPERATION(project, ErrorCode, DeviceHandle, ProjectorSpace::MajorPatternType,
              ProjectorSpace::SubPatternType),
};

// The three that are not plain forwarding.
Call expectedCall(Call call)
{
    if (call.operation == "executeCommand")
        call.arguments.erase(call.arguments.begin());
    if (call.operation == "setProjectorBrightness")
        call.operation = "SetProjectorBrightness";
    return call;
}

std::string nameOf(const ::testing::TestParamInfo<Operation> &info)
{
    return info.param.name;
}

class DeviceControllerOperation : public ::testing::TestWithParam<Operation>
{
};

INSTANTIATE_TEST_SUITE_P(All, DeviceControllerOperation, ::testing::ValuesIn(operations), nameOf);

TEST_P(DeviceControllerOperation, ReachesTheManagerWithArgumentsAndResultUnchanged)
{
    const Forwarding forwarding = GetParam().forward(Sample::Plain);
    EXPECT_EQ(forwarding.arrived, std::vector{expectedCall(forwarding.made)});
    EXPECT_TRUE(forwarding.cameFromTheRightManager);
    EXPECT_TRUE(forwarding.resultIsTheManagers);
}

TEST_P(DeviceControllerOperation, PassesTheExtremesOfEveryArgument)
{
    const Forwarding forwarding = GetParam().forward(Sample::Extreme);
    EXPECT_EQ(forwarding.arrived, std::vector{expectedCall(forwarding.made)});
}

TEST_P(DeviceControllerOperation, LogsNothingItself)
{
    EXPECT_EQ(GetParam().forward(Sample::Plain).lines, std::vector<LogLine>());
}

TEST(DeviceControllerOperations, AreSeventySix)
{
    std::set<std::string> names;
    for (const Operation &operation : operations)
        names.insert(operation.name);
    EXPECT_EQ(names.size(), 76u);
}

TEST(DeviceControllerBinding, IsOnePointerWithoutVirtualOperations)
{
    EXPECT_EQ(sizeof(DeviceController), sizeof(void *));
    EXPECT_FALSE(std::is_polymorphic_v<DeviceController>);
    EXPECT_FALSE((std::is_convertible_v<DeviceManager *, DeviceController>));
    EXPECT_FALSE(std::is_copy_constructible_v<DeviceManager>);
    EXPECT_FALSE(std::is_copy_assignable_v<DeviceManager>);
}

TEST(DeviceControllerBinding, ConstructionDoesNothingEvenWithANullManager)
{
    takeManagerCalls();
    {
        const DeviceController controller(nullptr);
    }
    EXPECT_TRUE(takeManagerCalls().empty());
}

TEST(DeviceControllerBinding, ExecuteCommandDropsAnyHandle)
{
    DeviceManager manager;
    DeviceController controller(&manager);
    Values values;
    for (const DeviceHandle handle : {DeviceHandle(0), DeviceHandle(-1), someHandle}) {
        takeManagerCalls();
        EXPECT_EQ(controller.executeCommand(handle, "Project", values), answer<ErrorCode>());
        const auto calls = takeManagerCalls();
        ASSERT_EQ(calls.size(), 1u);
        EXPECT_EQ(calls.front().second.arguments.size(), 2u);
    }
}

TEST(DeviceControllerBinding, AssignmentForwardsToTheSourcesManager)
{
    DeviceManager first;
    DeviceManager second;
    DeviceController target(&first);
    DeviceController source(&second);
    takeManagerCalls();
    EXPECT_EQ(&(target = source), &target);
    target.stopScan();
    source.stopScan();
    const auto calls = takeManagerCalls();
    ASSERT_EQ(calls.size(), 2u);
    EXPECT_EQ(calls[0].first, &second);
    EXPECT_EQ(calls[1].first, &second);
}

TEST(DeviceControllerBinding, ACopyForwardsToTheSameManager)
{
    DeviceManager manager;
    const DeviceController source(&manager);
    DeviceController copy(source);
    takeManagerCalls();
    copy.stopScan();
    const auto calls = takeManagerCalls();
    ASSERT_EQ(calls.size(), 1u);
    EXPECT_EQ(calls.front().first, &manager);
}

} // namespace
