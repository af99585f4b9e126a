#ifndef TESSEL3SYNCSIMULATOR_USERBLOCKS_H
#define TESSEL3SYNCSIMULATOR_USERBLOCKS_H

#include "api/Status.h"

#include <filesystem>
#include <map>
#include <optional>
#include <string>

namespace Tessel3SyncSimulator {

/// The blocks of text that a host keeps in the scanner. They outlast connections and, if they are
/// kept in a file, the process.
class UserBlocks
{
public:
    /// Kept in memory only.
    UserBlocks() = default;

    /// Kept in a file, which is read now; it need not exist yet. A file with any other content is
    /// left alone, and every call is refused.
    explicit UserBlocks(const std::filesystem::path &path);

    RETSTATUS write(int address, const std::string &text);
    RETSTATUS read(int address, std::string &text) const;

private:
    std::map<int, std::string> blocks;
    std::optional<std::filesystem::path> file;
    bool usable = true;
};

} // namespace Tessel3SyncSimulator

#endif
