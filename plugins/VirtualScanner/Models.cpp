#include "Models.h"

#include "VirtualCamera.h"
#include "VirtualController.h"
#include "VirtualMotor.h"
#include "VirtualProjector.h"

#include <array>

namespace VirtualScanner {

namespace {

using namespace BaseDeviceSpace;

// A device offers exactly the capabilities that its class derives from: the core asks by
// cross-cast. VirtualDevice stands first, so that its gate lives before the capabilities use it.

class Scanner final : public VirtualDevice,
                      public VirtualCamera,
                      public VirtualProjector,
                      public VirtualMotor,
                      public VirtualController
{
public:
    explicit Scanner(int index)
        : VirtualDevice(index, QStringLiteral("Virtual scanner"),
                        CameraDevice | ProjectorDevice | MotorDevice | ControllerDevice)
        , VirtualCamera(deviceGate, deviceProperties, 2)
        , VirtualProjector(deviceGate, deviceProperties)
        , VirtualMotor(deviceGate, deviceProperties,
                       {MotorSpace::TurntableAxis, MotorSpace::TiltAxis})
        , VirtualController(deviceGate, deviceProperties)
    {
    }
};

class SingleCamera final : public VirtualDevice, public VirtualCamera
{
public:
    explicit SingleCamera(int index)
        : VirtualDevice(index, QStringLiteral("Virtual camera"), CameraDevice)
        , VirtualCamera(deviceGate, deviceProperties, 1)
    {
    }
};

class Turntable final : public VirtualDevice, public VirtualMotor
{
public:
    explicit Turntable(int index)
        : VirtualDevice(index, QStringLiteral("Virtual turntable"), MotorDevice)
        , VirtualMotor(deviceGate, deviceProperties, {MotorSpace::TurntableAxis})
    {
    }
};

class Marker final : public VirtualDevice
{
public:
    explicit Marker(int index)
        : VirtualDevice(index, QStringLiteral("Virtual marker"), {})
    {
    }
};

template <typename Device>
DevicePointer make(int index)
{
    return DevicePointer(new Device(index));
}

const std::array makers = {&make<Scanner>, &make<SingleCamera>, &make<Turntable>, &make<Marker>};

} // namespace

int modelCount()
{
    return static_cast<int>(makers.size());
}

DevicePointer makeDevice(int index)
{
    return makers.at(static_cast<std::size_t>(index))(index);
}

} // namespace VirtualScanner
