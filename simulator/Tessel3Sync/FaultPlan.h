#ifndef TESSEL3SYNCSIMULATOR_FAULTPLAN_H
#define TESSEL3SYNCSIMULATOR_FAULTPLAN_H

#include "Script.h"

#include <filesystem>
#include <optional>
#include <string>

namespace Tessel3SyncSimulator {

struct FaultPlan
{
    Script script;
    std::optional<ScannerSetup> scanner; ///< if the plan describes it
};

/// Reads a fault plan; what it does not say of the scanner that it describes is as in `present`.
/// Throws std::invalid_argument with a text that says what is wrong and where.
FaultPlan readFaultPlan(const std::string &json, const ScannerSetup &present);

/// The same from a file, which the text then names.
FaultPlan loadFaultPlan(const std::filesystem::path &file, const ScannerSetup &present);

} // namespace Tessel3SyncSimulator

#endif
