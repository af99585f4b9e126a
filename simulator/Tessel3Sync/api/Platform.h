// The little that differs between the systems.
#ifndef TESSEL3SYNCSIMULATOR_PLATFORM_H
#define TESSEL3SYNCSIMULATOR_PLATFORM_H

#include <filesystem>
#include <optional>
#include <string>

namespace Tessel3SyncSimulator {

/// Keeps this library loaded until the process ends: hosts keep its texts, and its thread runs.
void stayLoaded();

/// What an environment variable holds, as UTF-8; nothing if it is unset or empty.
std::optional<std::string> textFromEnvironment(const char *variable);

/// The file that an environment variable names; nothing if it is unset or empty.
std::optional<std::filesystem::path> pathFromEnvironment(const char *variable);

} // namespace Tessel3SyncSimulator

#endif
