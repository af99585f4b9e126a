#include "KvSyncCore/SyncCore.h"

#include "SyncCorePrivate.h"

#include <QtCore/QMetaMethod>

namespace KvSyncCore {

namespace {

// Qt learns QVersionNumber only when it asks the signal for it, and for some kinds of connection it
// never asks: an automatic one to another thread would then lose every event.
void registerTypeOfVersion()
{
    constexpr int versionArgument = 4;
    QMetaMethod::fromSignal(&SyncCore::sendSignals).parameterType(versionArgument);
}

} // namespace

SyncCore::SyncCore()
    : d(new SyncCorePrivate)
{
    registerTypeOfVersion();
    // The two texts differ by a blank; normalisation makes them one signature.
    QObject::connect(d, "2sendSignals(bool, QString, QString, QVariantList,QVersionNumber)", this,
                     "2sendSignals(bool, QString, QString, QVariantList, QVersionNumber)",
                     Qt::DirectConnection);
}

SyncCore::~SyncCore()
{
    delete d;
}

void SyncCore::init(const QString &commandPluginDir, const QString &devicePluginDir)
{
    d->init(commandPluginDir, devicePluginDir);
}

void SyncCore::loadCommandPlugin(const QString &pluginName, const QVersionNumber &version)
{
    d->loadCommandPlugin(pluginName, version);
}

CommandInterface *SyncCore::getCommandPlugin(const QString &pluginName,
                                             const QVersionNumber &version)
{
    return d->getCommandPlugin(pluginName, version);
}

QVariant SyncCore::execute(const QString &pluginName, const QString &funcName,
                           const QList<QVariant> &args, const QVersionNumber &version)
{
    return d->execute(pluginName, funcName, args, version);
}

} // namespace KvSyncCore
