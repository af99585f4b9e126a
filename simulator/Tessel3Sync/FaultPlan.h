#ifndef TESSEL3SYNCSIMULATOR_FAULTPLAN_H
#define TESSEL3SYNCSIMULATOR_FAULTPLAN_H

#include "Script.h"

#include <filesystem>
#include <string>

namespace Tessel3SyncSimulator {

/// Reads a fault plan. Throws std::invalid_argument with a text that says what is wrong and where.
Script readFaultPlan(const std::string &json);

/// The same from a file, which the text then names.
Script loadFaultPlan(const std::filesystem::path &file);

} // namespace Tessel3SyncSimulator

#endif
