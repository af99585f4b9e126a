// Strict reading of a fault plan's JSON.
#ifndef TESSEL3SYNCSIMULATOR_PLANMEMBERS_H
#define TESSEL3SYNCSIMULATOR_PLANMEMBERS_H

#include "Functions.h"

#include <nlohmann/json.hpp>

#include <set>
#include <string>

namespace Tessel3SyncSimulator {

/// Throws std::invalid_argument, as everything here does for what does not fit.
[[noreturn]] void fail(const std::string &text);

std::string quoted(const std::string &text);

/// One JSON object: hands out its members by name, and knows which nobody asked for.
class Members
{
public:
    explicit Members(const nlohmann::json &value);

    bool has(const char *name) const;
    const nlohmann::json &member(const char *name);

    int integer(const char *name, int lowest);
    std::string text(const char *name);

    /// False if there is no such member.
    bool flag(const char *name);

    void refuseOthers() const;

private:
    const nlohmann::json &object;
    std::set<std::string> asked;
};

/// The outputs of a function, by name.
std::map<std::string, Value> outputsOf(const nlohmann::json &object, const Function &function);

} // namespace Tessel3SyncSimulator

#endif
