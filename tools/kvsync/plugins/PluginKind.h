#ifndef KVSYNC_PLUGINKIND_H
#define KVSYNC_PLUGINKIND_H

#include <QtCore/QString>
#include <QtCore/QStringList>

namespace KvSyncCli {

enum class PluginKind {
    Unknown,
    CommandPlugin,
    DevicePlugin,
};

/// "command", "device", or null for what is neither.
const char *kindName(PluginKind kind);

/// The kind whose interface has this identifier.
PluginKind kindOf(const QString &iid);

/// The identifiers of a kind's interface; of Unknown, those of every kind.
QStringList iidsOf(PluginKind kind);

} // namespace KvSyncCli

#endif
