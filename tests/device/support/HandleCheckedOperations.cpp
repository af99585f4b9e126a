#include "device/support/HandleCheckedOperations.h"

namespace KvSyncTest {

using KvSyncCore::DeviceManager;

namespace {

template <auto member>
HandleCheckedOperation operationOf(const char *name, Reached reached)
{
    return {name, reached, [name](DeviceManager &manager, DeviceHandle handle, Sample sample) {
                return invoke(manager, name, member, handle, sample);
            }};
}

#define OPERATION(reached, name) operationOf<&DeviceManager::name>(#name, Reached::reached)

} // namespace

void PrintTo(const HandleCheckedOperation &operation, std::ostream *stream)
{
    *stream << operation.name;
}

const std::vector<HandleCheckedOperation> &handleCheckedOperations()
{
    static const std::vector<HandleCheckedOperation> operations = {
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
    return operations;
}

} // namespace KvSyncTest
