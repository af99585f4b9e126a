#include "Expectation.h"

#include <QtCore/QStringList>
#include <QtCore/QVector>

namespace KvSyncTest {

using KvSyncCore::DeviceController;

namespace {

template <typename Element>
std::string listText(const QVector<Element> &list)
{
    std::ostringstream stream;
    for (const Element element : list)
        stream << element << ';';
    return stream.str();
}

// The vectors hold the cameras of the first connection, the first of them twice.
const std::string enumeration =
    R"(GetCamerasInformation("KV", ["A", "B", "A"], [1, 2, 1], [3, 4, 3], [true, false], 0))";
const std::string enumerationPrint =
    printed("RetVa: 7    GetCamerasInformation end device_cam_connect\xA3\xBA 2");
const std::string connection =
    R"(ConnectDevice("SPECKLE", "", ["A", "B", "A"], [1, 2, 1], [3, 4, 3], device))";

} // namespace

std::vector<Expectation> connectionExpectations()
{
    return {
        {"connectDeviceBySerial",
         [](DeviceController &c) { return outcome(c.connectDeviceBySerial(anyHandle, "KV")); },
         "Success",
         {enumeration, enumerationPrint, printed("before ConnectDevice "),
          glogInfo(" before connect"), connection, printed("End ConnectDevice"),
          glogInfo(" connect end")},
         "ConnectFailed",
         {{"GetCamerasInformation", "ConnectFailed",
           Journal{enumeration,
                   printed("RetVa: 3    GetCamerasInformation end device_cam_connect\xA3\xBA 2"),
                   printed(" GetCamerasInformation Failed, ERROR ID: 3"),
                   glogError(" GetCamerasInformation Failed")}},
          {"ConnectDevice", "ConnectFailed",
           Journal{enumeration, enumerationPrint, printed("before ConnectDevice "),
                   glogInfo(" before connect"), connection,
                   critical("connectDeviceBySerial", "ConnectDevice failed")}}}},
        {"reconnectDevice",
         [](DeviceController &c) { return outcome(c.reconnectDevice(anyHandle)); },
         "Success",
         {glogInfo("reconnectDevice start"), "CloseDeviceCamera(device)",
          "ReconnectDevice(device)"},
         "ConnectFailed",
         {{"CloseDeviceCamera", "Success", {}},
          {"ReconnectDevice", "ConnectFailed",
           Journal{glogInfo("reconnectDevice start"), "CloseDeviceCamera(device)",
                   "ReconnectDevice(device)", glogError("reconnectDevice failed")}}}},
        {"disconnectDevice",
         [](DeviceController &c) { return outcome(c.disconnectDevice(anyHandle)); },
         "Success",
         {glogInfo("disconnectDevice start"), "SetScanCallBackFunction(device, null, manager)",
          "DisConnectDevice(device)"},
         "ConnectFailed",
         {{"SetScanCallBackFunction", "Success", {}},
          {"DisConnectDevice", "ConnectFailed",
           Journal{glogInfo("disconnectDevice start"),
                   "SetScanCallBackFunction(device, null, manager)", "DisConnectDevice(device)",
                   glogError("disconnectDevice failed")}}}},
    };
}

std::vector<Expectation> queryExpectations()
{
    return {
        {"isConnectedOnU3",
         [](DeviceController &c) {
             bool connected = false;
             const ErrorCode code = c.isConnectedOnU3("KV", connected);
             return outcome(code, connected);
         },
         "Success true",
         {debug("isConnectedOnU3", "isConnectedOnU3 start"), R"(IsConnectedOnU3("KV", false))"},
         "DeviceOperationFailed false",
         {{"IsConnectedOnU3", "DeviceOperationFailed true", {}}}},
        {"getFirewareVersion",
         [](DeviceController &c) {
             QString version = "before";
             const ErrorCode code = c.getFirewareVersion("one", "two", version);
             return outcome(code, version.toStdString());
         },
         "Success 1.2",
         {debug("getFirewareVersion", "getFirewareVersion start"),
          R"(GetFirewareVersion(device, "one", "two", ""))"},
         "DeviceOperationFailed ",
         {{"GetFirewareVersion", "DeviceOperationFailed 1.2", {}}}},
        {"getCamerasInformation",
         [](DeviceController &c) {
             QStringList serials{"before"};
             QVector<int> valuesA{9, 9, 9};
             QVector<int> valuesB{9};
             QVector<bool> flags;
             int count = 5;
             const ErrorCode code =
                 c.getCamerasInformation("KV", serials, valuesA, valuesB, flags, count);
             return outcome(code, serials.join(';').toStdString(), listText(valuesA),
                            listText(valuesB), listText(flags), count);
         },
         "Success A;B 1;2; 3;4; 1;0; 2",
         {debug("getCamerasInformation", "getCamerasInformation start"),
          R"(GetCamerasInformation("KV", [], [], [], [], 5))"},
         "DeviceOperationFailed     5",
         {{"GetCamerasInformation", "DeviceOperationFailed A;B 1;2; 3;4; 1;0; 2", {}}}},
        {"getCameraCount",
         [](DeviceController &c) {
             int count = 5;
             const ErrorCode code = c.getCameraCount("KV", count);
             return outcome(code, count);
         },
         "Success 3",
         {debug("getCameraCount", "getCameraCount start"), R"(GetCameraCount("KV", 5))"},
         "DeviceOperationFailed 5",
         {{"GetCameraCount", "DeviceOperationFailed 3", {}}}},
        {"getConnectCameraCount",
         [](DeviceController &c) {
             int count = 5;
             const ErrorCode code = c.getConnectCameraCount(count);
             return outcome(code, count);
         },
         "Success 2",
         {debug("getConnectCameraCount", "getConnectCameraCount start"),
          "GetConnectCameraCount(device, 5)"},
         "DeviceOperationFailed 5",
         {{"GetConnectCameraCount", "DeviceOperationFailed 2", {}}}},
        {"getCameraSerialNumber",
         [](DeviceController &c) {
             QString serial = "before";
             const ErrorCode code = c.getCameraSerialNumber(1, serial);
             return outcome(code, serial.toStdString());
         },
         "Success B",
         {debug("getCameraSerialNumber", "getCameraSerialNumber start"),
          "GetCameraSerialNumber(device, 1, null)", printed("serials:B")},
         "DeviceOperationFailed ",
         {{"GetCameraSerialNumber", "DeviceOperationFailed B", {}}}},
        {"getCameraResolution",
         [](DeviceController &c) {
             int width = 5;
             int height = 6;
             const ErrorCode code = c.getCameraResolution(1, width, height);
             return outcome(code, width, height);
         },
         "Success 1280 1024",
         {debug("getCameraResolution", "getCameraResolution start"),
          "GetCameraResolution(device, 1, 5, 6)"},
         "DeviceOperationFailed 5 6",
         {{"GetCameraResolution", "DeviceOperationFailed 1280 1024", {}}}},
        {"getStatusDescriptionString",
         [](DeviceController &c) {
             QString text = "before";
             const ErrorCode code = c.getStatusDescriptionString(12, text);
             return outcome(code, text.toStdString());
         },
         "Success all is well",
         {debug("getStatusDescriptionString", "getStatusDescriptionString start"),
          "GetStatusDescriptionString(12, null)"},
         "Success ",
         {{"GetStatusDescriptionString", "Success all is well", {}}}},
    };
}

} // namespace KvSyncTest
