#ifndef SCANNER_CAMERASTREAM_H
#define SCANNER_CAMERASTREAM_H

#include "OpenDevice.h"

#include <QtCore/QVariant>

#include <optional>

namespace Scanner {

/// One sensor of a plug-in's camera, streaming for as long as this object lives; then it is left as
/// it was. Throws the plug-in's own code if it refuses.
class CameraStream
{
public:
    CameraStream(OpenDevice &streamingDevice, int sensor, CameraSpace::TriggerMode mode,
                 bool inColor);
    ~CameraStream();
    CameraStream(const CameraStream &) = delete;
    CameraStream &operator=(const CameraStream &) = delete;

    /// Makes the sensor take a frame, if it waits for that.
    void trigger();
    /// The next frame as a map for the host; see captureFrames.
    QVariantMap fetch(int timeoutMs);

private:
    /// Reads what is to be put back later.
    CameraStream(OpenDevice &streamingDevice, int sensor);

    void setMode(CameraSpace::TriggerMode mode);
    void setFormat(CameraSpace::PixelFormatType format);
    ErrorCode setProperty(const QString &name, const QVariantMap &values);

    OpenDevice &device;
    const signed char selector;
    CameraSpace::TriggerMode firstMode = CameraSpace::FreeRunning;
    CameraSpace::PixelFormatType firstFormat = CameraSpace::Mono8;
    CameraSpace::TriggerMode presentMode;
    CameraSpace::PixelFormatType presentFormat;
};

} // namespace Scanner

#endif
