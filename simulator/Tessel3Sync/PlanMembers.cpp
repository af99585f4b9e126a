#include "PlanMembers.h"

#include <algorithm>
#include <limits>
#include <stdexcept>

namespace Tessel3SyncSimulator {

namespace {

using Json = nlohmann::json;

/// JSON's numbers are wider, and would be cut or rounded in silence.
bool isInteger(const Json &value)
{
    return value.is_number_integer() && value >= std::numeric_limits<int>::min() &&
           value <= std::numeric_limits<int>::max();
}

bool isFlag(const Json &value)
{
    return value.is_boolean();
}

bool isTextOrNull(const Json &value)
{
    return value.is_string() || value.is_null();
}

template <typename Check>
bool isListOf(const Json &value, Check check)
{
    return value.is_array() && std::all_of(value.begin(), value.end(), check);
}

bool isOfKind(const Json &value, OutputKind kind)
{
    switch (kind) {
    case OutputKind::Flag:
        return isFlag(value);
    case OutputKind::Integer:
        return isInteger(value);
    case OutputKind::Number:
        return value.is_number();
    case OutputKind::Text:
        return value.is_string();
    case OutputKind::TextOrNull:
        return isTextOrNull(value);
    case OutputKind::Null:
        return value.is_null();
    case OutputKind::Flags:
        return isListOf(value, isFlag);
    case OutputKind::Integers:
        return isListOf(value, isInteger);
    case OutputKind::TextList:
        return isListOf(value, isTextOrNull);
    }
    return false;
}

Texts textsOf(const Json &list)
{
    Texts texts;
    for (const Json &text : list) {
        texts.push_back(text.is_null() ? std::nullopt
                                       : std::make_optional(text.get<std::string>()));
    }
    return texts;
}

Value valueOf(const Json &value, OutputKind kind)
{
    switch (kind) {
    case OutputKind::Flag:
        return value.get<bool>();
    case OutputKind::Integer:
        return value.get<int>();
    case OutputKind::Number:
        return value.get<double>();
    case OutputKind::Flags:
        return value.get<std::vector<bool>>();
    case OutputKind::Integers:
        return value.get<std::vector<int>>();
    case OutputKind::TextList:
        return textsOf(value);
    case OutputKind::Text:
    case OutputKind::TextOrNull:
    case OutputKind::Null:
        break;
    }
    return value.is_null() ? Value(nullptr) : Value(value.get<std::string>());
}

} // namespace

void fail(const std::string &text)
{
    throw std::invalid_argument(text);
}

std::string quoted(const std::string &text)
{
    return '"' + text + '"';
}

Members::Members(const Json &value)
    : object(value)
{
    if (!value.is_object())
        fail("must be an object");
}

bool Members::has(const char *name) const
{
    return object.contains(name);
}

const Json &Members::member(const char *name)
{
    asked.insert(name);
    return object.at(name);
}

int Members::integer(const char *name, int lowest)
{
    const Json &value = member(name);
    if (!isInteger(value))
        fail(quoted(name) + " must be an integer");
    const int number = value.get<int>();
    if (number < lowest)
        fail(quoted(name) + " must be at least " + std::to_string(lowest));
    return number;
}

std::string Members::text(const char *name)
{
    const Json &value = member(name);
    if (!value.is_string())
        fail(quoted(name) + " must be a text");
    return value.get<std::string>();
}

bool Members::flag(const char *name)
{
    if (!has(name))
        return false;
    const Json &value = member(name);
    if (!value.is_boolean())
        fail(quoted(name) + " must be true or false");
    return value.get<bool>();
}

void Members::refuseOthers() const
{
    for (const auto &item : object.items()) {
        if (asked.count(item.key()) == 0)
            fail("unknown key " + quoted(item.key()));
    }
}

std::map<std::string, Value> outputsOf(const Json &object, const Function &function)
{
    if (!object.is_object())
        fail("\"outputs\" must be an object");
    std::map<std::string, Value> outputs;
    for (const auto &item : object.items()) {
        const OutputName *output = findOutput(function, item.key());
        if (!output)
            fail(std::string(function.name) + " has no output " + quoted(item.key()));
        if (!isOfKind(item.value(), output->kind))
            fail("output " + quoted(item.key()) + " of " + function.name + " must be " +
                 kindText(output->kind));
        outputs[item.key()] = valueOf(item.value(), output->kind);
    }
    return outputs;
}

} // namespace Tessel3SyncSimulator
