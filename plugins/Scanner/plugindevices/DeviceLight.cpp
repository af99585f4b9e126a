#include "DeviceLight.h"

#include "NamedRow.h"

namespace Scanner {

using namespace BaseDeviceSpace;
using KvSyncCore::DeviceController;

namespace {

struct Sequence
{
    QLatin1String name;
    ErrorCode (*run)(DeviceController &controller, qint64 handle);
};

template <ProjectorSpace::ScanType type>
ErrorCode start(DeviceController &c, qint64 handle)
{
    const ErrorCode result = c.projectorLEDSwitch(handle, true);
    return result == Success ? c.scan(handle, type, true) : result;
}

ErrorCode darken(DeviceController &c, qint64 handle)
{
    const ErrorCode results[] = {c.scan(handle, ProjectorSpace::SingleScan, false),
                                 c.scan(handle, ProjectorSpace::ContinuousScan, false),
                                 c.projectorLEDSwitch(handle, false)};
    for (const ErrorCode result : results) {
        if (result != Success)
            return result;
    }
    return Success;
}

const Sequence sequences[] = {
    {QLatin1String("off"), darken},
    {QLatin1String("single"), start<ProjectorSpace::SingleScan>},
    {QLatin1String("continuous"), start<ProjectorSpace::ContinuousScan>},
};

ErrorCode reserveChannel(DeviceController &c, qint64 handle, bool on)
{
    return on ? c.lockCommandChannel(handle) : c.unlockCommandChannel(handle);
}

struct Flag
{
    QLatin1String name;
    DeviceType capability;
    ErrorCode (*set)(DeviceController &controller, qint64 handle, bool on);
};

const Flag flags[] = {
    {QLatin1String("projectorPwm"), ProjectorDevice,
     [](DeviceController &c, qint64 handle, bool on) { return c.projectorPWM(handle, on); }},
    {QLatin1String("projectorLed"), ProjectorDevice,
     [](DeviceController &c, qint64 handle, bool on) { return c.projectorLEDSwitch(handle, on); }},
    {QLatin1String("commandChannel"), ControllerDevice, reserveChannel},
};

} // namespace

void runProjector(OpenDevice &device, const QString &name)
{
    device.require(ProjectorDevice);
    const Sequence &sequence = rowNamed(sequences, name, QStringLiteral("pattern"));
    check(device.call(sequence.run),
          QStringLiteral("The device refuses to project \"%1\"").arg(name));
}

void switchDeviceFlag(OpenDevice &device, const QString &name, bool on)
{
    const Flag &flag = rowNamed(flags, name, QStringLiteral("flag"));
    device.require(flag.capability);
    check(device.call([&](DeviceController &c, qint64 handle) { return flag.set(c, handle, on); }),
          QStringLiteral("The device refuses to switch \"%1\"").arg(name));
}

void switchProjectorOff(OpenDevice &device)
{
    runProjector(device, QStringLiteral("off"));
    switchDeviceFlag(device, QStringLiteral("projectorPwm"), false);
}

} // namespace Scanner
