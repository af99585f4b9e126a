#ifndef KVSYNC_PREPARATION_H
#define KVSYNC_PREPARATION_H

#include "OpenScanner.h"

#include <optional>
#include <string>
#include <vector>

namespace KvSyncCli {

/// How the scanner is set before it takes images: every run of kvsync finds it as it was switched
/// on.
struct Preparation
{
    std::vector<std::string> settings; ///< NAME=VALUE
    std::optional<double> turntableDegrees;

    /// What was asked for, for the record of a scan. Throws as prepare does.
    QVariantMap told() const;
};

/// In which light images are taken.
struct Light
{
    std::vector<std::string> flags; ///< NAME=on or NAME=off
    std::string pattern;

    /// As parameters of a scan, which sets its light by itself. Throws `InvalidParameter`.
    QVariantMap parameters() const;
};

/// Adds "--set" alone.
void addSettingOption(CLI::App &command, Preparation &preparation);

/// For the directly linked scanner: adds "--set" and "--turntable".
void addPreparationOptions(CLI::App &command, Preparation &preparation);

/// For the directly linked scanner: adds "--switch" and "--project", whose help ends in
/// `withoutPattern`.
void addLightOptions(CLI::App &command, Light &light, const std::string &withoutPattern);

/// Throws `InvalidParameter` for a text of another form, and what the plug-in throws.
void prepare(OpenScanner &scanner, const Preparation &preparation);

/// Switches the light on as it is to be, for images other than a scan's. Throws as prepare does.
void switchLight(OpenScanner &scanner, const Light &light);

} // namespace KvSyncCli

#endif
