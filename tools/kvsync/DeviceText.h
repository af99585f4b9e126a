#ifndef KVSYNC_DEVICETEXT_H
#define KVSYNC_DEVICETEXT_H

#include <QtCore/QString>
#include <QtCore/QVariant>

namespace KvSyncCli {

/// The "types" of a device for people: "camera, motor", or "no capability".
QString shownTypes(const QVariantMap &device);

} // namespace KvSyncCli

#endif
