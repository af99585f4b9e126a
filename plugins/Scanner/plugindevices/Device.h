#ifndef SCANNER_PLUGINDEVICES_DEVICE_H
#define SCANNER_PLUGINDEVICES_DEVICE_H

#include "Connection.h"
#include "DeviceFunctions.h"
#include "Scan.h"
#include "Search.h"

namespace Scanner::PluginDevices {

/// An open device of a device plug-in, with the capabilities that it has.
class Device : public DeviceFunctions
{
public:
    Device(KvSyncCore::DeviceController &controller, qint64 deviceHandle,
           const DeviceAddress &deviceAddress, Publish publishEvent);

    qint64 handle() const { return device.handle(); }
    /// {"plugin", "version", "index", "name", "types", "handle"}; the types are names of
    /// capabilities.
    QVariantMap describe() const;
    /// The core that it came from is gone.
    void abandon();

    /// If the plug-in refuses to destroy the device, its code is thrown, and the device stays open.
    void close() override;
    void reset() override;
    QVariant getProperty(const QString &name, const QVariant &value) override;
    void setProperty(const QString &name, const QVariant &value) override;
    void resetInterface(const QString &name) override;
    void setFlag(const QString &name, bool on) override;
    void project(const QString &pattern) override;
    QVariantList capture(const QString &kind, const QVariantMap &parameters) override;
    void rotate(const QString &name, const QVariantMap &parameters, bool isRelative) override;
    QVariant execute(const QString &command, const QVariantList &arguments) override;

private:
    const DeviceAddress address;
    const Publish publish;
    Connection device;
    std::mutex capturing;
};

} // namespace Scanner::PluginDevices

#endif
