#ifndef KVSYNC_OPENSCANNER_H
#define KVSYNC_OPENSCANNER_H

#include "OpenDevice.h"

#include <QtCore/QJsonObject>

#include <string>

namespace CLI {
class App;
}

namespace KvSyncCli {

/// What may be said of every command that uses the directly linked scanner.
struct ScannerOptions
{
    std::string serial;
    bool json = false;
};

/// Adds "--serial" and "--json".
void addScannerOptions(CLI::App &command, ScannerOptions &options);

/// The Scanner plug-in and the directly linked scanner, open as long as this object lives.
class OpenScanner
{
public:
    OpenScanner(const Context &context, const ScannerOptions &options,
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

    void close() { device.close(); }

private:
    ServiceHost host;
    OpenDevice device;
};

/// Prints the text for people, or the object for programs.
void print(Context &context, const ScannerOptions &options, const QString &text,
           const QJsonObject &object);

} // namespace KvSyncCli

#endif
