#ifndef KVSYNC_SCANNERSERVICE_H
#define KVSYNC_SCANNERSERVICE_H

#include <QtCore/QString>
#include <QtCore/QVersionNumber>

namespace KvSyncCli {

// The command plug-in through which kvsync reaches scanners.

inline QString scannerPluginName()
{
    return QStringLiteral("Scanner");
}

inline QVersionNumber scannerPluginVersion()
{
    return QVersionNumber(1, 0);
}

} // namespace KvSyncCli

#endif
