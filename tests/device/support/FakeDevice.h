#ifndef KVSYNC_TESTS_FAKEDEVICE_H
#define KVSYNC_TESTS_FAKEDEVICE_H

#include "device/support/Call.h"

#include "KvSyncDevice/CameraInterface.h"
#include "KvSyncDevice/ControllerInterface.h"
#include "KvSyncDevice/DeviceInterface.h"
#include "KvSyncDevice/MotorInterface.h"
#include "KvSyncDevice/ProjectorInterface.h"

#include <functional>
#include <utility>

namespace KvSyncTest {

/// Hears of every call of a fake device, and answers it.
using Listener = std::function<ErrorCode(const Call &)>;

inline ErrorCode succeed(const Call & /*call*/)
{
    return Success;
}

using Values = QMap<QString, QVariant>;

class FakeBase : public BaseDeviceSpace::DeviceInterface
{
public:
    explicit FakeBase(Listener listener)
        : answer(std::move(listener))
    {
    }

    QString name() override
    {
        answer(received("name"));
        return "fake";
    }

    QFlags<BaseDeviceSpace::DeviceType> types() override
    {
        answer(received("types"));
        return BaseDeviceSpace::CameraDevice | BaseDeviceSpace::ControllerDevice;
    }

    ErrorCode connectDeviceByIndex(int index) override
    {
        return answer(received("connectDeviceByIndex", index));
    }

    ErrorCode getProperty(const QString &property, Values &values) override
    {
        return answer(received("getProperty", &property, &values));
    }

    ErrorCode setProperty(const QString &property, const Values &values) override
    {
        return answer(received("setProperty", &property, &values));
    }

private:
    const Listener answer;
};

class FakeCamera : public CameraSpace::CameraInterface
{
public:
    explicit FakeCamera(Listener listener)
        : answer(std::move(listener))
    {
    }

    ErrorCode getExposureTimeRange(unsigned int &minimum, unsigned int &maximum,
                                   signed char selector) override
    {
        return answer(received("getExposureTimeRange", &minimum, &maximum, selector));
    }

    ErrorCode getGainRange(unsigned short &minimum, unsigned int &maximum,
                           signed char selector) override
    {
        return answer(received("getGainRange", &minimum, &maximum, selector));
    }

    ErrorCode getMaxImageSize(unsigned int &width, unsigned int &height,
                              signed char selector) override
    {
        return answer(received("getMaxImageSize", &width, &height, selector));
    }

    ErrorCode setInterestSize(unsigned int width, unsigned int height,
                              signed char selector) override
    {
        return answer(received("setInterestSize", width, height, selector));
    }

    ErrorCode getInterestSize(unsigned int &width, unsigned int &height,
                              signed char selector) override
    {
        return answer(received("getInterestSize", &width, &height, selector));
    }

    ErrorCode setAOIOffset(unsigned int x, unsigned int y, signed char selector) override
    {
        return answer(received("setAOIOffset", x, y, selector));
    }

    ErrorCode getAOIOffset(unsigned int &x, unsigned int &y, signed char selector) override
    {
        return answer(received("getAOIOffset", &x, &y, selector));
    }

    ErrorCode getPixelFormat(CameraSpace::PixelFormatType &format, signed char selector) override
    {
        return answer(received("getPixelFormat", &format, selector));
    }

    ErrorCode setTriggerMode(CameraSpace::TriggerMode mode, signed char selector) override
    {
        return answer(received("setTriggerMode", mode, selector));
    }

    ErrorCode getTriggerMode(CameraSpace::TriggerMode &mode, signed char selector) override
    {
        return answer(received("getTriggerMode", &mode, selector));
    }

    ErrorCode discardFrames(signed char selector) override
    {
        return answer(received("discardFrames", selector));
    }

    ErrorCode startStream(signed char selector) override
    {
        return answer(received("startStream", selector));
    }

    ErrorCode stopStream(signed char selector) override
    {
        return answer(received("stopStream", selector));
    }

private:
    const Listener answer;
};

class FakeController : public ControllerSpace::ControllerInterface
{
public:
    explicit FakeController(Listener listener)
        : answer(std::move(listener))
    {
    }

    ErrorCode updateFireware(ControllerSpace::FirewareType type, const QByteArray &image) override
    {
        return answer(received("updateFireware", type, &image));
    }

    ErrorCode sendCommand(ControllerSpace::CmdType type, const QByteArray &payload) override
    {
        return answer(received("sendCommand", type, &payload));
    }

    ErrorCode readCommand(ControllerSpace::CmdType type, QByteArray &reply) override
    {
        return answer(received("readCommand", type, &reply));
    }

    ErrorCode lockCommandChannel() override { return answer(received("lockCommandChannel")); }

    ErrorCode unlockCommandChannel() override { return answer(received("unlockCommandChannel")); }

private:
    const Listener answer;
};

class FakeMotor : public MotorSpace::MotorInterface
{
public:
    explicit FakeMotor(Listener listener)
        : answer(std::move(listener))
    {
    }

    ErrorCode rotate(const QList<MotorSpace::RotateInfo> &movements) override
    {
        return answer(received("rotate", &movements));
    }

    ErrorCode waitMotorStop(const QList<MotorSpace::AxisType> &axes) override
    {
        return answer(received("waitMotorStop", &axes));
    }

    ErrorCode resetMotor(const QList<MotorSpace::AxisType> &axes) override
    {
        return answer(received("resetMotor", &axes));
    }

    ErrorCode stopMotor(const QList<MotorSpace::AxisType> &axes) override
    {
        return answer(received("stopMotor", &axes));
    }

private:
    const Listener answer;
};

class FakeProjector : public ProjectorSpace::ProjectorInterface
{
public:
    explicit FakeProjector(Listener listener)
        : answer(std::move(listener))
    {
    }

    ErrorCode projectorPWM(bool on) override { return answer(received("projectorPWM", on)); }

    ErrorCode currentProjectorPWM(bool &on) override
    {
        return answer(received("currentProjectorPWM", &on));
    }

    ErrorCode projectorLEDSwitch(bool on) override
    {
        return answer(received("projectorLEDSwitch", on));
    }

    ErrorCode currentProjectorLEDSwitch(bool &on) override
    {
        return answer(received("currentProjectorLEDSwitch", &on));
    }

    ErrorCode setProjectorLuminance(unsigned char red, unsigned char green,
                                    unsigned char blue) override
    {
        return answer(received("setProjectorLuminance", red, green, blue));
    }

    ErrorCode getProjectorLuminance(unsigned char &red, unsigned char &green,
                                    unsigned char &blue) override
    {
        return answer(received("getProjectorLuminance", &red, &green, &blue));
    }

    ErrorCode scan(ProjectorSpace::ScanType type, bool on) override
    {
        return answer(received("scan", type, on));
    }

    ErrorCode writePatternToFlash(ProjectorSpace::MajorPatternType major,
                                  ProjectorSpace::SubPatternType sub, int index, int width,
                                  int height, const QByteArray &pattern) override
    {
        return answer(received("writePatternToFlash", major, sub, index, width, height, &pattern));
    }

private:
    const Listener answer;
};

/// A device with exactly the named capabilities.
template <typename... Capabilities>
class FakeDevice final : public FakeBase, public Capabilities...
{
public:
    explicit FakeDevice(const Listener &listener)
        : FakeBase(listener)
        , Capabilities(listener)...
    {
    }
};

using CompleteDevice = FakeDevice<FakeCamera, FakeController, FakeMotor, FakeProjector>;
using BareDevice = FakeDevice<>;

} // namespace KvSyncTest

#endif
