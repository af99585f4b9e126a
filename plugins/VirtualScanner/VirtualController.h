#ifndef VIRTUALSCANNER_VIRTUALCONTROLLER_H
#define VIRTUALSCANNER_VIRTUALCONTROLLER_H

#include "PropertyTable.h"

#include "KvSyncDevice/ControllerInterface.h"

namespace VirtualScanner {

/// The controller capability.
///
/// Commands are ASCII words. ControlCommand: "ping" gives "pong", "reset" forgets the settings
/// and gives "done". QueryCommand: "version" gives the firmware's, "get NAME" a setting.
/// ConfigurationCommand: "set NAME VALUE" gives "done". readCommand returns the last answer of that
/// kind once.
///
/// A caller is a thread. While one holds the channel, the operations of the channel and firmware
/// updates of every other return ChannelBusy at once. A thread that ends with the channel locked
/// leaves it so, until the device is lost. A lost device keeps its firmware and nothing else.
class VirtualController : public ControllerSpace::ControllerInterface
{
public:
    static constexpr int firewareStepBytes = 4096;
    static constexpr int largestFirewareBytes = 1024 * 1024;

    VirtualController(DeviceGate &gate, PropertyTable &properties);

    /// An image starts with "KVFW" and one byte of version. It is written step by step; the
    /// property "fireware" tells other threads how far it is. A step that fails or a device that
    /// vanishes leaves the old firmware in place.
    ErrorCode updateFireware(ControllerSpace::FirewareType type, const QByteArray &image) override;
    ErrorCode sendCommand(ControllerSpace::CmdType type, const QByteArray &payload) override;
    ErrorCode readCommand(ControllerSpace::CmdType type, QByteArray &answer) override;
    ErrorCode lockCommandChannel() override;
    ErrorCode unlockCommandChannel() override;

private:
    static constexpr quint64 nobody = 0;

    bool isChannelFree() const;
    ErrorCode beginUpdate(ControllerSpace::FirewareType type, const QByteArray &image);
    ErrorCode writeAllSteps(DeviceGate::Call &call);
    void forget();
    ErrorCode execute(ControllerSpace::CmdType type, const QList<QByteArray> &words);
    ErrorCode control(const QList<QByteArray> &words);
    ErrorCode query(const QList<QByteArray> &words);
    ErrorCode configure(const QList<QByteArray> &words);
    ErrorCode getFireware(Values &values);

    DeviceGate &gate;
    quint64 channelOwner = nobody;
    QMap<QByteArray, QByteArray> settings;
    QMap<ControllerSpace::CmdType, QByteArray> answers;
    QMap<ControllerSpace::FirewareType, int> firewareVersions;
    bool updating = false;
    int bytesTotal = 0;
    int bytesWritten = 0;
};

} // namespace VirtualScanner

#endif
