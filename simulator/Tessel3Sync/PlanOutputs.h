#ifndef TESSEL3SYNCSIMULATOR_PLANOUTPUTS_H
#define TESSEL3SYNCSIMULATOR_PLANOUTPUTS_H

#include "Functions.h"

#include <nlohmann/json.hpp>

#include <map>
#include <string>

namespace Tessel3SyncSimulator {

/// The outputs of a function as a fault plan states them, by name. Throws std::invalid_argument for
/// what the function does not have, or has of another kind.
std::map<std::string, Value> outputsOf(const nlohmann::json &object, const Function &function);

} // namespace Tessel3SyncSimulator

#endif
