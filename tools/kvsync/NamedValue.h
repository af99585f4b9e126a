#ifndef KVSYNC_NAMEDVALUE_H
#define KVSYNC_NAMEDVALUE_H

#include <QtCore/QString>

namespace KvSyncCli {

/// The halves of NAME=VALUE.
struct NamedValue
{
    QString name;
    QString value;
};

/// Splits at the first equals sign. Throws `InvalidParameter` if there is none, or nothing before.
NamedValue splitNamedValue(const QString &text);

} // namespace KvSyncCli

#endif
