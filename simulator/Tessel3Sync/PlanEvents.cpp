#include "PlanEvents.h"

#include "StrictJson.h"

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

StatusBytes eventOf(Members &members)
{
    constexpr int lastButton = std::numeric_limits<unsigned char>::max();
    if (members.has("button") == members.has("distance"))
        fail(R"(needs either "button" or "distance")");
    if (members.has("distance"))
        return {DistanceEvent, distanceOf(members.text("distance"))};
    return {ButtonEvent, static_cast<unsigned char>(members.integerIn("button", 1, lastButton))};
}

} // namespace

void readEvent(const nlohmann::json &entry, Script &script)
{
    Members members(entry);
    const StatusBytes event = eventOf(members);
    if (members.has("frame") + members.has("everyFrame") + members.has("afterMs") != 1)
        fail(R"(needs either "frame", "everyFrame" or "afterMs")");
    if (members.has("afterMs"))
        script.addEvent(members.integer("afterMs", 0), event);
    else if (members.has("frame"))
        script.addEvent(Occasion{members.integer("frame", 1), false}, event);
    else
        script.addEvent(Occasion{members.integer("everyFrame", 1), true}, event);
    members.refuseOthers();
}

} // namespace Tessel3SyncSimulator
