#include "session/ScanRecorder.h"

#include "output/Json.h"
#include "session/Interruption.h"
#include "session/ServiceSession.h"

#include <KvSyncTool/Exception.h>

namespace KvSyncCli {

namespace {

// A device that does not say something takes frames all the same.
template <typename Question>
QJsonValue answerTo(Question question)
{
    try {
        return question();
    } catch (const KvSyncTool::Exception &failure) {
        return QJsonObject{{QStringLiteral("failure"), failure.message()}};
    }
}

QJsonValue settingsOf(ServiceSession &session)
{
    QJsonObject values;
    const QVariantList settings =
        session.callDevice(QStringLiteral("getProperty"), {QStringLiteral("list"), QVariant()})
            .toList();
    for (const QVariant &each : settings) {
        const QVariantMap setting = each.toMap();
        if (setting.contains(QStringLiteral("value")))
            values.insert(setting.value(QStringLiteral("name")).toString(),
                          toJson(setting.value(QStringLiteral("value")), Bytes::Summary));
    }
    return values;
}

QJsonObject factsOf(ServiceSession &session, const QVariantMap &asked)
{
    return {{QStringLiteral("program"), QStringLiteral("kvsync " KVSYNC_VERSION)},
            {QStringLiteral("requested"), asked.value(QStringLiteral("frames")).toInt()},
            {QStringLiteral("asked"), toJson(asked, Bytes::Summary)},
            {QStringLiteral("device"), answerTo([&] {
                 return toJson(session.execute(QStringLiteral("info")), Bytes::Summary);
             })},
            {QStringLiteral("settings"), answerTo([&] { return settingsOf(session); })}};
}

} // namespace

ScanRecorder::ScanRecorder(Interruption &ofProcess, ScanFolder &folder)
    : interruption(ofProcess)
    , writer(folder)
{
}

void ScanRecorder::onEvent(const PluginEvent &event)
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
        if (session)
            session->closeAnyhow();
    }
}

void ScanRecorder::run(ServiceSession &openSession, QVariantMap parameters,
                       const QVariantMap &asked)
{
    session = &openSession;
    writer.begin(factsOf(*session, asked));
    parameters.insert(QStringLiteral("keep"), false);
    try {
        session->callDevice(QStringLiteral("captureImage"), {QStringLiteral("scan"), parameters});
        session->close();
    } catch (...) {
        noteFailure();
    }
    bar.reset();
    session->closeAnyhow();
    finish();
    conclude();
}

void ScanRecorder::take(const QVariantList &images)
{
    if (failure)
        return;
    writer.addFrame(images);
    if (writer.hasFailed())
        session->closeAnyhow();
}

void ScanRecorder::show(const QVariantMap &account)
{
    if (!bar)
        return;
    bar->show(account.value(QStringLiteral("delivered")).toInt(),
              account.value(QStringLiteral("dropped")).toInt(),
              account.value(QStringLiteral("frames")).toInt());
}

void ScanRecorder::finish()
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
void ScanRecorder::noteFailure()
{
    if (failure)
        return;
    failure = std::current_exception();
    failureText = interruption.signal() != 0 ? interruption.text() : currentErrorText();
}

void ScanRecorder::conclude()
{
    if (failure && end.isEmpty())
        writer.withdraw();
    else
        writer.end(reason(), failureText,
                   QJsonObject::fromVariantMap(end.value(QStringLiteral("account")).toMap()));
    if (failure)
        std::rethrow_exception(failure);
}

QString ScanRecorder::reason() const
{
    if (!failure)
        return QStringLiteral("complete");
    if (interruption.signal() != 0)
        return QStringLiteral("interrupted");
    const QString told = end.value(QStringLiteral("reason")).toString();
    return told == QLatin1String("connectionLost") ? told : QStringLiteral("failed");
}

} // namespace KvSyncCli
