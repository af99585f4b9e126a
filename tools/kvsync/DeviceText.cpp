#include "DeviceText.h"

#include <QtCore/QStringList>

namespace KvSyncCli {

QString shownTypes(const QVariantMap &device)
{
    const QStringList types = device.value(QStringLiteral("types")).toStringList();
    return types.isEmpty() ? QStringLiteral("no capability") : types.join(QStringLiteral(", "));
}

} // namespace KvSyncCli
