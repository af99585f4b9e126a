#ifndef KVSYNC_TESTS_FAKEDEVICE_H
#define KVSYNC_TESTS_FAKEDEVICE_H

#include "device/support/Call.h"

#include "KvSyncDevice/CameraInterface.h"
#include "KvSyncDevice/ControllerInterface.h"
#include "KvSyncDevice/DeviceInterface.h"
#include "KvSyncDevice/MotorInterface.h"
#include "KvSyncDevice/ProjectorInterface.h"

#include <functional>

namespace KvSyncTest {

/// Hears of every call of a fake device, and answers it.
using Listener = std::function<ErrorCode(const Call &)>;

using Values = QMap<QString, QVariant>;

class FakeBase : public BaseDeviceSpace::DeviceInterface
{
public:
    explicit FakeBase(Listener listener);

    QString name() override;
    QFlags<BaseDeviceSpace::DeviceType> types() override;
    ErrorCode connectDeviceByIndex(int index) override;
    ErrorCode getProperty(const QString &property, Values &values) override;
    ErrorCode setProperty(const QString &property, const Values &values) override;

private:
    const Listener answer;
};

class FakeCamera : public CameraSpace::CameraInterface
{
public:
    explicit FakeCamera(Listener listener);

    ErrorCode getExposureTimeRange(unsigned int &minimum, unsigned int &maximum,
                                   signed char selector) override;
    ErrorCode getGainRange(unsigned short &minimum, unsigned int &maximum,
                           signed char selector) override;
    ErrorCode getMaxImageSize(unsigned int &width, unsigned int &height,
                              signed char selector) override;
    ErrorCode setInterestSize(unsigned int width, unsigned int height,
                              signed char selector) override;
    ErrorCode getInterestSize(unsigned int &width, unsigned int &height,
                              signed char selector) override;
    ErrorCode setAOIOffset(unsigned int x, unsigned int y, signed char selector) override;
    ErrorCode getAOIOffset(unsigned int &x, unsigned int &y, signed char selector) override;
    ErrorCode getPixelFormat(CameraSpace::PixelFormatType &format, signed char selector) override;
    ErrorCode setTriggerMode(CameraSpace::TriggerMode mode, signed char selector) override;
    ErrorCode getTriggerMode(CameraSpace::TriggerMode &mode, signed char selector) override;
    ErrorCode discardFrames(signed char selector) override;
    ErrorCode startStream(signed char selector) override;
    ErrorCode stopStream(signed char selector) override;

private:
    const Listener answer;
};

class FakeController : public ControllerSpace::ControllerInterface
{
public:
    explicit FakeController(Listener listener);

    ErrorCode updateFireware(ControllerSpace::FirewareType type, const QByteArray &image) override;
    ErrorCode sendCommand(ControllerSpace::CmdType type, const QByteArray &payload) override;
    ErrorCode readCommand(ControllerSpace::CmdType type, QByteArray &reply) override;
    ErrorCode lockCommandChannel() override;
    ErrorCode unlockCommandChannel() override;

private:
    const Listener answer;
};

class FakeMotor : public MotorSpace::MotorInterface
{
public:
    explicit FakeMotor(Listener listener);

    ErrorCode rotate(const QList<MotorSpace::RotateInfo> &movements) override;
    ErrorCode waitMotorStop(const QList<MotorSpace::AxisType> &axes) override;
    ErrorCode resetMotor(const QList<MotorSpace::AxisType> &axes) override;
    ErrorCode stopMotor(const QList<MotorSpace::AxisType> &axes) override;

private:
    const Listener answer;
};

class FakeProjector : public ProjectorSpace::ProjectorInterface
{
public:
    explicit FakeProjector(Listener listener);

    ErrorCode projectorPWM(bool on) override;
    ErrorCode currentProjectorPWM(bool &on) override;
    ErrorCode projectorLEDSwitch(bool on) override;
    ErrorCode currentProjectorLEDSwitch(bool &on) override;
    ErrorCode setProjectorLuminance(unsigned char red, unsigned char green,
                                    unsigned char blue) override;
    ErrorCode getProjectorLuminance(unsigned char &red, unsigned char &green,
                                    unsigned char &blue) override;
    ErrorCode scan(ProjectorSpace::ScanType type, bool on) override;
    ErrorCode writePatternToFlash(ProjectorSpace::MajorPatternType major,
                                  ProjectorSpace::SubPatternType sub, int index, int width,
                                  int height, const QByteArray &pattern) override;

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
