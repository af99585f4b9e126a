#include "PlanOutputs.h"

#include "StrictJson.h"

#include <algorithm>

namespace Tessel3SyncSimulator {

namespace {

using Json = nlohmann::json;

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
