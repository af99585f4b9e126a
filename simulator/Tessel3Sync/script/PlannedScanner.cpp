#include "script/PlanParts.h"
#include "script/StrictJson.h"

#include <algorithm>
#include <limits>

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
    fail(R"("cameras" may contain "left", "right" and "color")");
}

std::vector<CameraKind> camerasOf(const Json &names)
{
    std::vector<CameraKind> cameras;
    for (const Json &name : names) {
        const CameraKind kind = cameraOf(name);
        if (std::find(cameras.begin(), cameras.end(), kind) != cameras.end())
            fail(R"("cameras" contains )" + quoted(name) + " twice");
        cameras.push_back(kind);
    }
    return cameras;
}

template <typename Number>
void readNumber(JsonObject &object, const char *name, Number lowest, Number highest, Number &number)
{
    if (object.has(name))
        number = static_cast<Number>(object.integerIn(name, lowest, highest));
}

} // namespace

ScannerSetup readScanner(const Json &object, const ScannerSetup &present)
{
    ScannerSetup setup = present;
    JsonObject scanner(object);
    readNumber(scanner, "width", MinimumSide, MaximumSide, setup.width);
    readNumber(scanner, "height", MinimumSide, MaximumSide, setup.height);
    if (scanner.has("cameras"))
        setup.cameras = camerasOf(scanner.list("cameras"));
    readNumber(scanner, "seed", std::uint32_t{0}, std::numeric_limits<std::uint32_t>::max(),
               setup.seed);
    readNumber(scanner, "triggerPeriodMs", 1, MaximumTriggerPeriodMs, setup.triggerPeriodMs);
    scanner.refuseOthers();
    return setup;
}

} // namespace Tessel3SyncSimulator
