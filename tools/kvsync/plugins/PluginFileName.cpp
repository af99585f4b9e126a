#include "plugins/PluginFileName.h"

#include <QtCore/QDir>

namespace KvSyncCli {

PluginFileName::PluginFileName(const QString &fileName)
    : parts(fileName.split(QLatin1Char('.')))
    , name(parts.value(0))
    , major(parts.value(1).toInt())
    , minor(parts.value(2).toInt())
    , build(parts.value(3).toInt())
{
}

// The name goes through Latin-1 and is then read as UTF-8, as in the core: a letter that does not
// survive this makes the file one that cannot be found.
QString PluginFileName::pattern() const
{
    return QString::asprintf("%s.%d.%d.*.dll", name.toLatin1().constData(), major, minor);
}

QString PluginFileName::shownPattern() const
{
    return QStringLiteral("%1.%2.*.dll").arg(name, version());
}

QString PluginFileName::version() const
{
    return QStringLiteral("%1.%2").arg(major).arg(minor);
}

PluginSelection::PluginSelection(const QString &folder)
    : path(folder)
{
}

bool PluginSelection::exists() const
{
    return QDir(path).exists();
}

QStringList PluginSelection::entries() const
{
    return QDir(path).entryList(QDir::AllEntries | QDir::Hidden | QDir::System |
                                    QDir::NoDotAndDotDot,
                                QDir::Name | QDir::IgnoreCase);
}

QStringList PluginSelection::found(const QString &pattern) const
{
    auto listing = listings.find(pattern);
    if (listing == listings.end())
        listing =
            listings.insert(pattern, QDir(path).entryList({pattern}, QDir::Files, QDir::NoSort));
    return *listing;
}

QString PluginSelection::winner(const QString &pattern) const
{
    const QStringList candidates = found(pattern);
    QString best = candidates.value(0);
    for (const QString &candidate : candidates)
        if (PluginFileName(candidate).build > PluginFileName(best).build)
            best = candidate;
    return best;
}

} // namespace KvSyncCli
