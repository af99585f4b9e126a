#ifndef KVSYNC_DEVICESETUP_H
#define KVSYNC_DEVICESETUP_H

#include "commands/Options.h"

#include <optional>

namespace KvSyncCli {

class ServiceSession;

/// How a device is set before it takes images: every run of kvsync finds it as it was switched on.
struct DeviceSetup
{
    QStringList settings; ///< NAME=VALUE
    std::optional<double> turntableDegrees;

    /// What was asked for, for the record of a scan. Throws as applySetup does.
    QVariantMap asked() const;
};

/// In which light images are taken.
struct Illumination
{
    QStringList switches; ///< NAME=on or NAME=off
    QString pattern;

    /// As parameters of a scan, which sets its light by itself. Throws `InvalidParameter`.
    QVariantMap parameters() const;
};

/// Adds "--set" alone.
void addSettingOption(CLI::App &command, DeviceSetup &setup);

/// For the directly linked scanner: adds "--set" and "--turntable".
void addSetupOptions(CLI::App &command, DeviceSetup &setup);

/// For the directly linked scanner: adds "--switch" and "--project", whose help ends in
/// `withoutPattern`.
void addIlluminationOptions(CLI::App &command, Illumination &illumination,
                            const std::string &withoutPattern);

/// Sets the open device. Throws `InvalidParameter` for a text of another form, and what the plug-in
/// throws.
void applySetup(ServiceSession &session, const DeviceSetup &setup);

/// Switches the light on as it is to be, for images other than a scan's. Throws as applySetup does.
void applyIllumination(ServiceSession &session, const Illumination &illumination);

} // namespace KvSyncCli

#endif
