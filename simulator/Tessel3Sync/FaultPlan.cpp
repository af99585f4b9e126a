#include "FaultPlan.h"

#include "Files.h"
#include "PlanOutputs.h"
#include "StrictJson.h"

#include <limits>
#include <stdexcept>

namespace Tessel3SyncSimulator {

namespace {

using Json = nlohmann::json;

Occasion occasionOf(Members &members, const char *single, const char *repeated)
{
    if (members.has(single) && members.has(repeated))
        fail(quoted(single) + " and " + quoted(repeated) + " exclude each other");
    if (members.has(single))
        return {members.integer(single, 1), false};
    return {members.has(repeated) ? members.integer(repeated, 1) : 1, true};
}

/// What calls and frames have in common.
template <typename Fault>
void readFault(Members &members, Fault &fault)
{
    if (members.has("delayMs") && members.has("hangMs"))
        fail(R"("delayMs" and "hangMs" exclude each other)");
    if (members.has("delayMs"))
        fault.delayMs = members.integer("delayMs", 0);
    if (members.has("hangMs"))
        fault.delayMs = members.integer("hangMs", 0);
    fault.corrupt = members.flag("corrupt");
    fault.disconnect = members.flag("disconnect");
    if (members.has("backAfterMs")) {
        if (!fault.disconnect)
            fail(R"("backAfterMs" needs "disconnect")");
        fault.backAfterMs = members.integer("backAfterMs", 0);
    }
}

void readCallFault(Members &members, Script &script)
{
    const std::string name = members.text("function");
    const Function *function = findFunction(name);
    if (!function)
        fail("the library has no function " + quoted(name));
    Answer answer;
    readFault(members, answer);
    if (members.has("status"))
        answer.status = members.integer("status", std::numeric_limits<int>::min());
    else if (members.has("hangMs"))
        answer.status = PlannedFault;
    if (members.has("outputs"))
        answer.outputs = outputsOf(members.member("outputs"), *function);
    const Occasion occasion = occasionOf(members, "call", "every");
    members.refuseOthers();
    script.add(name, occasion, answer);
}

void readFrameFault(Members &members, Script &script)
{
    FrameFault fault;
    readFault(members, fault);
    fault.drop = members.flag("drop") || members.has("hangMs");
    const Occasion occasion = occasionOf(members, "frame", "everyFrame");
    members.refuseOthers();
    script.add(occasion, fault);
}

void readEntry(const Json &entry, Script &script)
{
    Members members(entry);
    if (members.has("function"))
        readCallFault(members, script);
    else if (members.has("frame") || members.has("everyFrame"))
        readFrameFault(members, script);
    else
        fail(R"(needs "function", "frame" or "everyFrame")");
}

void readEntries(const Json &list, Script &script)
{
    for (std::size_t i = 0; i < list.size(); ++i) {
        try {
            readEntry(list[i], script);
        } catch (const std::invalid_argument &error) {
            fail("faults[" + std::to_string(i) + "]: " + error.what());
        }
    }
}

Script scriptOf(const std::string &text)
{
    Script script;
    const Json plan = parsedJson(text);
    Members members(plan);
    script.hostile = members.flag("hostile");
    if (members.has("faults"))
        readEntries(members.list("faults"), script);
    members.refuseOthers();
    return script;
}

} // namespace

Script readFaultPlan(const std::string &json)
{
    try {
        return scriptOf(json);
    } catch (const std::invalid_argument &error) {
        fail(std::string("fault plan: ") + error.what());
    }
}

Script loadFaultPlan(const std::filesystem::path &file)
{
    const std::string name = "fault plan " + file.u8string();
    const auto text = fileContent(file);
    if (!text)
        fail(name + " cannot be read");
    try {
        return scriptOf(*text);
    } catch (const std::invalid_argument &error) {
        fail(name + ": " + error.what());
    }
}

} // namespace Tessel3SyncSimulator
