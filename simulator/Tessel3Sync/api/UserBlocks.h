#ifndef TESSEL3SYNCSIMULATOR_USERBLOCKS_H
#define TESSEL3SYNCSIMULATOR_USERBLOCKS_H

#include "api/Status.h"

#include <filesystem>
#include <map>
#include <optional>
#include <string>

namespace Tessel3SyncSimulator {

/// The blocks of text that a host keeps in the scanner. They outlast connections, and the process
/// too where a file is named for them.
class UserBlocks
{
public:
    /// Kept in memory alone.
    UserBlocks() = default;

    /// Kept in a file, which is read now; that it does not exist yet is no error. A file that is
    /// not ours is left as it is, and every call is refused.
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
