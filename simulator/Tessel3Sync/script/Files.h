#ifndef TESSEL3SYNCSIMULATOR_FILES_H
#define TESSEL3SYNCSIMULATOR_FILES_H

#include <filesystem>
#include <optional>
#include <string>

namespace Tessel3SyncSimulator {

/// All bytes of a file; nothing if it cannot be read.
std::optional<std::string> fileContent(const std::filesystem::path &file);

/// Puts a whole file in the place of another, or leaves the other as it is and returns false.
bool replaceFile(const std::filesystem::path &file, const std::string &content);

} // namespace Tessel3SyncSimulator

#endif
