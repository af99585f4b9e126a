// The parts of a fault plan, one reader each. All throw std::invalid_argument with a text that says
// what is wrong.
#ifndef TESSEL3SYNCSIMULATOR_PLANPARTS_H
#define TESSEL3SYNCSIMULATOR_PLANPARTS_H

#include "script/Script.h"

#include <nlohmann/json_fwd.hpp>

namespace Tessel3SyncSimulator {

/// Adds one of the "faults": of a call or of a frame.
void readFault(const nlohmann::json &entry, Script &script);

/// Adds one of the "events".
void readEvent(const nlohmann::json &entry, Script &script);

/// The "scanner"; what it leaves out is as in `present`.
ScannerSetup readScanner(const nlohmann::json &object, const ScannerSetup &present);

} // namespace Tessel3SyncSimulator

#endif
