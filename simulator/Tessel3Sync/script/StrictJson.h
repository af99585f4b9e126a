// Reads JSON strictly: what does not fit is refused, never guessed.
#ifndef TESSEL3SYNCSIMULATOR_STRICTJSON_H
#define TESSEL3SYNCSIMULATOR_STRICTJSON_H

#include <nlohmann/json.hpp>

#include <cstdint>
#include <set>
#include <string>

namespace Tessel3SyncSimulator {

/// Throws std::invalid_argument, as does everything here for what does not fit.
[[noreturn]] void fail(const std::string &text);

std::string quoted(const std::string &text);

/// Refuses a repeated key too: one of the two values would be lost silently.
nlohmann::json parsedJson(const std::string &text);

/// Whether it is an integer within the range of int. Other numbers of JSON would be truncated
/// silently.
bool isInteger(const nlohmann::json &value);

/// A JSON object whose members are read by name, and which knows those that nobody has read.
class JsonObject
{
public:
    explicit JsonObject(const nlohmann::json &value);

    bool has(const std::string &name) const;
    const nlohmann::json &member(const std::string &name);

    int integer(const std::string &name, int lowest);
    std::int64_t integerIn(const std::string &name, std::int64_t lowest, std::int64_t highest);
    std::string text(const std::string &name);
    const nlohmann::json &list(const std::string &name);

    /// False if there is no such member.
    bool flag(const std::string &name);

    void refuseOthers() const;

private:
    const nlohmann::json &object;
    std::set<std::string> asked;
};

} // namespace Tessel3SyncSimulator

#endif
