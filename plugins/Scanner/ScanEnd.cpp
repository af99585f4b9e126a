#include "ScanEnd.h"

#include "Thrown.h"

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

} // namespace Scanner
