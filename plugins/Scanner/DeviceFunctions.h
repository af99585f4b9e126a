#ifndef SCANNER_DEVICEFUNCTIONS_H
#define SCANNER_DEVICEFUNCTIONS_H

#include <QtCore/QString>
#include <QtCore/QVariant>

namespace Scanner {

/// The functions of the plug-in for one open device, whichever backend serves it. Any thread may
/// call. Failures are KvSyncTool::Exception: `FunctionNotExist` for a name that the device does not
/// know, `InvalidParameter` for a value that cannot be used, or the code with which it refuses.
class DeviceFunctions
{
public:
    DeviceFunctions() = default;
    DeviceFunctions(const DeviceFunctions &) = delete;
    DeviceFunctions &operator=(const DeviceFunctions &) = delete;
    virtual ~DeviceFunctions() = default;

    /// Ends a scan, in whatever thread it runs, and movements; leaves the device dark.
    virtual void close() = 0;
    /// Ends the same, and connects the device again.
    virtual void reset() = 0;
    /// A setting by its name, or "list" for a description of all of them.
    virtual QVariant getProperty(const QString &name, const QVariant &value) = 0;
    virtual void setProperty(const QString &name, const QVariant &value) = 0;
    /// Puts "light", "motor", "settings" or one setting back, as far as the device has it.
    virtual void resetInterface(const QString &name) = 0;
    virtual void setFlag(const QString &name, bool on) = 0;
    virtual void project(const QString &pattern) = 0;
    /// "scan" or "color"; returns one map per image.
    virtual QVariantList capture(const QString &kind, const QVariantMap &parameters) = 0;
    /// Turns the named axis to an angle, or by an angle, and returns when it stands still.
    virtual void rotate(const QString &name, const QVariantMap &parameters, bool isRelative) = 0;
    /// "commands" lists the others.
    virtual QVariant execute(const QString &command, const QVariantList &arguments) = 0;
};

} // namespace Scanner

#endif
