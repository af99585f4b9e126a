#ifndef SCANNER_PLUGINDEVICE_H
#define SCANNER_PLUGINDEVICE_H

#include "Device.h"
#include "DeviceAddress.h"
#include "OpenDevice.h"
#include "Publish.h"

namespace Scanner {

/// An open device of a device plug-in, with the capabilities that it has.
class PluginDevice : public Device
{
public:
    PluginDevice(KvSyncCore::DeviceController &controller, qint64 deviceHandle,
                 const DeviceAddress &deviceAddress, Publish publishEvent);

    qint64 handle() const { return device.handle(); }
    /// {"plugin", "version", "index", "name", "types", "handle"}; the types are names of
    /// capabilities.
    QVariantMap describe() const;
    /// The core that it came from is gone.
    void abandon();

    /// Ends a scan and movements first, and leaves the projector dark. If the plug-in refuses to
    /// destroy the device, its code is thrown, and the device stays open.
    void close() override;
    /// Stops what runs and connects the device again.
    void reset() override;
    /// See readSetting; "list" answers with all of them, see listSettings.
    QVariant getProperty(const QString &name, const QVariant &value) override;
    /// See writeSetting.
    void setProperty(const QString &name, const QVariant &value) override;
    /// "light": the projector off. "motor": all axes to their reference position.
    void resetInterface(const QString &name) override;
    /// See switchDeviceFlag.
    void setFlag(const QString &name, bool on) override;
    /// See runProjector.
    void project(const QString &pattern) override;
    /// "scan": see captureFrames. "color": see captureColor. One runs at a time.
    QVariantList capture(const QString &kind, const QVariantMap &parameters) override;
    /// See rotateAxis.
    void rotate(const QString &name, const QVariantMap &parameters, bool isRelative) override;
    /// "commands": what it serves. "info": as describe. The others: see runDeviceCommand.
    QVariant execute(const QString &command, const QVariantList &arguments) override;

private:
    const DeviceAddress address;
    const Publish publish;
    OpenDevice device;
    std::mutex capturing;
};

} // namespace Scanner

#endif
