// Discovery and connection.
#include "CameraList.h"
#include "Request.h"
#include "Texts.h"

#include <cstring>

using namespace Tessel3SyncSimulator;

namespace {

constexpr const char *scanningMode = "SPECKLE";
constexpr const char *firmwareVersion = "KV-SIM 1.0.0";

bool isCamera(const Connection &connection, int index)
{
    return index >= 0 && static_cast<std::size_t>(index) < connection.cameras.size();
}

} // namespace

RETSTATUS Tessel3Sync::GetCamerasInformation(const char *name, std::vector<char *> &serials,
                                             std::vector<int> &a, std::vector<int> &b,
                                             std::vector<bool> &flags, int &count)
{
    return Request("GetCamerasInformation")
        // The lists are the host's variables, whatever stands in them; they may not be read.
        .with(name)
        .out("serials", serials)
        .out("a", a)
        .out("b", b)
        .out("flags", flags)
        .out("count", count)
        .run([&](Simulator &simulator, Lock &) {
            const RETSTATUS status = checkName(simulator, name);
            if (status != Success)
                return status;
            // Replaced, not appended to: hosts hand in what the last enumeration left.
            serials.clear();
            a.clear();
            b.clear();
            for (const ListedCamera &camera : listedCameras(simulator)) {
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
    return Request("ConnectDevice")
        .with(mode, extra, serials, a, b)
        .out("device", device)
        .run([&](Simulator &simulator, Lock &lock) {
            if (!mode || !extra)
                return refusal(NullArgument);
            if (std::strcmp(mode, scanningMode) != 0)
                return refusal(UnknownMode);
            std::vector<CameraKind> cameras;
            const auto find = [&] {
                if (!simulator.isAttached())
                    return refusal(UnknownScanner);
                cameras.clear();
                return chooseCameras(simulator, serials, a, b, cameras);
            };
            RETSTATUS status = find();
            if (status != Success)
                return status;
            // A host that connects again gets a new connection; the old handle is void. The scanner
            // may be another one, or none, once nothing runs over the old connection any more.
            simulator.disconnectAll(lock);
            status = find();
            if (status == Success)
                device = simulator.connect(cameras);
            return status;
        });
}

RETSTATUS Tessel3Sync::CloseDeviceCamera(void *&device)
{
    return Request("CloseDeviceCamera", device)
        .needsCameras()
        .run([](Simulator &simulator, Lock &) {
            simulator.stopTrigger();
            simulator.connection.camerasOpen = false;
            return Success;
        });
}

RETSTATUS Tessel3Sync::ReconnectDevice(void *&device)
{
    return Request("ReconnectDevice", device).run([](Simulator &simulator, Lock &) {
        simulator.stopTrigger();
        simulator.connection.camerasOpen = true;
        return Success;
    });
}

RETSTATUS Tessel3Sync::DisConnectDevice(void *&device)
{
    return Request("DisConnectDevice", device)
        .evenIfLost()
        .run([&](Simulator &simulator, Lock &lock) {
            simulator.disconnect(lock);
            device = nullptr;
            return Success;
        });
}

RETSTATUS Tessel3Sync::IsConnectedOnU3(const char *name, bool &connected)
{
    return Request("IsConnectedOnU3")
        .with(name)
        .out("connected", connected)
        .run([&](Simulator &simulator, Lock &) {
            const RETSTATUS status = checkName(simulator, name);
            if (status == Success)
                connected = true;
            return status;
        });
}

RETSTATUS Tessel3Sync::GetFirewareVersion(void *device, const char *first, const char *second,
                                          std::string &version)
{
    return Request("GetFirewareVersion", device)
        .with(first, second)
        .out("version", version)
        .run([&](Simulator &, Lock &) {
            if (!first || !second)
                return refusal(NullArgument);
            version = firmwareVersion;
            return Success;
        });
}

RETSTATUS Tessel3Sync::GetCameraCount(const char *name, int &count)
{
    return Request("GetCameraCount")
        .with(name)
        .out("count", count)
        .run([&](Simulator &simulator, Lock &) {
            const RETSTATUS status = checkName(simulator, name);
            if (status == Success)
                count = static_cast<int>(simulator.setup.cameras.size());
            return status;
        });
}

RETSTATUS Tessel3Sync::GetConnectCameraCount(void *&device, int &count)
{
    return Request("GetConnectCameraCount", device)
        .out("count", count)
        .run([&](Simulator &simulator, Lock &) {
            const Connection &connection = simulator.connection;
            count = connection.camerasOpen ? static_cast<int>(connection.cameras.size()) : 0;
            return Success;
        });
}

RETSTATUS Tessel3Sync::GetCameraSerialNumber(void *&device, int index, char *&serial)
{
    return Request("GetCameraSerialNumber", device)
        .with(index)
        .out("serial", serial)
        .run([&](Simulator &simulator, Lock &) {
            const Connection &connection = simulator.connection;
            if (!isCamera(connection, index))
                return refusal(UnknownCamera);
            const auto camera = connection.cameras[static_cast<std::size_t>(index)];
            serial = cameraSerial(camera.kind);
            return Success;
        });
}

RETSTATUS Tessel3Sync::GetCameraResolution(void *&device, int index, int &width, int &height)
{
    return Request("GetCameraResolution", device)
        .with(index)
        .out("width", width)
        .out("height", height)
        .run([&](Simulator &simulator, Lock &) {
            if (!isCamera(simulator.connection, index))
                return refusal(UnknownCamera);
            width = simulator.setup.width;
            height = simulator.setup.height;
            return Success;
        });
}

RETSTATUS Tessel3Sync::GetStatusDescriptionString(int &status, char *&text)
{
    return Request("GetStatusDescriptionString")
        .with(status)
        .out("text", text)
        .evenWithoutPlan()
        .run([&](Simulator &simulator, Lock &) {
            const bool planned = status == BadFaultPlan && !simulator.planError.empty();
            text = lastingText(planned ? simulator.planError : statusText(status));
            return Success;
        });
}
