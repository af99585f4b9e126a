#include "script/PlanParts.h"
#include "script/StrictJson.h"
#include "script/Values.h"

#include <limits>

namespace Tessel3SyncSimulator {

namespace {

using Json = nlohmann::json;

constexpr int lowestInteger = std::numeric_limits<int>::min();

Occurrence occurrenceOf(JsonObject &fault, const char *single, const char *repeated)
{
    if (fault.has(single) && fault.has(repeated))
        fail(quoted(single) + " and " + quoted(repeated) + " cannot be combined");
    if (fault.has(single))
        return {fault.integer(single, 1), false};
    return {fault.has(repeated) ? fault.integer(repeated, 1) : 1, true};
}

/// What faults of calls and of frames have in common.
template <typename Fault>
void readCommon(JsonObject &object, Fault &fault)
{
    if (object.has("delayMs") && object.has("hangMs"))
        fail(R"("delayMs" and "hangMs" cannot be combined)");
    if (object.has("delayMs"))
        fault.delayMs = object.integer("delayMs", 0);
    if (object.has("hangMs"))
        fault.delayMs = object.integer("hangMs", 0);
    fault.corrupt = object.flag("corrupt");
    fault.disconnect = object.flag("disconnect");
    if (object.has("backAfterMs")) {
        if (!fault.disconnect)
            fail(R"("backAfterMs" needs "disconnect")");
        fault.backAfterMs = object.integer("backAfterMs", 0);
    }
}

std::map<std::string, Value> outputsOf(const Json &object, const Function &function)
{
    if (!object.is_object())
        fail("\"outputs\" must be an object");
    std::map<std::string, Value> outputs;
    for (const auto &item : object.items()) {
        const std::string functionName(function.name);
        const Output *output = findOutput(function, item.key());
        if (!output)
            fail(functionName + " has no output " + quoted(item.key()));
        const auto value = valueOf(item.value(), output->kind);
        if (!value)
            fail("output " + quoted(item.key()) + " of " + functionName + " must be " +
                 kindText(output->kind));
        outputs.emplace(item.key(), *value);
    }
    return outputs;
}

void readCallFault(JsonObject &object, Script &script)
{
    const std::string name = object.text("function");
    const Function *function = findFunction(name);
    if (!function)
        fail("the library has no function " + quoted(name));
    Answer answer;
    readCommon(object, answer);
    if (object.has("status"))
        answer.status = object.integer("status", lowestInteger);
    else if (object.has("hangMs"))
        answer.status = PlannedFault;
    if (object.has("outputs"))
        answer.outputs = outputsOf(object.member("outputs"), *function);
    const Occurrence occurrence = occurrenceOf(object, "call", "every");
    object.refuseOthers();
    script.add(name, occurrence, answer);
}

std::optional<int> optionalInteger(JsonObject &object, const char *name)
{
    if (!object.has(name))
        return std::nullopt;
    return object.integer(name, lowestInteger);
}

Numbering numberingOf(const std::string &word)
{
    if (word == "twice")
        return Numbering::Twice;
    if (word == "swapped")
        return Numbering::Swapped;
    if (word == "skipped")
        return Numbering::Skipped;
    fail(R"("number" must be "twice", "swapped" or "skipped")");
}

void readFrameFault(JsonObject &object, Script &script)
{
    FrameFault fault;
    readCommon(object, fault);
    fault.drop = object.flag("drop") || object.has("hangMs");
    fault.nullImage = optionalInteger(object, "nullImage");
    fault.missingImage = optionalInteger(object, "missingImage");
    fault.toldWidth = optionalInteger(object, "width");
    fault.toldHeight = optionalInteger(object, "height");
    if (object.has("number"))
        fault.numbering = numberingOf(object.text("number"));
    const Occurrence occurrence = occurrenceOf(object, "frame", "everyFrame");
    object.refuseOthers();
    script.add(occurrence, fault);
}

} // namespace

void readFault(const Json &entry, Script &script)
{
    JsonObject object(entry);
    if (object.has("function"))
        readCallFault(object, script);
    else if (object.has("frame") || object.has("everyFrame"))
        readFrameFault(object, script);
    else
        fail(R"(needs "function", "frame" or "everyFrame")");
}

} // namespace Tessel3SyncSimulator
