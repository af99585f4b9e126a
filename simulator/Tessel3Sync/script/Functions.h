// The forty-one functions of the library and their outputs, by name. This table is the only place
// that lists them: what the library writes, scripts and fault plans are checked against it.
#ifndef TESSEL3SYNCSIMULATOR_FUNCTIONS_H
#define TESSEL3SYNCSIMULATOR_FUNCTIONS_H

#include <cstddef>
#include <iterator>
#include <string_view>

namespace Tessel3SyncSimulator {

/// The kinds of values that outputs take.
enum class Kind { Flag, Integer, Number, Text, TextOrNull, Null, Flags, Integers, TextList };

struct Output
{
    std::string_view name; ///< as in Tessel3Sync.h
    Kind kind;
};

struct Function
{
    static constexpr std::size_t mostOutputs = 6;

    std::string_view name;
    Output outputs[mostOutputs]; ///< those in use come first; the others have no name

    constexpr std::size_t outputCount() const
    {
        std::size_t count = 0;
        while (count < mostOutputs && !outputs[count].name.empty())
            ++count;
        return count;
    }
};

inline constexpr Function functions[] = {
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

/// Null if the library has no such function, or the function no such output.
constexpr const Function *findFunction(std::string_view name)
{
    for (const Function &function : functions) {
        if (function.name == name)
            return &function;
    }
    return nullptr;
}

constexpr const Output *findOutput(const Function &function, std::string_view name)
{
    for (std::size_t i = 0; i < function.outputCount(); ++i) {
        if (function.outputs[i].name == name)
            return &function.outputs[i];
    }
    return nullptr;
}

} // namespace Tessel3SyncSimulator

#endif
