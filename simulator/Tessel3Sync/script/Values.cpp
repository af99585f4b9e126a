#include "script/Values.h"

#include "script/StrictJson.h"

#include <utility>

namespace Tessel3SyncSimulator {

namespace {

using Json = nlohmann::json;

// Each reads one type of value, and returns false if the JSON is of another.

bool read(const Json &json, std::nullptr_t &)
{
    return json.is_null();
}

bool read(const Json &json, bool &value)
{
    const auto *flag = json.get_ptr<const bool *>();
    value = flag && *flag;
    return flag != nullptr;
}

bool read(const Json &json, int &value)
{
    if (!isInteger(json))
        return false;
    value = json.get<int>();
    return true;
}

bool read(const Json &json, double &value)
{
    if (!json.is_number())
        return false;
    value = json.get<double>();
    return true;
}

bool read(const Json &json, std::string &value)
{
    if (!json.is_string())
        return false;
    value = json.get<std::string>();
    return true;
}

bool read(const Json &json, std::optional<std::string> &value)
{
    return json.is_null() || read(json, value.emplace());
}

template <typename Element>
bool read(const Json &json, std::vector<Element> &list)
{
    if (!json.is_array())
        return false;
    for (const Json &each : json) {
        Element element{};
        if (!read(each, element))
            return false;
        list.push_back(std::move(element));
    }
    return true;
}

template <typename Type>
std::optional<Value> readAs(const Json &json)
{
    Type value{};
    return read(json, value) ? std::make_optional<Value>(std::move(value)) : std::nullopt;
}

struct KindRow
{
    const char *text;
    bool (*fits)(const Value &value);
    std::optional<Value> (*read)(const Json &json);
};

/// A kind that takes values of one or two types.
template <typename Type, typename Other = Type>
constexpr KindRow row(const char *text)
{
    return {text,
            [](const Value &value) {
                return std::holds_alternative<Type>(value) || std::holds_alternative<Other>(value);
            },
            [](const Json &json) {
                auto value = readAs<Type>(json);
                return value ? value : readAs<Other>(json);
            }};
}

/// In the order of Kind.
constexpr KindRow rows[] = {
    row<bool>("true or false"),
    row<int>("an integer"),
    row<double>("a number"),
    row<std::string>("a string"),
    row<std::string, std::nullptr_t>("a string or null"),
    row<std::nullptr_t>("null"),
    row<std::vector<bool>>("a list of true and false"),
    row<std::vector<int>>("a list of integers"),
    row<Texts>("a list of strings and nulls"),
};

const KindRow &rowOf(Kind kind)
{
    return rows[static_cast<std::size_t>(kind)];
}

} // namespace

bool fits(const Value &value, Kind kind)
{
    return rowOf(kind).fits(value);
}

std::optional<Value> valueOf(const Json &json, Kind kind)
{
    return rowOf(kind).read(json);
}

const char *kindText(Kind kind)
{
    return rowOf(kind).text;
}

} // namespace Tessel3SyncSimulator
