#ifndef KVSYNC_OPENSCANNER_H
#define KVSYNC_OPENSCANNER_H

#include "OpenDevice.h"

#include <QtCore/QJsonObject>

#include <string>

namespace CLI {
class App;
}

namespace KvSyncCli {

/// What may be said of every command that uses a device: which one, and how it answers.
struct DeviceOptions
{
    std::string serial;
    std::string plugin;  ///< a device plug-in; empty for the directly linked scanner
    std::string version; ///< of the plug-in; empty for the newest
    int index = 0;
    bool json = false;

    /// What the Scanner plug-in's openDevices takes. Throws what choosePluginVersion throws.
    QVariantMap address(const GlobalOptions &global) const;
};

/// For the directly linked scanner: adds "--serial" and "--json".
void addScannerOptions(CLI::App &command, DeviceOptions &options);

/// For a device of a device plug-in: adds "--plugin", "--plugin-version", "--index" and "--json".
void addPluginDeviceOptions(CLI::App &command, DeviceOptions &options);

/// The Scanner plug-in and a device that it opened, open as long as this object lives.
class OpenScanner
{
public:
    OpenScanner(const Context &context, const DeviceOptions &options,
                const std::function<void(const Event &event)> &listener = nullptr);

    QVariant call(const QString &function, const QVariantList &furtherArguments = {})
    {
        return device.call(function, furtherArguments);
    }

    /// Calls the plug-in's "execute".
    QVariant execute(const QString &command, const QVariantList &arguments = {})
    {
        return device.call(QStringLiteral("execute"), {command, QVariant(arguments)});
    }

    /// See OpenDevice.
    void close() { device.close(); }
    void closeAnyhow() { device.closeAnyhow(); }

private:
    ServiceHost host;
    OpenDevice device;
};

/// Prints the text for people, or the object for programs.
void print(Context &context, const DeviceOptions &options, const QString &text,
           const QJsonObject &object);

} // namespace KvSyncCli

#endif
