// Makes the compiler lay out the virtual tables of the contracts; it is compiled and thrown away.

#include "KvSyncCore/CommandInterface.h"
#include "KvSyncDevice/CameraInterface.h"
#include "KvSyncDevice/ControllerInterface.h"
#include "KvSyncDevice/DeviceInterface.h"
#include "KvSyncDevice/IFactory.h"
#include "KvSyncDevice/MotorInterface.h"
#include "KvSyncDevice/ProjectorInterface.h"

// A constructor needs the table, without an object being made.
template <typename Interface>
struct Probe : Interface
{
    Probe();
};

template <typename Interface>
Probe<Interface>::Probe()
{
}

template struct Probe<CommandInterface>;
template struct Probe<IFactory>;
template struct Probe<BaseDeviceSpace::DeviceInterface>;
template struct Probe<CameraSpace::CameraInterface>;
template struct Probe<ControllerSpace::ControllerInterface>;
template struct Probe<MotorSpace::MotorInterface>;
template struct Probe<ProjectorSpace::ProjectorInterface>;
