#include "Expectation.h"

namespace KvSyncTest {

using KvSyncCore::DeviceController;

std::vector<Expectation> scanExpectations()
{
    return {
        {"setScanCallback",
         [](DeviceController &c) {
             return outcome(c.setScanCallback(anyHandle, onScan(), context()));
         },
         "Success",
         {glogInfo(" setScanCallback start"), "SetScanCallBackFunction(device, onScan, context)",
          glogInfo(" setScanCallback success")},
         "CameraFailed",
         {{"SetScanCallBackFunction", "CameraFailed",
           Journal{glogInfo(" setScanCallback start"),
                   "SetScanCallBackFunction(device, onScan, context)",
                   critical("setScanCallback", " setScanCallback failed")}}}},
        {"setStatusCallback",
         [](DeviceController &c) {
             return outcome(c.setStatusCallback(anyHandle, onStatus(), context()));
         },
         "Success",
         {glogInfo(" setStatusCallback start"),
          "SetStatusCallBackFunction(device, onStatus, context)"},
         "Success",
         {{"SetStatusCallBackFunction", "Success", {}}}},
        {"startScan",
         [](DeviceController &c) {
             QMap<QString, QVariant> parameters{
                 {"bEnableColor", true}, {"colorMode", 5}, {"iPeriod", 33}};
             return outcome(c.startScan(parameters));
         },
         "Success",
         {"SetStrobeControlledByTrigger(device, 2, 4)", "SetDistanceIndicate(device, 3)",
          "Project(device, 2)", "EnableIRLaser(device, false)",
          glogInfo("startScan start | bEnableColor: , 1 colorMode: 5 iPeriod: 33"),
          "EnableVideoTrigger(device, 5, true)", "SetVideoTriggerPeriod(device, 33)"},
         "Success",
         {{"SetStrobeControlledByTrigger", "Success", {}},
          {"SetDistanceIndicate", "Success", {}},
          {"Project", "Success", {}},
          {"EnableIRLaser", "Success", {}},
          {"EnableVideoTrigger", "Success", {}},
          {"SetVideoTriggerPeriod", "Success", {}}}},
        {"stopScan",
         [](DeviceController &c) { return outcome(c.stopScan()); },
         "Success",
         {"EnableVideoTrigger(device, 0, false)", "Project(device, 0)"},
         "Success",
         {{"EnableVideoTrigger", "Success", {}}, {"Project", "Success", {}}}},
    };
}

} // namespace KvSyncTest
