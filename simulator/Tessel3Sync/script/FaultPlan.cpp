#include "script/FaultPlan.h"

#include "script/Files.h"
#include "script/PlanParts.h"
#include "script/StrictJson.h"

#include <stdexcept>

namespace Tessel3SyncSimulator {

namespace {

using Json = nlohmann::json;

/// Runs what may fail, and says in the text of a failure where that was.
template <typename Read>
auto readAt(const std::string &where, Read read)
{
    try {
        return read();
    } catch (const std::invalid_argument &error) {
        fail(where + ": " + error.what());
    }
}

void readEntries(JsonObject &plan, const std::string &name, Script &script,
                 void (*readEntry)(const Json &entry, Script &script))
{
    if (!plan.has(name))
        return;
    const Json &list = plan.list(name);
    for (std::size_t i = 0; i < list.size(); ++i)
        readAt(name + '[' + std::to_string(i) + ']', [&] { readEntry(list[i], script); });
}

FaultPlan planOf(const std::string &text, const ScannerSetup &present)
{
    FaultPlan plan;
    const Json json = parsedJson(text);
    JsonObject object(json);
    if (object.has("scanner"))
        plan.scanner =
            readAt("scanner", [&] { return readScanner(object.member("scanner"), present); });
    plan.script.hostile = object.flag("hostile");
    readEntries(object, "faults", plan.script, readFault);
    readEntries(object, "events", plan.script, readEvent);
    object.refuseOthers();
    return plan;
}

} // namespace

FaultPlan readFaultPlan(const std::string &json, const ScannerSetup &present)
{
    return readAt("fault plan", [&] { return planOf(json, present); });
}

FaultPlan loadFaultPlan(const std::filesystem::path &file, const ScannerSetup &present)
{
    const std::string name = "fault plan " + file.u8string();
    const auto text = fileContent(file);
    if (!text)
        fail(name + " cannot be read");
    return readAt(name, [&] { return planOf(*text, present); });
}

ScannerSetup readScannerVariable(const std::string &json, const ScannerSetup &present)
{
    return readAt(ScannerVariable, [&] { return readScanner(parsedJson(json), present); });
}

} // namespace Tessel3SyncSimulator
