#ifndef SCANNER_DEVICE_H
#define SCANNER_DEVICE_H

#include <QtCore/QString>
#include <QtCore/QVariant>

namespace Scanner {

/// An open device, whichever road leads to it: what the functions of the plug-in need of it, once
/// the handle is known. Any thread may call; failures are KvSyncTool::Exception.
class Device
{
public:
    Device() = default;
    Device(const Device &) = delete;
    Device &operator=(const Device &) = delete;
    virtual ~Device() = default;

    virtual void close() = 0;
    virtual void reset() = 0;
    virtual QVariant getProperty(const QString &name, const QVariant &value) = 0;
    virtual void setProperty(const QString &name, const QVariant &value) = 0;
    virtual void resetInterface(const QString &name) = 0;
    virtual void setFlag(const QString &name, bool on) = 0;
    virtual void project(const QString &pattern) = 0;
    virtual QVariantList capture(const QString &kind, const QVariantMap &parameters) = 0;
    virtual void rotate(const QString &name, const QVariantMap &parameters, bool isRelative) = 0;
    virtual QVariant execute(const QString &command, const QVariantList &arguments) = 0;
};

} // namespace Scanner

#endif
