// Discovery and connection.
#include "api/CameraLists.h"
#include "api/Request.h"

#include <cstring>

using namespace Tessel3SyncSimulator;

namespace {

constexpr const char *scanningMode = "SPECKLE";
constexpr const char *firmwareVersion = "KV-SIM 1.0.0";

} // namespace

RETSTATUS Tessel3Sync::GetCamerasInformation(const char *name, std::vector<char *> &serials,
                                             std::vector<int> &a, std::vector<int> &b,
                                             std::vector<bool> &flags, int &count)
{
    return Request(call<indexOf("GetCamerasInformation")>(serials, a, b, flags, count))
        // The lists are the host's variables, whatever they hold: they must not be read.
        .with(name)
        .run([&](Scanner &scanner, Lock &) {
            const RETSTATUS status = checkName(scanner, name);
            if (status != Success)
                return status;
            // Replaced, not appended to: hosts hand in what the last enumeration left.
            serials.clear();
            a.clear();
            b.clear();
            for (const ListedCamera &camera : listedCameras(scanner.setup())) {
                serials.push_back(camera.serial);
                a.push_back(camera.color);
                b.push_back(camera.port);
            }
            flags.assign(serials.size(), true);
            count = static_cast<int>(serials.size());
            return Success;
        });
}

RETSTATUS Tessel3Sync::ConnectDevice(const char *mode, const char *extra,
                                     std::vector<char *> &serials, std::vector<int> &a,
                                     std::vector<int> &b, void *&device)
{
    return Request(call<indexOf("ConnectDevice")>(device))
        .with(mode, extra, serials, a, b)
        .run([&](Scanner &scanner, Lock &lock) {
            if (!mode || !extra)
                return refusal(NullArgument);
            if (std::strcmp(mode, scanningMode) != 0)
                return refusal(UnknownMode);
            std::vector<CameraKind> cameras;
            const auto find = [&] {
                if (!scanner.isAttached())
                    return refusal(UnknownScanner);
                cameras.clear();
                return chooseCameras(scanner.setup(), serials, a, b, cameras);
            };
            RETSTATUS status = find();
            if (status != Success)
                return status;
            // A host that connects again gets a new connection; the old handle is void. The scanner
            // may be another one, or none, once nothing runs over the old connection any more.
            SimulatedLibrary::instance().disconnectAll(lock);
            status = find();
            if (status == Success)
                device = scanner.connect(cameras);
            return status;
        });
}

RETSTATUS Tessel3Sync::CloseDeviceCamera(void *&device)
{
    return Request(call<indexOf("CloseDeviceCamera")>(), device)
        .needsCameras()
        .run([](Scanner &scanner, Lock &) {
            scanner.closeCameras();
            return Success;
        });
}

RETSTATUS Tessel3Sync::ReconnectDevice(void *&device)
{
    return Request(call<indexOf("ReconnectDevice")>(), device).run([](Scanner &scanner, Lock &) {
        scanner.openCameras();
        return Success;
    });
}

RETSTATUS Tessel3Sync::DisConnectDevice(void *&device)
{
    return Request(call<indexOf("DisConnectDevice")>(), device)
        .evenIfLost()
        .run([&](Scanner &scanner, Lock &lock) {
            scanner.disconnect();
            SimulatedLibrary::instance().awaitCallback(lock);
            device = nullptr;
            return Success;
        });
}

RETSTATUS Tessel3Sync::IsConnectedOnU3(const char *name, bool &connected)
{
    return Request(call<indexOf("IsConnectedOnU3")>(connected))
        .with(name)
        .run([&](Scanner &scanner, Lock &) {
            const RETSTATUS status = checkName(scanner, name);
            if (status == Success)
                connected = true;
            return status;
        });
}

RETSTATUS Tessel3Sync::GetFirewareVersion(void *device, const char *first, const char *second,
                                          std::string &version)
{
    return Request(call<indexOf("GetFirewareVersion")>(version), device)
        .with(first, second)
        .run([&](Scanner &, Lock &) {
            if (!first || !second)
                return refusal(NullArgument);
            version = firmwareVersion;
            return Success;
        });
}

RETSTATUS Tessel3Sync::GetCameraCount(const char *name, int &count)
{
    return Request(call<indexOf("GetCameraCount")>(count))
        .with(name)
        .run([&](Scanner &scanner, Lock &) {
            const RETSTATUS status = checkName(scanner, name);
            if (status == Success)
                count = static_cast<int>(scanner.setup().cameras.size());
            return status;
        });
}

RETSTATUS Tessel3Sync::GetConnectCameraCount(void *&device, int &count)
{
    return Request(call<indexOf("GetConnectCameraCount")>(count), device)
        .run([&](Scanner &scanner, Lock &) {
            count = scanner.areCamerasOpen() ? scanner.cameraCount() : 0;
            return Success;
        });
}

RETSTATUS Tessel3Sync::GetCameraSerialNumber(void *&device, int index, char *&serial)
{
    return Request(call<indexOf("GetCameraSerialNumber")>(serial), device)
        .with(index)
        .run([&](Scanner &scanner, Lock &) {
            const ConnectedCamera *camera = scanner.camera(index);
            if (!camera)
                return refusal(UnknownCamera);
            serial = cameraSerial(camera->kind);
            return Success;
        });
}

RETSTATUS Tessel3Sync::GetCameraResolution(void *&device, int index, int &width, int &height)
{
    return Request(call<indexOf("GetCameraResolution")>(width, height), device)
        .with(index)
        .run([&](Scanner &scanner, Lock &) {
            if (!scanner.camera(index))
                return refusal(UnknownCamera);
            width = scanner.setup().width;
            height = scanner.setup().height;
            return Success;
        });
}

RETSTATUS Tessel3Sync::GetStatusDescriptionString(int &status, char *&text)
{
    return Request(call<indexOf("GetStatusDescriptionString")>(text))
        .with(status)
        .evenWithoutPlan()
        .run([&](Scanner &, Lock &) {
            const std::string &planError = SimulatedLibrary::instance().planError();
            const bool saysWhy = status == BadFaultPlan && !planError.empty();
            text = lastingText(saysWhy ? planError : statusText(status));
            return Success;
        });
}
