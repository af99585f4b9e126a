#ifndef KVSYNC_NAMEDVALUE_H
#define KVSYNC_NAMEDVALUE_H

#include <QtCore/QList>
#include <QtCore/QString>

#include <string>
#include <vector>

namespace KvSyncCli {

/// The halves of NAME=VALUE.
struct NamedValue
{
    QString name;
    QString value;
};

/// Splits each argument at its first equals sign. Throws `InvalidParameter` for one without a name
/// or a sign, and for a name that comes twice.
QList<NamedValue> namedValues(const std::vector<std::string> &arguments);

} // namespace KvSyncCli

#endif
