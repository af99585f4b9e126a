#include "script/PlanParts.h"
#include "script/StrictJson.h"

#include <limits>

namespace Tessel3SyncSimulator {

namespace {

unsigned char distanceOf(const std::string &word)
{
    if (word == "tooNear")
        return DistanceTooNear;
    if (word == "right")
        return DistanceRight;
    if (word == "tooFar")
        return DistanceTooFar;
    fail(R"("distance" must be "tooNear", "right" or "tooFar")");
}

PlannedEvent eventOf(JsonObject &object)
{
    constexpr int lastButton = std::numeric_limits<unsigned char>::max();
    if (object.has("button") == object.has("distance"))
        fail(R"(needs "button" or "distance", and only one of them)");
    if (object.has("distance"))
        return {DistanceEvent, distanceOf(object.text("distance"))};
    return {ButtonEvent, static_cast<unsigned char>(object.integerIn("button", 1, lastButton))};
}

} // namespace

void readEvent(const nlohmann::json &entry, Script &script)
{
    JsonObject object(entry);
    const PlannedEvent event = eventOf(object);
    if (object.has("frame") + object.has("everyFrame") + object.has("afterMs") != 1)
        fail(R"(needs "frame", "everyFrame" or "afterMs", and only one of them)");
    if (object.has("afterMs"))
        script.addEvent(object.integer("afterMs", 0), event);
    else if (object.has("frame"))
        script.addEvent(Occurrence{object.integer("frame", 1), false}, event);
    else
        script.addEvent(Occurrence{object.integer("everyFrame", 1), true}, event);
    object.refuseOthers();
}

} // namespace Tessel3SyncSimulator
