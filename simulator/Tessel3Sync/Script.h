#ifndef TESSEL3SYNCSIMULATOR_SCRIPT_H
#define TESSEL3SYNCSIMULATOR_SCRIPT_H

#include <Tessel3SyncSimulator/Control.h>

#include <map>
#include <string>

namespace Tessel3SyncSimulator {

/// Answers that are laid down beforehand, by function and call number.
class Script
{
public:
    /// Throws std::invalid_argument for what the library does not have.
    void add(const std::string &function, int call, const Answer &answer);

    /// Null if the call is to do what it does by itself.
    const Answer *find(const std::string &function, int call) const;

private:
    std::map<std::string, std::map<int, Answer>> answers;
};

} // namespace Tessel3SyncSimulator

#endif
