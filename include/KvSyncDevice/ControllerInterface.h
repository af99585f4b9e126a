#ifndef KVSYNCDEVICE_CONTROLLERINTERFACE_H
#define KVSYNCDEVICE_CONTROLLERINTERFACE_H

#include "KvSyncDevice/Visibility.h"
#include "KvSyncTool/ErrorCode.h"

#include <QtCore/QByteArray>

namespace ControllerSpace {

/// Kind of command on the controller's channel.
enum CmdType : int {
    ControlCommand = 0,
    QueryCommand = 1,
    ConfigurationCommand = 2,
};

/// Which firmware to update. The spelling "Fireware" is part of the contract.
enum FirewareType : int {
    ControllerFireware = 0,
    ProjectorFireware = 1,
    MotorFireware = 2,
};

/// The controller capability. It has no base class; a device offers it by deriving from it in
/// addition to DeviceInterface. The order of the virtual operations is a binary contract. Threads,
/// codes and exceptions: as for DeviceInterface.
class KVSYNC_SHARED_TYPE ControllerInterface
{
public:
    /// Reserved slots; never called by the core.
    virtual void controllerReserved1() {}
    virtual void controllerReserved2() {}

    /// Writes a whole firmware image. The spelling is part of the contract.
    virtual ErrorCode updateFireware(FirewareType type, const QByteArray &image) = 0;

    /// Sends one command.
    virtual ErrorCode sendCommand(CmdType type, const QByteArray &payload) = 0;

    /// Reads the response to the last command of that kind into `answer`.
    virtual ErrorCode readCommand(CmdType type, QByteArray &answer) = 0;

    /// Reserve the command channel for one caller, and release it.
    virtual ErrorCode lockCommandChannel() = 0;
    virtual ErrorCode unlockCommandChannel() = 0;

    /// Last, so that it takes no slot of the operations above.
    virtual ~ControllerInterface() = default;
};

} // namespace ControllerSpace

#endif
