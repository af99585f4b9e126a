// The least that a host does: one SyncCore, one command plug-in, one call, events.

#include <KvSyncCore/SyncCore.h>
#include <KvSyncTool/Exception.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QTextStream>

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    QTextStream out(stdout);
    QTextStream err(stderr);
    try {
        KvSyncCore::SyncCore core;
        QObject::connect(&core, &KvSyncCore::SyncCore::sendSignals,
                         [&out](bool, const QString &plugin, const QString &signal,
                                const QVariantList &list, const QVersionNumber &) {
                             out << "event " << plugin << '.' << signal << ' '
                                 << list.value(0).toString() << '\n';
                         });
        core.init(QStringLiteral("Logic"), QStringLiteral("Device"));
        const QVersionNumber version(1, 0);
        core.loadCommandPlugin(QStringLiteral("Greeter"), version);
        const QVariant answer = core.execute(
            QStringLiteral("Greeter"), QStringLiteral("execute"),
            {qint64(0), QStringLiteral("count devices"), QVariantList{QStringLiteral("Blinker")}},
            version);
        out << "devices " << answer.toInt() << '\n';
    } catch (const KvSyncTool::Exception &failure) {
        err << failure.message() << '\n';
        return 1;
    }
    return 0;
}
