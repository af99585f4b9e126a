#include "session/Capture.h"

#include "Failure.h"

namespace KvSyncCli {

Capture::Capture(Interruption &ofProcess, ScanFolder &folder)
    : interruption(ofProcess)
    , writer(folder)
{
}

void Capture::hear(const Event &event)
{
    try {
        if (event.name == QLatin1String("frameArrived"))
            take(event.payload);
        else if (event.name == QLatin1String("progress"))
            show(event.payload.value(0).toMap());
        else if (event.name == QLatin1String("scanEnded"))
            end = event.payload.value(0).toMap();
    } catch (...) {
        noteFailure();
        if (device)
            device->closeAnyhow();
    }
}

void Capture::run(OpenScanner &openDevice, QVariantMap parameters, const QJsonObject &facts)
{
    device = &openDevice;
    parameters.insert(QStringLiteral("keep"), false);
    writer.begin(facts);
    try {
        device->call(QStringLiteral("captureImage"), {QStringLiteral("scan"), parameters});
        device->close();
    } catch (...) {
        noteFailure();
    }
    bar.reset();
    device->closeAnyhow();
    finish();
    tell();
}

void Capture::take(const QVariantList &images)
{
    if (failure)
        return;
    writer.take(images);
    if (writer.hasFailed())
        device->closeAnyhow();
}

void Capture::show(const QVariantMap &account)
{
    if (!bar)
        return;
    bar->show(account.value(QStringLiteral("delivered")).toInt(),
              account.value(QStringLiteral("dropped")).toInt(),
              account.value(QStringLiteral("frames")).toInt());
}

void Capture::finish()
{
    try {
        writer.finish();
    } catch (...) {
        // It made the scan end: what was noted before is its consequence.
        failure = nullptr;
        noteFailure();
    }
}

// The first one is the one to tell; a wish to end makes calls fail.
void Capture::noteFailure()
{
    if (failure)
        return;
    failure = std::current_exception();
    failureText = interruption.signal() != 0 ? interruption.text() : presentFailureText();
}

void Capture::tell()
{
    if (failure && end.isEmpty())
        writer.takeBack();
    else
        writer.end(reason(), failureText,
                   QJsonObject::fromVariantMap(end.value(QStringLiteral("account")).toMap()));
    if (failure)
        std::rethrow_exception(failure);
}

QString Capture::reason() const
{
    if (!failure)
        return QStringLiteral("complete");
    if (interruption.signal() != 0)
        return QStringLiteral("interrupted");
    const QString told = end.value(QStringLiteral("reason")).toString();
    return told == QLatin1String("connectionLost") ? told : QStringLiteral("failed");
}

} // namespace KvSyncCli
