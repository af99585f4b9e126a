#include "PlanScanner.h"

#include "StrictJson.h"

#include <algorithm>
#include <limits>
#include <stdexcept>

namespace Tessel3SyncSimulator {

namespace {

using Json = nlohmann::json;

struct CameraName
{
    const char *name;
    CameraKind kind;
};

constexpr CameraName cameraNames[] = {
    {"left", CameraKind::LeftSpeckle},
    {"right", CameraKind::RightSpeckle},
    {"color", CameraKind::Color},
};

CameraKind cameraOf(const Json &name)
{
    for (const CameraName &known : cameraNames) {
        if (name == known.name)
            return known.kind;
    }
    fail(R"("cameras" may name "left", "right" and "color")");
}

std::vector<CameraKind> camerasOf(const Json &names)
{
    std::vector<CameraKind> cameras;
    for (const Json &name : names) {
        const CameraKind kind = cameraOf(name);
        if (std::find(cameras.begin(), cameras.end(), kind) != cameras.end())
            fail(R"("cameras" names )" + quoted(name) + " twice");
        cameras.push_back(kind);
    }
    return cameras;
}

template <typename Number>
void readNumber(Members &members, const char *name, Number lowest, Number highest, Number &number)
{
    if (members.has(name))
        number = static_cast<Number>(members.integerIn(name, lowest, highest));
}

} // namespace

ScannerSetup setupOf(const Json &object, const ScannerSetup &present)
{
    ScannerSetup setup = present;
    Members members(object);
    readNumber(members, "width", MinimumSide, MaximumSide, setup.width);
    readNumber(members, "height", MinimumSide, MaximumSide, setup.height);
    if (members.has("cameras"))
        setup.cameras = camerasOf(members.list("cameras"));
    readNumber(members, "seed", std::uint32_t{0}, std::numeric_limits<std::uint32_t>::max(),
               setup.seed);
    readNumber(members, "triggerPeriodMs", 1, MaximumTriggerPeriodMs, setup.triggerPeriodMs);
    members.refuseOthers();
    return setup;
}

ScannerSetup setupFromVariable(const std::string &json, const ScannerSetup &present)
{
    try {
        return setupOf(parsedJson(json), present);
    } catch (const std::invalid_argument &error) {
        fail(std::string(ScannerVariable) + ": " + error.what());
    }
}

} // namespace Tessel3SyncSimulator
