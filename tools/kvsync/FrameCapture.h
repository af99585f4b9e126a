#ifndef KVSYNC_FRAMECAPTURE_H
#define KVSYNC_FRAMECAPTURE_H

#include "FrameReport.h"
#include "OpenScanner.h"

#include <functional>
#include <optional>
#include <string>

namespace KvSyncCli {

/// How a device takes frames, and where they go.
struct CaptureOptions
{
    DeviceOptions device;
    int frames = 0;
    std::string folder;
    std::optional<int> camera;
    std::optional<int> periodMs;
    std::optional<int> timeoutMs;
    bool color = false;
};

/// Adds all of them but the device and the camera.
void addCaptureOptions(CLI::App &command, CaptureOptions &options);

/// Opens the device, lets `prepare` set it, takes the frames, writes each image and a contact sheet
/// to the folder, and prints the report. `firstNumber` is that of the device's first frame. Throws
/// `CameraFailed` if the account of frames does not balance.
void captureFrames(Context &context, const CaptureOptions &options, int firstNumber,
                   const std::function<void(OpenScanner &device)> &prepare);

} // namespace KvSyncCli

#endif
