#ifndef KVSYNCDEVICE_CONTROLLERINTERFACE_H
#define KVSYNCDEVICE_CONTROLLERINTERFACE_H

#include "KvSyncDevice/Visibility.h"
#include "KvSyncTool/ErrorCode.h"

#include <QtCore/QByteArray>

namespace ControllerSpace {

/// Kind of a command on the controller's channel.
enum CmdType : int {
    ControlCommand = 0,
    QueryCommand = 1,
    ConfigurationCommand = 2,
};

/// Which firmware is updated. The spelling "Fireware" is part of the interface.
enum FirewareType : int {
    ControllerFireware = 0,
    ProjectorFireware = 1,
    MotorFireware = 2,
};

/// A controller capability. It derives from nothing; a device offers it by deriving from it beside
/// DeviceInterface. The order of the virtual operations is a binary contract. Threads, codes and
/// exceptions as for DeviceInterface.
class KVSYNC_SHARED_TYPE ControllerInterface
{
public:
    /// Hold their places; never called by the core.
    virtual void controllerReserved1() {}
    virtual void controllerReserved2() {}

    /// Writes a whole firmware image. The spelling is part of the interface.
    virtual ErrorCode updateFireware(FirewareType type, const QByteArray &image) = 0;

    /// Sends one command.
    virtual ErrorCode sendCommand(CmdType type, const QByteArray &payload) = 0;

    /// Reads the answer to the last command of that kind into `answer`.
    virtual ErrorCode readCommand(CmdType type, QByteArray &answer) = 0;

    /// Reserve the command channel for one caller, and give it back.
    virtual ErrorCode lockCommandChannel() = 0;
    virtual ErrorCode unlockCommandChannel() = 0;

    /// Last, so that it takes no place of the operations above.
    virtual ~ControllerInterface() = default;
};

} // namespace ControllerSpace

#endif
