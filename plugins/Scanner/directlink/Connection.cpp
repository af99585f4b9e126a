#include "Connection.h"

#include "Controls.h"
#include "Errors.h"

namespace Scanner::DirectLink {

using KvSyncCore::DeviceController;

namespace {

struct FoundCameras
{
    ErrorCode result;
    QVariantList cameras;

    bool arePresent() const { return result == Success && !cameras.isEmpty(); }
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

/// A scanner that was unplugged has no cameras until they are connected again.
bool answers(DeviceController &controller)
{
    int cameras = 0;
    return controller.getConnectCameraCount(cameras) == Success && cameras > 0;
}

} // namespace

void Connection::setController(DeviceController *newController)
{
    const std::lock_guard<std::mutex> lock(mutex);
    controller = newController;
    // The core hands itself over again with every load; another core knows nothing of a scanner
    // that was opened through the one before.
    int cameras = 0;
    if (state != State::Closed &&
        (!controller || controller->getConnectCameraCount(cameras) != Success))
        state = State::Closed;
}

void Connection::open(const QString &serial, void *statusFunction, void *statusContext)
{
    const std::lock_guard<std::mutex> lock(mutex);
    if (state != State::Closed && !isConnected())
        raiseLost();
    if (state == State::Open)
        raise(ConnectFailed,
              QStringLiteral("The scanner is open already; close handle %1 first").arg(handle));
    if (controller->connectDeviceBySerial(handle, serial) != Success)
        raise(ConnectFailed, whyNotConnected(serial));
    controller->setStatusCallback(handle, statusFunction, statusContext);
    state = State::Open;
    openSerial = serial;
}

void Connection::close(qint64 askedHandle)
{
    const std::lock_guard<std::mutex> lock(mutex);
    checkOpen(askedHandle);
    state = State::Closed;
    controller->stopScan();
    switchLasersOff(*controller);
    controller->setStatusCallback(handle, nullptr, nullptr);
    check(controller->disconnectDevice(handle),
          QStringLiteral("The scanner refuses to disconnect"));
}

void Connection::reset(qint64 askedHandle)
{
    const std::lock_guard<std::mutex> lock(mutex);
    checkOpen(askedHandle);
    if (!isConnected() && !findCameras(*controller, openSerial).arePresent())
        raise(ConnectFailed, QStringLiteral("The scanner is not back yet; wait until it is, then "
                                            "call resetDevices again"));
    check(controller->reconnectDevice(handle), QStringLiteral("The scanner refuses to reconnect"));
    state = answers(*controller) ? State::Open : State::Lost;
    if (state == State::Lost)
        raiseLost();
}

QVariantList Connection::list()
{
    const std::lock_guard<std::mutex> lock(mutex);
    const bool isOpen = state != State::Closed;
    const QString serial = isOpen ? openSerial : QString();
    const FoundCameras found = findCameras(*controller, serial);
    if (!isOpen && !found.arePresent())
        return {};
    QVariantMap scanner{{QStringLiteral("serial"), serial},
                        {QStringLiteral("connected"), isOpen && isConnected()},
                        {QStringLiteral("present"), found.arePresent()},
                        {QStringLiteral("cameras"), found.cameras}};
    bool fastUsb = false;
    if (controller->isConnectedOnU3(serial, fastUsb) == Success)
        scanner.insert(QStringLiteral("fastUsb"), fastUsb);
    if (isOpen)
        scanner.insert(QStringLiteral("handle"), handle);
    return {scanner};
}

QVariantMap Connection::facts()
{
    QString serial;
    QString firmware;
    int periodMs = 0;
    bool fastUsb = false;
    run(QStringLiteral("The scanner does not give its firmware version"),
        [&](DeviceController &c) { return c.getFirewareVersion(QString(), QString(), firmware); });
    run(QStringLiteral("The scanner does not give its trigger period"),
        [&](DeviceController &c) { return c.getVideoTriggerPeriod(periodMs); });
    run(QStringLiteral("The scanner does not say how it is connected"), [&](DeviceController &c) {
        serial = openSerial;
        return c.isConnectedOnU3(serial, fastUsb);
    });
    return {{QStringLiteral("serial"), serial},
            {QStringLiteral("firmware"), firmware},
            {QStringLiteral("fastUsb"), fastUsb},
            {QStringLiteral("periodMs"), periodMs},
            {QStringLiteral("cameras"), connectedCameras()}};
}

void Connection::requireOpen(qint64 askedHandle)
{
    const std::lock_guard<std::mutex> lock(mutex);
    checkOpen(askedHandle);
}

void Connection::requireConnection()
{
    const std::lock_guard<std::mutex> lock(mutex);
    checkOpen(handle);
    if (!isConnected())
        raiseLost();
}

void Connection::checkOpen(qint64 askedHandle) const
{
    if (state == State::Closed || askedHandle != handle)
        raiseNotOpen(askedHandle);
}

bool Connection::isConnected()
{
    if (state == State::Open && !answers(*controller))
        state = State::Lost;
    return state == State::Open;
}

void Connection::expect(ErrorCode result, const QString &text)
{
    if (result != Success && !isConnected())
        raiseLost();
    check(result, text);
}

void Connection::raiseLost()
{
    raise(ConnectFailed, QStringLiteral("The connection to the scanner was lost; wait until the "
                                        "scanner is back, then call resetDevices"));
}

QVariantList Connection::connectedCameras()
{
    int count = 0;
    run(QStringLiteral("The scanner does not say how many cameras it has"),
        [&](DeviceController &c) { return c.getConnectCameraCount(count); });
    QVariantList cameras;
    for (int i = 0; i < count; ++i) {
        QString serial;
        int width = 0;
        int height = 0;
        run(QStringLiteral("Camera %1 does not give its serial number").arg(i),
            [&](DeviceController &c) { return c.getCameraSerialNumber(i, serial); });
        run(QStringLiteral("Camera %1 does not give its resolution").arg(i),
            [&](DeviceController &c) { return c.getCameraResolution(i, width, height); });
        cameras.append(QVariantMap{{QStringLiteral("camera"), i},
                                   {QStringLiteral("serial"), serial},
                                   {QStringLiteral("width"), width},
                                   {QStringLiteral("height"), height}});
    }
    return cameras;
}

// Every failed connection has the same code; asking once more tells the reasons apart.
QString Connection::whyNotConnected(const QString &serial)
{
    const FoundCameras found = findCameras(*controller, serial);
    if (found.result != Success)
        return QStringLiteral("No scanner answers to the serial number \"%1\"").arg(serial);
    if (found.cameras.isEmpty())
        return QStringLiteral("The scanner \"%1\" reports no camera").arg(serial);
    return QStringLiteral("The scanner \"%1\" refuses the connection").arg(serial);
}

} // namespace Scanner::DirectLink
