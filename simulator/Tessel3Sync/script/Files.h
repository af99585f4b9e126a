#ifndef TESSEL3SYNCSIMULATOR_FILES_H
#define TESSEL3SYNCSIMULATOR_FILES_H

#include <filesystem>
#include <optional>
#include <string>

namespace Tessel3SyncSimulator {

/// The whole content of a file; none if it cannot be read.
std::optional<std::string> fileContent(const std::filesystem::path &file);

/// Replaces a file as a whole, or returns false and leaves it as it is.
bool replaceFile(const std::filesystem::path &file, const std::string &content);

} // namespace Tessel3SyncSimulator

#endif
