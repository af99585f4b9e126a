// What differs between operating systems.
#ifndef TESSEL3SYNCSIMULATOR_PLATFORM_H
#define TESSEL3SYNCSIMULATOR_PLATFORM_H

#include <filesystem>
#include <optional>
#include <string>

namespace Tessel3SyncSimulator {

/// Keeps this library loaded until the process ends: hosts keep its texts, and its thread runs.
void stayLoaded();

/// The value of an environment variable, as UTF-8; none if it is unset or empty.
std::optional<std::string> textFromEnvironment(const char *variable);

/// The file that an environment variable names; none if it is unset or empty.
std::optional<std::filesystem::path> pathFromEnvironment(const char *variable);

} // namespace Tessel3SyncSimulator

#endif
