#ifndef SCANNER_DIRECTLINK_CONTROLS_H
#define SCANNER_DIRECTLINK_CONTROLS_H

#include "Connection.h"
#include "Parameters.h"

#include <QtCore/QMap>
#include <QtCore/QString>

namespace Scanner::DirectLink {

/// Switches a flag: "infraredLaser", "blueLaser" (in work mode 0) or "trigger" (without color).
/// Throws `FunctionNotExist` for another name, `CommandFailed` if the scanner refuses.
void switchFlag(Connection &link, const QString &name, bool on);

/// Projects "off", "flat", "speckle" or "stripes". Throws `FunctionNotExist` for another name,
/// `ProjectorFailed` if the scanner refuses.
void projectPattern(Connection &link, const QString &name);

/// Lasers and projector off, in this order, up to the first that the scanner refuses: that throws.
void switchLightOff(Connection &link);
/// Lasers off, whatever the scanner says to it.
void switchLasersOff(KvSyncCore::DeviceController &controller);

/// The light of a scan: speckle without the infrared laser, unless asked otherwise.
class ScanLight
{
public:
    /// Reads "pattern", as projectPattern takes it, and "switch": a map of lasers by their flags.
    /// Throws `InvalidParameter` or `FunctionNotExist`.
    static ScanLight from(const Parameters &parameters);

    bool isAsked() const { return asked; }
    /// Throws as projectPattern and switchFlag do.
    void apply(Connection &link) const;
    /// Switches those lasers off that the scan switched on.
    ErrorCode end(KvSyncCore::DeviceController &controller) const;

private:
    bool asked = false;
    QString pattern = QStringLiteral("speckle");
    QMap<QString, bool> switches{{QStringLiteral("infraredLaser"), false}};
};

} // namespace Scanner::DirectLink

#endif
