#include "DirectLink.h"

#include <QtCore/QLoggingCategory>

#include <cstring>

namespace KvSyncTest {

namespace {

void scanFunction(const void *const &, std::vector<unsigned char *> &, const int &, const int &,
                  std::vector<int> &)
{
}

void statusFunction(const void *const &, const unsigned char &, const unsigned char &)
{
}

char deviceObject;
char contextObject;

char serialA[] = "A";
char serialB[] = "B";
char description[] = "all is well";
unsigned char pixels[] = {1, 2, 3, 4, 5, 6};

// Discovery and connection
void addConnection(ScannerEffects &effects)
{
    effects.GetCamerasInformation = [](const char *, auto &serials, auto &a, auto &b, auto &flags,
                                       int &count) {
        serials = {serialA, serialB};
        a = {1, 2};
        b = {3, 4};
        flags = {true, false};
        count = 2;
        return accepted;
    };
    effects.ConnectDevice = [](const char *, const char *, auto &, auto &, auto &, void *&device) {
        device = &deviceObject;
        return accepted;
    };
}

void addFacts(ScannerEffects &effects)
{
    effects.IsConnectedOnU3 = [](const char *, bool &connected) {
        connected = true;
        return accepted;
    };
    effects.GetFirewareVersion = [](void *, const char *, const char *, std::string &version) {
        version = "1.2";
        return accepted;
    };
    effects.GetCameraCount = [](const char *, int &count) { return count = 3, accepted; };
    effects.GetConnectCameraCount = [](void *&, int &count) { return count = 2, accepted; };
    effects.GetCameraSerialNumber = [](void *&, int, char *&serial) {
        serial = serialB;
        return accepted;
    };
    effects.GetCameraResolution = [](void *&, int, int &width, int &height) {
        width = 1280;
        height = 1024;
        return accepted;
    };
    effects.GetStatusDescriptionString = [](int &, char *&text) {
        text = description;
        return accepted;
    };
}

void addSettings(ScannerEffects &effects)
{
    effects.GetVideoTriggerPeriod = [](void *&, int &period) { return period = 33, accepted; };
    effects.GetStrobeDutioRatio = [](void *&, int &first, int &second, int &third) {
        first = 10;
        second = 20;
        third = 30;
        return accepted;
    };
    effects.GetLaserLineDutioRatio = [](void *&, int &ratio) { return ratio = 40, accepted; };
    effects.GetProjectDutioRatio = [](void *&, int &ratio) { return ratio = 50, accepted; };
    effects.GetIRLaserDutioRatio = [](void *&, int &ratio) { return ratio = 60, accepted; };
    effects.GetProjectorBrightness = [](void *&, int &level) { return level = 70, accepted; };
    effects.GetCameraExposureAndGain = [](void *&, int, double &exposure, int &gain) {
        exposure = 1.5;
        gain = 12;
        return accepted;
    };
    effects.GetCameraExposure = [](void *&, int, double &exposure) {
        exposure = 2.5;
        return accepted;
    };
    effects.GetCameraGain = [](void *&, int, int &gain) { return gain = 13, accepted; };
}

void addCapture(ScannerEffects &effects)
{
    effects.SnapColorImage = [](void *&, auto &images, int &width, int &height, const int &,
                                double &, int &, Tessel3Sync::CONTROLROUTE) {
        images = {pixels, pixels + 3};
        width = 3;
        height = 1;
        return accepted;
    };
    effects.ReadUserInfomation = [](void *&, int, char *&buffer) {
        std::strcpy(buffer, "stored");
        return accepted;
    };
}

} // namespace

void *onScan()
{
    return reinterpret_cast<void *>(&scanFunction);
}

void *onStatus()
{
    return reinterpret_cast<void *>(&statusFunction);
}

void *context()
{
    return &contextObject;
}

ScannerEffects talkativeScanner()
{
    ScannerEffects effects;
    addConnection(effects);
    addFacts(effects);
    addSettings(effects);
    addCapture(effects);
    return effects;
}

DirectLink::DirectLink()
    : scanner(recordingScanner())
{
    scanner.reset();
    scanner.pointerNames = {{&deviceObject, "device"},
                            {onScan(), "onScan"},
                            {onStatus(), "onStatus"},
                            {context(), "context"},
                            {&manager, "manager"}};
    QLoggingCategory::setFilterRules("KvSyncTool.debug=true");
}

DirectLink::~DirectLink()
{
    QLoggingCategory::setFilterRules({});
    scanner.reset();
}

void DirectLink::connect()
{
    const ScannerEffects given = scanner.effects;
    scanner.effects = talkativeScanner();
    ErrorCode code = ConnectFailed;
    journalOf([&] { code = controller.connectDeviceBySerial(anyHandle, "KV"); });
    ASSERT_EQ(code, Success);
    scanner.effects = given;
}

} // namespace KvSyncTest
