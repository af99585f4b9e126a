#include "plugins/PluginKind.h"

#include <KvSyncCore/CommandInterface.h>
#include <KvSyncDevice/IFactory.h>

namespace KvSyncCli {

namespace {

struct KindRow
{
    PluginKind kind;
    const char *name;
    const char *iid;
};

constexpr KindRow kinds[] = {
    {PluginKind::CommandPlugin, "command", CommandInterface_iid},
    {PluginKind::DevicePlugin, "device", IFactory_iid},
};

} // namespace

const char *kindName(PluginKind kind)
{
    for (const KindRow &row : kinds)
        if (row.kind == kind)
            return row.name;
    return nullptr;
}

PluginKind kindOf(const QString &iid)
{
    for (const KindRow &row : kinds)
        if (iid == QLatin1String(row.iid))
            return row.kind;
    return PluginKind::Unknown;
}

QStringList iidsOf(PluginKind kind)
{
    QStringList iids;
    for (const KindRow &row : kinds)
        if (kind == PluginKind::Unknown || row.kind == kind)
            iids.append(QString::fromLatin1(row.iid));
    return iids;
}

} // namespace KvSyncCli
