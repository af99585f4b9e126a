#include "FaultPlan.h"

#include "Files.h"
#include "PlanEvents.h"
#include "PlanOutputs.h"
#include "PlanScanner.h"
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

std::optional<int> integerIfThere(Members &members, const char *name)
{
    if (!members.has(name))
        return std::nullopt;
    return members.integer(name, std::numeric_limits<int>::min());
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

void readFrameFault(Members &members, Script &script)
{
    FrameFault fault;
    readFault(members, fault);
    fault.drop = members.flag("drop") || members.has("hangMs");
    fault.nullImage = integerIfThere(members, "nullImage");
    fault.missingImage = integerIfThere(members, "missingImage");
    fault.toldWidth = integerIfThere(members, "width");
    fault.toldHeight = integerIfThere(members, "height");
    if (members.has("number"))
        fault.numbering = numberingOf(members.text("number"));
    const Occasion occasion = occasionOf(members, "frame", "everyFrame");
    members.refuseOthers();
    script.add(occasion, fault);
}

void readFaultEntry(const Json &entry, Script &script)
{
    Members members(entry);
    if (members.has("function"))
        readCallFault(members, script);
    else if (members.has("frame") || members.has("everyFrame"))
        readFrameFault(members, script);
    else
        fail(R"(needs "function", "frame" or "everyFrame")");
}

void readEntries(Members &plan, const char *name, void (*read)(const Json &entry, Script &script),
                 Script &script)
{
    if (!plan.has(name))
        return;
    const Json &list = plan.list(name);
    for (std::size_t i = 0; i < list.size(); ++i) {
        try {
            read(list[i], script);
        } catch (const std::invalid_argument &error) {
            fail(name + ("[" + std::to_string(i)) + "]: " + error.what());
        }
    }
}

ScannerSetup plannedScanner(const Json &object, const ScannerSetup &present)
{
    try {
        return setupOf(object, present);
    } catch (const std::invalid_argument &error) {
        fail(std::string("scanner: ") + error.what());
    }
}

FaultPlan planOf(const std::string &text, const ScannerSetup &present)
{
    FaultPlan plan;
    const Json json = parsedJson(text);
    Members members(json);
    if (members.has("scanner"))
        plan.scanner = plannedScanner(members.member("scanner"), present);
    plan.script.hostile = members.flag("hostile");
    readEntries(members, "faults", readFaultEntry, plan.script);
    readEntries(members, "events", readEvent, plan.script);
    members.refuseOthers();
    return plan;
}

} // namespace

FaultPlan readFaultPlan(const std::string &json, const ScannerSetup &present)
{
    try {
        return planOf(json, present);
    } catch (const std::invalid_argument &error) {
        fail(std::string("fault plan: ") + error.what());
    }
}

FaultPlan loadFaultPlan(const std::filesystem::path &file, const ScannerSetup &present)
{
    const std::string name = "fault plan " + file.u8string();
    const auto text = fileContent(file);
    if (!text)
        fail(name + " cannot be read");
    try {
        return planOf(*text, present);
    } catch (const std::invalid_argument &error) {
        fail(name + ": " + error.what());
    }
}

} // namespace Tessel3SyncSimulator
