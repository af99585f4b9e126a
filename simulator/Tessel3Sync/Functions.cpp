#include "Functions.h"

#include <algorithm>

namespace Tessel3SyncSimulator {

const std::vector<Function> &functions()
{
    using Kind = OutputKind;
    // Never destroyed: callbacks may call the library while the process ends.
    static const auto &table = *new std::vector<Function>{
        {"GetCamerasInformation",
         {{"serials", Kind::TextList},
          {"a", Kind::Integers},
          {"b", Kind::Integers},
          {"flags", Kind::Flags},
          {"count", Kind::Integer}}},
        {"ConnectDevice", {{"device", Kind::Null}}},
        {"CloseDeviceCamera", {}},
        {"ReconnectDevice", {}},
        {"DisConnectDevice", {}},
        {"IsConnectedOnU3", {{"connected", Kind::Flag}}},
        {"GetFirewareVersion", {{"version", Kind::Text}}},
        {"GetCameraCount", {{"count", Kind::Integer}}},
        {"GetConnectCameraCount", {{"count", Kind::Integer}}},
        {"GetCameraSerialNumber", {{"serial", Kind::TextOrNull}}},
        {"GetCameraResolution", {{"width", Kind::Integer}, {"height", Kind::Integer}}},
        {"GetStatusDescriptionString", {{"text", Kind::TextOrNull}}},
        {"SetScanCallBackFunction", {}},
        {"SetStatusCallBackFunction", {}},
        {"SetStrobeControlledByTrigger", {}},
        {"SetDistanceIndicate", {}},
        {"Project", {}},
        {"EnableIRLaser", {}},
        {"EnableBlueLaser", {}},
        {"EnableVideoTrigger", {}},
        {"SetVideoTriggerPeriod", {}},
        {"GetVideoTriggerPeriod", {{"period", Kind::Integer}}},
        {"SetStrobeDutioRatio", {}},
        {"GetStrobeDutioRatio",
         {{"first", Kind::Integer}, {"second", Kind::Integer}, {"third", Kind::Integer}}},
        {"SetLaserLineDutioRatio", {}},
        {"GetLaserLineDutioRatio", {{"ratio", Kind::Integer}}},
        {"SetProjectDutioRatio", {}},
        {"GetProjectDutioRatio", {{"ratio", Kind::Integer}}},
        {"SetIRLaserDutioRatio", {}},
        {"GetIRLaserDutioRatio", {{"ratio", Kind::Integer}}},
        {"SetProjectorBrightness", {}},
        {"GetProjectorBrightness", {{"brightness", Kind::Integer}}},
        {"SetCameraExposureAndGain", {}},
        {"GetCameraExposureAndGain", {{"exposure", Kind::Number}, {"gain", Kind::Integer}}},
        {"SetCameraExposure", {}},
        {"GetCameraExposure", {{"exposure", Kind::Number}}},
        {"SetCameraGain", {}},
        {"GetCameraGain", {{"gain", Kind::Integer}}},
        {"SnapColorImage",
         {{"images", Kind::TextList},
          {"dimension1", Kind::Integer},
          {"dimension2", Kind::Integer},
          {"fifth", Kind::Integer},
          {"sixth", Kind::Number},
          {"seventh", Kind::Integer}}},
        {"WriteUserInfomation", {}},
        {"ReadUserInfomation", {{"buffer", Kind::TextOrNull}, {"replacement", Kind::Text}}},
    };
    return table;
}

const Function *findFunction(const std::string &name)
{
    const auto &all = functions();
    const auto found = std::find_if(
        all.begin(), all.end(), [&](const Function &function) { return name == function.name; });
    return found == all.end() ? nullptr : &*found;
}

const OutputName *findOutput(const Function &function, const std::string &name)
{
    const auto &all = function.outputs;
    const auto found = std::find_if(all.begin(), all.end(),
                                    [&](const OutputName &output) { return name == output.name; });
    return found == all.end() ? nullptr : &*found;
}

bool fits(const Value &value, OutputKind kind)
{
    switch (kind) {
    case OutputKind::Flag:
        return std::holds_alternative<bool>(value);
    case OutputKind::Integer:
        return std::holds_alternative<int>(value);
    case OutputKind::Number:
        return std::holds_alternative<double>(value);
    case OutputKind::Text:
        return std::holds_alternative<std::string>(value);
    case OutputKind::TextOrNull:
        return std::holds_alternative<std::string>(value) ||
               std::holds_alternative<std::nullptr_t>(value);
    case OutputKind::Null:
        return std::holds_alternative<std::nullptr_t>(value);
    case OutputKind::Flags:
        return std::holds_alternative<std::vector<bool>>(value);
    case OutputKind::Integers:
        return std::holds_alternative<std::vector<int>>(value);
    case OutputKind::TextList:
        return std::holds_alternative<Texts>(value);
    }
    return false;
}

const char *kindText(OutputKind kind)
{
    switch (kind) {
    case OutputKind::Flag:
        return "true or false";
    case OutputKind::Integer:
        return "an integer";
    case OutputKind::Number:
        return "a number";
    case OutputKind::Text:
        return "a text";
    case OutputKind::TextOrNull:
        return "a text or null";
    case OutputKind::Null:
        return "null";
    case OutputKind::Flags:
        return "a list of true and false";
    case OutputKind::Integers:
        return "a list of integers";
    case OutputKind::TextList:
        return "a list of texts and nulls";
    }
    return "";
}

} // namespace Tessel3SyncSimulator
