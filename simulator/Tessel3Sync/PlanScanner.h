#ifndef TESSEL3SYNCSIMULATOR_PLANSCANNER_H
#define TESSEL3SYNCSIMULATOR_PLANSCANNER_H

#include <Tessel3SyncSimulator/Control.h>

#include <nlohmann/json.hpp>

#include <string>

namespace Tessel3SyncSimulator {

/// The scanner that an object of JSON describes; what it leaves out is as in `present`. Throws
/// std::invalid_argument with a text that says what is wrong.
ScannerSetup setupOf(const nlohmann::json &object, const ScannerSetup &present);

/// The same from a text, as an environment variable holds it. The text of a failure names the
/// variable.
ScannerSetup setupFromVariable(const std::string &json, const ScannerSetup &present);

} // namespace Tessel3SyncSimulator

#endif
