#include "Scan.h"

#include "Errors.h"

#include <KvSyncTool/Exception.h>

#include <exception>

namespace Scanner {

namespace {

QString reasonName(EndReason reason)
{
    switch (reason) {
    case EndReason::Complete:
        return QStringLiteral("complete");
    case EndReason::Stopped:
        return QStringLiteral("stopped");
    case EndReason::ConnectionLost:
        return QStringLiteral("connectionLost");
    case EndReason::Failed:
        break;
    }
    return QStringLiteral("failed");
}

void takeFrames(FrameSource &source, int frames, const Publish &publish, QVariantList *images)
{
    for (int frame = 0; frame < frames; ++frame) {
        const QVariantList maps = source.next();
        if (images)
            *images += maps;
        publish(QStringLiteral("frameArrived"), maps);
        publish(QStringLiteral("progress"), {source.account().toMap()});
    }
}

void stopQuietly(FrameSource &source)
{
    try {
        source.stop();
    } catch (const KvSyncTool::Exception &) {
        // Another failure tells the host.
    }
}

} // namespace

void publishEnd(const Publish &publish, const ScanEnd &end, const FrameAccount &account) noexcept
{
    runLogged("A slot of the Scanner event scanEnded", [&] {
        publish(QStringLiteral("scanEnded"),
                {QVariantMap{{QStringLiteral("reason"), reasonName(end.reason)},
                             {QStringLiteral("text"), end.text},
                             {QStringLiteral("account"), account.toMap()}}});
    });
}

QVariantList runScan(FrameSource &source, int frames, bool keep, const Publish &publish)
{
    QVariantList images;
    ScanEnd end;
    std::exception_ptr thrown;
    try {
        takeFrames(source, frames, publish, keep ? &images : nullptr);
        source.stop();
    } catch (...) {
        thrown = std::current_exception();
        end = source.thrownEnd();
        stopQuietly(source);
    }
    publishEnd(publish, end, source.account());
    if (thrown)
        std::rethrow_exception(thrown);
    return images;
}

} // namespace Scanner
