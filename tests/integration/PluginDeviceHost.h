#ifndef KVSYNC_TESTS_INTEGRATION_PLUGINDEVICEHOST_H
#define KVSYNC_TESTS_INTEGRATION_PLUGINDEVICEHOST_H

#include "ScannerHost.h"

namespace KvSyncTest {

/// The Scanner plug-in over the sample device plug-in VirtualScanner.
class PluginDeviceHost : public ScannerHost
{
protected:
    enum Index { WholeScanner, CameraAlone, TurntableAlone, Marker };

    /// Codes of VirtualScanner's own.
    static constexpr auto notConnected = static_cast<ErrorCode>(0x01F00001);
    static constexpr auto vanished = static_cast<ErrorCode>(0x01F00004);
    static constexpr auto unknownProperty = static_cast<ErrorCode>(0x01F00006);
    static constexpr auto badValue = static_cast<ErrorCode>(0x01F00009);
    static constexpr auto noFrame = static_cast<ErrorCode>(0x01F0000C);

    ~PluginDeviceHost() override;

    static QVariantMap address(int index);
    /// Opens a device; it is closed at the end.
    QVariant openDevice(int index);
    void close(const QVariant &handle);

    QVariant get(const QVariant &handle, const QString &name, const QVariant &value = {});
    void set(const QVariant &handle, const QString &name, const QVariant &value);
    void turn(const QVariant &handle, const QString &axis, const QVariantMap &parameters,
              bool isRelative);
    double positionOf(const QVariant &handle, const QString &axis);
    QVariantList capture(const QVariant &handle, QVariantMap parameters);
    QVariant run(const QVariant &handle, const QString &command,
                 const QVariantList &arguments = {});

    /// Makes an operation of the device answer with a code; 0 ends that.
    void makeFail(const QVariant &handle, const QString &operation, int code);

private:
    QVariantList opened;
};

} // namespace KvSyncTest

#endif
