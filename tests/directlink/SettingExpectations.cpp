#include "Expectation.h"

namespace KvSyncTest {

using KvSyncCore::DeviceController;

namespace {

/// A setting of one integer that logs its start and follows the scanner's status.
Expectation setter(const std::string &operation, ErrorCode (DeviceController::*set)(int),
                   const std::string &startLine, const std::string &function)
{
    return {operation,
            [set](DeviceController &c) { return outcome((c.*set)(21)); },
            "Success",
            {debug(operation, startLine), function + "(device, 21)"},
            "DeviceOperationFailed",
            {{function, "DeviceOperationFailed", {}}}};
}

/// Its getter; the integer is the caller's own.
Expectation getter(const std::string &operation, ErrorCode (DeviceController::*get)(int &),
                   const std::string &function, int answer)
{
    return {operation,
            [get](DeviceController &c) {
                int value = -5;
                const ErrorCode code = (c.*get)(value);
                return outcome(code, value);
            },
            outcome(Success, answer),
            {debug(operation, operation + " start"), function + "(device, -5)"},
            "DeviceOperationFailed -5",
            {{function, outcome(DeviceOperationFailed, answer), {}}}};
}

} // namespace

std::vector<Expectation> cameraSettingExpectations()
{
    return {
        {"setGainAndExpo",
         [](DeviceController &c) { return outcome(c.setGainAndExpo(anyHandle, 12, 1.5, 2)); },
         "Success",
         {"SetCameraExposureAndGain(device, 2, 1.5, 12)",
          debug("setGainAndExpo", "getGainAndExpo :1.5 gain: 12")},
         "DeviceOperationFailed",
         {{"SetCameraExposureAndGain", "DeviceOperationFailed", {}}}},
        {"getGainAndExpo",
         [](DeviceController &c) {
             unsigned short gain = 5;
             double exposure = 6.5;
             const ErrorCode code = c.getGainAndExpo(anyHandle, gain, exposure, 2);
             return outcome(code, gain, exposure);
         },
         "Success 12 1.5",
         {"GetCameraExposureAndGain(device, 2, 0, 0)",
          debug("getGainAndExpo", "getGainAndExpo :1.5 gain: 12")},
         "DeviceOperationFailed 0 0",
         {{"GetCameraExposureAndGain", "DeviceOperationFailed 12 1.5", {}}}},
        {"setExopsureTime",
         [](DeviceController &c) { return outcome(c.setExopsureTime(anyHandle, 2.5, 1)); },
         "Success",
         {debug("setExopsureTime", "exposureTime:2.5,cameraID:1,func default success"),
          "SetCameraExposure(device, 1, 2.5)"},
         "DeviceOperationFailed",
         {{"SetCameraExposure", "DeviceOperationFailed", {}}}},
        {"getExposureTime",
         [](DeviceController &c) {
             double exposure = 6.5;
             const ErrorCode code = c.getExposureTime(anyHandle, exposure, 1);
             return outcome(code, exposure);
         },
         "Success 2.5",
         {"GetCameraExposure(device, 1, 6.5)", debug("getExposureTime", "GetCameraExposure :2.5")},
         "DeviceOperationFailed 6.5",
         {{"GetCameraExposure", "DeviceOperationFailed 2.5", {}}}},
        {"setGain",
         [](DeviceController &c) { return outcome(c.setGain(anyHandle, 13, 1)); },
         "Success",
         {debug("setGain", "gain:13,cameraID:1,func default success"),
          "SetCameraGain(device, 1, 13)"},
         "Success",
         {{"SetCameraGain", "Success", {}}}},
        {"getGain",
         [](DeviceController &c) {
             unsigned short gain = 5;
             const ErrorCode code = c.getGain(anyHandle, gain, 1);
             return outcome(code, gain);
         },
         "Success 13",
         {"GetCameraGain(device, 1, 0)", debug("getGain", "getGain: 13")},
         "Success 0",
         {{"GetCameraGain", "Success 13", {}}}},
    };
}

std::vector<Expectation> lightSettingExpectations()
{
    return {
        // The manager's operation has the capital letter, the controller's has not.
        {"SetProjectorBrightness",
         [](DeviceController &c) { return outcome(c.setProjectorBrightness(21)); },
         "Success",
         {debug("SetProjectorBrightness", "SetProjectorBrightness start"),
          "SetProjectorBrightness(device, 21)",
          debug("SetProjectorBrightness", "SetProjectorBrightness success, ret: 7")},
         "DeviceOperationFailed",
         {{"SetProjectorBrightness", "DeviceOperationFailed",
           Journal{debug("SetProjectorBrightness", "SetProjectorBrightness start"),
                   "SetProjectorBrightness(device, 21)",
                   debug("SetProjectorBrightness", "SetProjectorBrightness success, ret: 3")}}}},
        getter("getProjectorBrightness", &DeviceController::getProjectorBrightness,
               "GetProjectorBrightness", 70),
        setter("setVideoTriggerPeriod", &DeviceController::setVideoTriggerPeriod,
               "setVideoTriggerPeriod start", "SetVideoTriggerPeriod"),
        getter("getVideoTriggerPeriod", &DeviceController::getVideoTriggerPeriod,
               "GetVideoTriggerPeriod", 33),
        {"setStrobeDutioRatio",
         [](DeviceController &c) { return outcome(c.setStrobeDutioRatio(1, 2, 3)); },
         "Success",
         {debug("setStrobeDutioRatio", "setStrobeDutioRatio start"),
          "SetStrobeDutioRatio(device, 1, 2, 3)",
          debug("setStrobeDutioRatio", " setStrobeDutioRatio over, ret: 7")},
         "DeviceOperationFailed",
         {{"SetStrobeDutioRatio", "DeviceOperationFailed",
           Journal{debug("setStrobeDutioRatio", "setStrobeDutioRatio start"),
                   "SetStrobeDutioRatio(device, 1, 2, 3)",
                   debug("setStrobeDutioRatio", " setStrobeDutioRatio over, ret: 3")}}}},
        {"getStrobeDutioRatio",
         [](DeviceController &c) {
             int first = 4;
             int second = 5;
             int third = 6;
             const ErrorCode code = c.getStrobeDutioRatio(first, second, third);
             return outcome(code, first, second, third);
         },
         "Success 10 20 30",
         {debug("getStrobeDutioRatio", "getStrobeDutioRatio start"),
          "GetStrobeDutioRatio(device, 4, 5, 6)",
          debug("getStrobeDutioRatio", " getStrobeDutioRatio over, ret: 7")},
         "DeviceOperationFailed 4 5 6",
         {{"GetStrobeDutioRatio", "DeviceOperationFailed 10 20 30",
           Journal{debug("getStrobeDutioRatio", "getStrobeDutioRatio start"),
                   "GetStrobeDutioRatio(device, 4, 5, 6)",
                   debug("getStrobeDutioRatio", " getStrobeDutioRatio over, ret: 3")}}}},
        setter("setProjectDutioRatio", &DeviceController::setProjectDutioRatio,
               "setProjectDutioRatio start", "SetProjectDutioRatio"),
        getter("getProjectDutioRatio", &DeviceController::getProjectDutioRatio,
               "GetProjectDutioRatio", 50),
        // It logs under another operation's name.
        setter("setDistanceIndicate", &DeviceController::setDistanceIndicate,
               "getCameraCount start", "SetDistanceIndicate"),
        getter("getLaserLineDutioRatio", &DeviceController::getLaserLineDutioRatio,
               "GetLaserLineDutioRatio", 40),
        getter("getIRLaserDutioRatio", &DeviceController::getIRLaserDutioRatio,
               "GetIRLaserDutioRatio", 60),
    };
}

} // namespace KvSyncTest
