#include "device/support/FakeDevice.h"

#include <utility>

namespace KvSyncTest {

FakeBase::FakeBase(Listener listener)
    : answer(std::move(listener))
{
}

QString FakeBase::name()
{
    answer(received("name"));
    return "fake";
}

QFlags<BaseDeviceSpace::DeviceType> FakeBase::types()
{
    answer(received("types"));
    return BaseDeviceSpace::CameraDevice | BaseDeviceSpace::ControllerDevice;
}

ErrorCode FakeBase::connectDeviceByIndex(int index)
{
    return answer(received("connectDeviceByIndex", index));
}

ErrorCode FakeBase::getProperty(const QString &property, Values &values)
{
    return answer(received("getProperty", &property, &values));
}

ErrorCode FakeBase::setProperty(const QString &property, const Values &values)
{
    return answer(received("setProperty", &property, &values));
}

FakeCamera::FakeCamera(Listener listener)
    : answer(std::move(listener))
{
}

ErrorCode FakeCamera::getExposureTimeRange(unsigned int &minimum, unsigned int &maximum,
                                           signed char selector)
{
    return answer(received("getExposureTimeRange", &minimum, &maximum, selector));
}

ErrorCode FakeCamera::getGainRange(unsigned short &minimum, unsigned int &maximum,
                                   signed char selector)
{
    return answer(received("getGainRange", &minimum, &maximum, selector));
}

ErrorCode FakeCamera::getMaxImageSize(unsigned int &width, unsigned int &height,
                                      signed char selector)
{
    return answer(received("getMaxImageSize", &width, &height, selector));
}

ErrorCode FakeCamera::setInterestSize(unsigned int width, unsigned int height, signed char selector)
{
    return answer(received("setInterestSize", width, height, selector));
}

ErrorCode FakeCamera::getInterestSize(unsigned int &width, unsigned int &height,
                                      signed char selector)
{
    return answer(received("getInterestSize", &width, &height, selector));
}

ErrorCode FakeCamera::setAOIOffset(unsigned int x, unsigned int y, signed char selector)
{
    return answer(received("setAOIOffset", x, y, selector));
}

ErrorCode FakeCamera::getAOIOffset(unsigned int &x, unsigned int &y, signed char selector)
{
    return answer(received("getAOIOffset", &x, &y, selector));
}

ErrorCode FakeCamera::getPixelFormat(CameraSpace::PixelFormatType &format, signed char selector)
{
    return answer(received("getPixelFormat", &format, selector));
}

ErrorCode FakeCamera::setTriggerMode(CameraSpace::TriggerMode mode, signed char selector)
{
    return answer(received("setTriggerMode", mode, selector));
}

ErrorCode FakeCamera::getTriggerMode(CameraSpace::TriggerMode &mode, signed char selector)
{
    return answer(received("getTriggerMode", &mode, selector));
}

ErrorCode FakeCamera::discardFrames(signed char selector)
{
    return answer(received("discardFrames", selector));
}

ErrorCode FakeCamera::startStream(signed char selector)
{
    return answer(received("startStream", selector));
}

ErrorCode FakeCamera::stopStream(signed char selector)
{
    return answer(received("stopStream", selector));
}

FakeController::FakeController(Listener listener)
    : answer(std::move(listener))
{
}

ErrorCode FakeController::updateFireware(ControllerSpace::FirewareType type,
                                         const QByteArray &image)
{
    return answer(received("updateFireware", type, &image));
}

ErrorCode FakeController::sendCommand(ControllerSpace::CmdType type, const QByteArray &payload)
{
    return answer(received("sendCommand", type, &payload));
}

ErrorCode FakeController::readCommand(ControllerSpace::CmdType type, QByteArray &reply)
{
    return answer(received("readCommand", type, &reply));
}

ErrorCode FakeController::lockCommandChannel()
{
    return answer(received("lockCommandChannel"));
}

ErrorCode FakeController::unlockCommandChannel()
{
    return answer(received("unlockCommandChannel"));
}

FakeMotor::FakeMotor(Listener listener)
    : answer(std::move(listener))
{
}

ErrorCode FakeMotor::rotate(const QList<MotorSpace::RotateInfo> &movements)
{
    return answer(received("rotate", &movements));
}

ErrorCode FakeMotor::waitMotorStop(const QList<MotorSpace::AxisType> &axes)
{
    return answer(received("waitMotorStop", &axes));
}

ErrorCode FakeMotor::resetMotor(const QList<MotorSpace::AxisType> &axes)
{
    return answer(received("resetMotor", &axes));
}

ErrorCode FakeMotor::stopMotor(const QList<MotorSpace::AxisType> &axes)
{
    return answer(received("stopMotor", &axes));
}

FakeProjector::FakeProjector(Listener listener)
    : answer(std::move(listener))
{
}

ErrorCode FakeProjector::projectorPWM(bool on)
{
    return answer(received("projectorPWM", on));
}

ErrorCode FakeProjector::currentProjectorPWM(bool &on)
{
    return answer(received("currentProjectorPWM", &on));
}

ErrorCode FakeProjector::projectorLEDSwitch(bool on)
{
    return answer(received("projectorLEDSwitch", on));
}

ErrorCode FakeProjector::currentProjectorLEDSwitch(bool &on)
{
    return answer(received("currentProjectorLEDSwitch", &on));
}

ErrorCode FakeProjector::setProjectorLuminance(unsigned char red, unsigned char green,
                                               unsigned char blue)
{
    return answer(received("setProjectorLuminance", red, green, blue));
}

ErrorCode FakeProjector::getProjectorLuminance(unsigned char &red, unsigned char &green,
                                               unsigned char &blue)
{
    return answer(received("getProjectorLuminance", &red, &green, &blue));
}

ErrorCode FakeProjector::scan(ProjectorSpace::ScanType type, bool on)
{
    return answer(received("scan", type, on));
}

ErrorCode FakeProjector::writePatternToFlash(ProjectorSpace::MajorPatternType major,
                                             ProjectorSpace::SubPatternType sub, int index,
                                             int width, int height, const QByteArray &pattern)
{
    return answer(received("writePatternToFlash", major, sub, index, width, height, &pattern));
}

} // namespace KvSyncTest
