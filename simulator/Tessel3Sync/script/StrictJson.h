// JSON read strictly: what does not fit is refused, never guessed at.
#ifndef TESSEL3SYNCSIMULATOR_STRICTJSON_H
#define TESSEL3SYNCSIMULATOR_STRICTJSON_H

#include <nlohmann/json.hpp>

#include <cstdint>
#include <set>
#include <string>

namespace Tessel3SyncSimulator {

/// Throws std::invalid_argument, as everything here does for what does not fit.
[[noreturn]] void fail(const std::string &text);

std::string quoted(const std::string &text);

/// Refuses a repeated key too: one of the two values would be lost silently.
nlohmann::json parsedJson(const std::string &text);

/// Whether it is a whole number that an int holds. JSON's numbers are wider, and would be cut or
/// rounded in silence.
bool isInteger(const nlohmann::json &value);

/// One JSON object: hands out its members by name, and knows which nobody asked for.
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
