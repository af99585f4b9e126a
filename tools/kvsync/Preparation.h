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
    std::vector<std::string> flags;    ///< NAME=on or NAME=off
    std::string pattern;
    std::optional<double> turntableDegrees;
};

/// Adds "--set" alone.
void addSettingOption(CLI::App &command, Preparation &preparation);

/// For the directly linked scanner: adds "--set", "--switch", "--project" and "--turntable".
void addPreparationOptions(CLI::App &command, Preparation &preparation);

/// Throws `InvalidParameter` for a text of another form, and what the plug-in throws.
void prepare(OpenScanner &scanner, const Preparation &preparation);

} // namespace KvSyncCli

#endif
