#include "script/StrictJson.h"

#include <cstdint>
#include <limits>
#include <stdexcept>
#include <vector>

namespace Tessel3SyncSimulator {

using Json = nlohmann::json;

void fail(const std::string &text)
{
    throw std::invalid_argument(text);
}

std::string quoted(const std::string &text)
{
    return '"' + text + '"';
}

Json parsedJson(const std::string &text)
{
    std::vector<std::set<std::string>> keys; // of every object that is being read
    const auto refuseRepeatedKeys = [&](int, Json::parse_event_t event, const Json &key) {
        if (event == Json::parse_event_t::object_start)
            keys.emplace_back();
        else if (event == Json::parse_event_t::object_end)
            keys.pop_back();
        else if (event == Json::parse_event_t::key && !keys.back().insert(key).second)
            fail("the key " + quoted(key) + " appears twice in one object");
        return true;
    };
    try {
        return Json::parse(text, refuseRepeatedKeys);
    } catch (const Json::exception &error) {
        // A number beyond every double is none of its parse errors.
        fail(std::string("not JSON: ") + error.what());
    }
}

bool isInteger(const Json &value)
{
    constexpr int largest = std::numeric_limits<int>::max();
    // On its own: compared as a signed number, the largest would turn negative.
    if (value.is_number_unsigned())
        return value.get<std::uint64_t>() <= std::uint64_t{largest};
    return value.is_number_integer() && value >= std::numeric_limits<int>::min() &&
           value <= largest;
}

JsonObject::JsonObject(const Json &value)
    : object(value)
{
    if (!value.is_object())
        fail("must be an object");
}

bool JsonObject::has(const std::string &name) const
{
    return object.contains(name);
}

const Json &JsonObject::member(const std::string &name)
{
    asked.insert(name);
    return object.at(name);
}

int JsonObject::integer(const std::string &name, int lowest)
{
    const Json &value = member(name);
    if (!isInteger(value))
        fail(quoted(name) + " must be an integer");
    const int number = value.get<int>();
    if (number < lowest)
        fail(quoted(name) + " must be at least " + std::to_string(lowest));
    return number;
}

std::int64_t JsonObject::integerIn(const std::string &name, std::int64_t lowest,
                                   std::int64_t highest)
{
    constexpr auto largest = std::uint64_t{std::numeric_limits<std::int64_t>::max()};
    const Json &value = member(name);
    if (!value.is_number_integer())
        fail(quoted(name) + " must be an integer");
    // On its own, as in isInteger.
    const bool isHuge = value.is_number_unsigned() && value.get<std::uint64_t>() > largest;
    const auto number = value.get<std::int64_t>();
    if (isHuge || number < lowest || number > highest)
        fail(quoted(name) + " must be " + std::to_string(lowest) + " to " +
             std::to_string(highest));
    return number;
}

std::string JsonObject::text(const std::string &name)
{
    const Json &value = member(name);
    if (!value.is_string())
        fail(quoted(name) + " must be a string");
    return value.get<std::string>();
}

const Json &JsonObject::list(const std::string &name)
{
    const Json &value = member(name);
    if (!value.is_array())
        fail(quoted(name) + " must be a list");
    return value;
}

bool JsonObject::flag(const std::string &name)
{
    if (!has(name))
        return false;
    const Json &value = member(name);
    if (!value.is_boolean())
        fail(quoted(name) + " must be true or false");
    return value.get<bool>();
}

void JsonObject::refuseOthers() const
{
    for (const auto &item : object.items()) {
        if (asked.count(item.key()) == 0)
            fail("unknown key " + quoted(item.key()));
    }
}

} // namespace Tessel3SyncSimulator
