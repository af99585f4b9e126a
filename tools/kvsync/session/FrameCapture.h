#ifndef KVSYNC_FRAMECAPTURE_H
#define KVSYNC_FRAMECAPTURE_H

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
    bool overwrite = false;
    std::optional<int> camera;
    std::optional<int> periodMs;
    std::optional<int> timeoutMs;
    bool color = false;
};

/// Adds all of them but the device, the camera and the color.
void addCaptureOptions(CLI::App &command, CaptureOptions &options);

/// What is done with a device before it takes frames.
struct CapturePreparation
{
    /// Sets the device.
    std::function<void(OpenScanner &device)> prepare;
    /// Further parameters of captureImage.
    QVariantMap parameters;
    /// What else was asked for, to be told in the record.
    QVariantMap told;
};

/// Opens the device, prepares it and takes the frames. Each image is written to the folder when it
/// comes; few are held. The record of the scan stands there from its beginning and tells in the end
/// what came and why it ended. Prints the same, also when the scan fails after its first frame.
///
/// Throws what ended the scan before its last frame, `PathNotExist` if a file cannot be written,
/// and `CameraFailed` if the account of frames does not balance.
void captureFrames(Context &context, const CaptureOptions &options,
                   const CapturePreparation &preparation);

} // namespace KvSyncCli

#endif
