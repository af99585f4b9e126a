// What each kind of output takes: as a Value of the control header, and as JSON in a fault plan.
#ifndef TESSEL3SYNCSIMULATOR_VALUES_H
#define TESSEL3SYNCSIMULATOR_VALUES_H

#include "script/Functions.h"

#include <Tessel3SyncSimulator/Control.h>

#include <nlohmann/json_fwd.hpp>

#include <optional>

namespace Tessel3SyncSimulator {

bool fits(const Value &value, Kind kind);

/// The value that JSON states; none if it is of another kind.
std::optional<Value> valueOf(const nlohmann::json &json, Kind kind);

/// The kind in words, for messages.
const char *kindText(Kind kind);

} // namespace Tessel3SyncSimulator

#endif
