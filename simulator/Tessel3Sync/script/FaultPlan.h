#ifndef TESSEL3SYNCSIMULATOR_FAULTPLAN_H
#define TESSEL3SYNCSIMULATOR_FAULTPLAN_H

#include "script/Script.h"

#include <filesystem>
#include <optional>
#include <string>

namespace Tessel3SyncSimulator {

struct FaultPlan
{
    Script script;
    std::optional<ScannerSetup> scanner; ///< if the plan describes it
};

// What a description of the scanner leaves out is as in `present`. All throw std::invalid_argument
// with a text that says what is wrong and where.

FaultPlan readFaultPlan(const std::string &json, const ScannerSetup &present);

/// The text of a failure names the file.
FaultPlan loadFaultPlan(const std::filesystem::path &file, const ScannerSetup &present);

/// A description of the scanner as ScannerVariable holds it. The text of a failure names the
/// variable.
ScannerSetup readScannerVariable(const std::string &json, const ScannerSetup &present);

} // namespace Tessel3SyncSimulator

#endif
