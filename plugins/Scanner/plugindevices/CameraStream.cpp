#include "CameraStream.h"

#include "Errors.h"

#include <QtCore/QMap>

namespace Scanner {

using KvSyncCore::DeviceController;

namespace {

QVariant whole(const QVariantMap &image, const QString &key)
{
    const int number = image.value(key).toInt();
    if (number <= 0)
        raise(CameraFailed, QStringLiteral("The camera gave no whole image"));
    return number;
}

} // namespace

CameraStream::CameraStream(OpenDevice &streamingDevice, int sensor)
    : device(streamingDevice)
    , selector(static_cast<signed char>(sensor))
{
    check(device.call([&](DeviceController &c, qint64 handle) {
        return c.getTriggerMode(handle, firstMode, selector);
    }),
          QStringLiteral("Camera %1 does not give its trigger mode").arg(selector));
    check(device.call([&](DeviceController &c, qint64 handle) {
        return c.getPixelFormat(handle, firstFormat, selector);
    }),
          QStringLiteral("Camera %1 does not give its pixel format").arg(selector));
    presentMode = firstMode;
    presentFormat = firstFormat;
}

// Once the delegate is done the destructor runs, even if what follows throws.
CameraStream::CameraStream(OpenDevice &streamingDevice, int sensor, CameraSpace::TriggerMode mode,
                           bool inColor)
    : CameraStream(streamingDevice, sensor)
{
    setMode(mode);
    if (inColor)
        setFormat(CameraSpace::RGB8);
    check(device.call([&](DeviceController &c, qint64 handle) {
        c.discardFrames(handle, selector);
        return c.startStream(handle, selector);
    }),
          QStringLiteral("Camera %1 refuses to start").arg(selector));
}

CameraStream::~CameraStream()
{
    try {
        device.call([&](DeviceController &c, qint64 handle) {
            c.stopStream(handle, selector);
            return c.discardFrames(handle, selector);
        });
        setMode(firstMode);
        setFormat(firstFormat);
    } catch (...) {
        // The device is closing, or gone, or throws what it likes: another failure tells the host.
    }
}

void CameraStream::trigger()
{
    if (presentMode != CameraSpace::SoftwareTrigger)
        return;
    check(setProperty(QStringLiteral("trigger"), {}),
          QStringLiteral("Camera %1 refuses the trigger").arg(selector));
}

QVariantMap CameraStream::fetch(int timeoutMs)
{
    QMap<QString, QVariant> values{{QStringLiteral("selector"), int(selector)},
                                   {QStringLiteral("timeoutMs"), timeoutMs}};
    check(device.call([&](DeviceController &c, qint64 handle) {
        return c.getProperty(handle, QStringLiteral("frame"), values);
    }),
          QStringLiteral("Camera %1 gave no frame").arg(selector));
    const QByteArray data = values.value(QStringLiteral("data")).toByteArray();
    if (data.isEmpty())
        raise(CameraFailed, QStringLiteral("The camera gave no whole image"));
    return {{QStringLiteral("camera"), int(selector)},
            {QStringLiteral("frame"), values.value(QStringLiteral("frame")).toInt()},
            {QStringLiteral("width"), whole(values, QStringLiteral("width"))},
            {QStringLiteral("height"), whole(values, QStringLiteral("height"))},
            {QStringLiteral("bitDepth"), whole(values, QStringLiteral("bitDepth"))},
            {QStringLiteral("format"), static_cast<int>(presentFormat)},
            {QStringLiteral("data"), data}};
}

void CameraStream::setMode(CameraSpace::TriggerMode mode)
{
    if (mode == presentMode)
        return;
    check(device.call([&](DeviceController &c, qint64 handle) {
        return c.setTriggerMode(handle, mode, selector);
    }),
          QStringLiteral("Camera %1 refuses the trigger mode").arg(selector));
    presentMode = mode;
}

void CameraStream::setFormat(CameraSpace::PixelFormatType format)
{
    if (format == presentFormat)
        return;
    check(setProperty(QStringLiteral("pixelFormat"),
                      {{QStringLiteral("value"), static_cast<int>(format)}}),
          QStringLiteral("Camera %1 refuses the pixel format").arg(selector));
    presentFormat = format;
}

ErrorCode CameraStream::setProperty(const QString &name, const QVariantMap &values)
{
    QMap<QString, QVariant> sent = values;
    sent.insert(QStringLiteral("selector"), int(selector));
    return device.call(
        [&](DeviceController &c, qint64 handle) { return c.setProperty(handle, name, sent); });
}

} // namespace Scanner
