#ifndef SCANNER_DEVICEADDRESS_H
#define SCANNER_DEVICEADDRESS_H

#include <QtCore/QString>
#include <QtCore/QVariant>
#include <QtCore/QVersionNumber>

namespace Scanner {

/// Names a device plug-in as a host does: {"plugin": text, "version": text}. Of the version the
/// first two numbers count.
struct PluginAddress
{
    /// Throws `InvalidParameter` if a part is missing or cannot be used.
    explicit PluginAddress(const QVariantMap &parameters);

    /// "VirtualScanner 1.0", for people.
    QString shown() const;

    QString plugin;
    QVersionNumber version;
};

/// The same and {"index": number}, from 0: one of the plug-in's devices.
struct DeviceAddress : PluginAddress
{
    explicit DeviceAddress(const QVariantMap &parameters);

    int index;
};

} // namespace Scanner

#endif
