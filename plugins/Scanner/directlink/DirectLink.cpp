#include "DirectLink.h"

#include "Errors.h"

namespace Scanner {

using KvSyncCore::DeviceController;

namespace {

struct FoundCameras
{
    ErrorCode result;
    QVariantList cameras;
};

FoundCameras findCameras(DeviceController &controller, const QString &serial)
{
    QStringList serials;
    QVector<int> valuesA;
    QVector<int> valuesB;
    QVector<bool> flags;
    int count = 0;
    FoundCameras found;
    found.result =
        controller.getCamerasInformation(serial, serials, valuesA, valuesB, flags, count);
    for (int i = 0; i < serials.size(); ++i) {
        found.cameras.append(QVariantMap{{QStringLiteral("serial"), serials.at(i)},
                                         {QStringLiteral("valueA"), valuesA.value(i)},
                                         {QStringLiteral("valueB"), valuesB.value(i)},
                                         {QStringLiteral("flag"), flags.value(i)}});
    }
    return found;
}

QVariantList connectedCameras(DeviceController &controller)
{
    int count = 0;
    check(controller.getConnectCameraCount(count),
          QStringLiteral("The scanner does not say how many cameras it has"));
    QVariantList cameras;
    for (int i = 0; i < count; ++i) {
        QString serial;
        int width = 0;
        int height = 0;
        check(controller.getCameraSerialNumber(i, serial),
              QStringLiteral("Camera %1 does not give its serial number").arg(i));
        check(controller.getCameraResolution(i, width, height),
              QStringLiteral("Camera %1 does not give its resolution").arg(i));
        cameras.append(QVariantMap{{QStringLiteral("camera"), i},
                                   {QStringLiteral("serial"), serial},
                                   {QStringLiteral("width"), width},
                                   {QStringLiteral("height"), height}});
    }
    return cameras;
}

} // namespace

void DirectLink::setController(DeviceController *newController)
{
    const std::lock_guard<std::mutex> lock(mutex);
    controller = newController;
    // The core hands itself over again with every load; another core knows nothing of a scanner
    // that was opened through the one before.
    int count = 0;
    isOpen = isOpen && controller && controller->getConnectCameraCount(count) == Success;
}

void DirectLink::open(const QString &serial, void *statusFunction, void *statusContext)
{
    const std::lock_guard<std::mutex> lock(mutex);
    if (isOpen)
        raise(ConnectFailed,
              QStringLiteral("The scanner is open already; close handle %1 first").arg(handle));
    if (controller->connectDeviceBySerial(handle, serial) != Success)
        raise(ConnectFailed, whyNotConnected(serial));
    controller->setStatusCallback(handle, statusFunction, statusContext);
    isOpen = true;
    openSerial = serial;
}

void DirectLink::close(qint64 askedHandle)
{
    const std::lock_guard<std::mutex> lock(mutex);
    checkOpen(askedHandle);
    isOpen = false;
    controller->stopScan();
    controller->setStatusCallback(handle, nullptr, nullptr);
    check(controller->disconnectDevice(handle),
          QStringLiteral("The scanner refuses to disconnect"));
}

void DirectLink::reset(qint64 askedHandle)
{
    const std::lock_guard<std::mutex> lock(mutex);
    checkOpen(askedHandle);
    check(controller->reconnectDevice(handle), QStringLiteral("The scanner refuses to reconnect"));
}

QVariantList DirectLink::list()
{
    const std::lock_guard<std::mutex> lock(mutex);
    const QString serial = isOpen ? openSerial : QString();
    const FoundCameras found = findCameras(*controller, serial);
    if (!isOpen && (found.result != Success || found.cameras.isEmpty()))
        return {};
    QVariantMap scanner{{QStringLiteral("serial"), serial},
                        {QStringLiteral("connected"), isOpen},
                        {QStringLiteral("cameras"), found.cameras}};
    bool fastUsb = false;
    if (controller->isConnectedOnU3(serial, fastUsb) == Success)
        scanner.insert(QStringLiteral("fastUsb"), fastUsb);
    if (isOpen)
        scanner.insert(QStringLiteral("handle"), handle);
    return {scanner};
}

QVariantMap DirectLink::facts()
{
    const std::lock_guard<std::mutex> lock(mutex);
    checkOpen(handle);
    QString firmware;
    int periodMs = 0;
    bool fastUsb = false;
    check(controller->getFirewareVersion(QString(), QString(), firmware),
          QStringLiteral("The scanner does not give its firmware version"));
    check(controller->getVideoTriggerPeriod(periodMs),
          QStringLiteral("The scanner does not give its trigger period"));
    check(controller->isConnectedOnU3(openSerial, fastUsb),
          QStringLiteral("The scanner does not say how it is connected"));
    return {{QStringLiteral("serial"), openSerial},
            {QStringLiteral("firmware"), firmware},
            {QStringLiteral("fastUsb"), fastUsb},
            {QStringLiteral("periodMs"), periodMs},
            {QStringLiteral("cameras"), connectedCameras(*controller)}};
}

void DirectLink::requireOpen(qint64 askedHandle)
{
    const std::lock_guard<std::mutex> lock(mutex);
    checkOpen(askedHandle);
}

void DirectLink::checkOpen(qint64 askedHandle) const
{
    if (!isOpen || askedHandle != handle)
        raiseNotOpen(askedHandle);
}

// The link answers every failed connection with one code; asking once more tells them apart.
QString DirectLink::whyNotConnected(const QString &serial)
{
    const FoundCameras found = findCameras(*controller, serial);
    if (found.result != Success)
        return QStringLiteral("No scanner answers to the serial number \"%1\"").arg(serial);
    if (found.cameras.isEmpty())
        return QStringLiteral("The scanner \"%1\" reports no camera").arg(serial);
    return QStringLiteral("The scanner \"%1\" refuses the connection").arg(serial);
}

} // namespace Scanner
