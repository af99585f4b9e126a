#ifndef TESSEL3SYNCSIMULATOR_PLANEVENTS_H
#define TESSEL3SYNCSIMULATOR_PLANEVENTS_H

#include "Script.h"

#include <nlohmann/json.hpp>

namespace Tessel3SyncSimulator {

/// Adds one status event as a fault plan states it: what happens, and when. Throws
/// std::invalid_argument with a text that says what is wrong.
void readEvent(const nlohmann::json &entry, Script &script);

} // namespace Tessel3SyncSimulator

#endif
