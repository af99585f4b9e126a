#ifndef KVSYNC_PLUGINFILENAME_H
#define KVSYNC_PLUGINFILENAME_H

#include <QtCore/QHash>
#include <QtCore/QString>
#include <QtCore/QStringList>

namespace KvSyncCli {

/// The parts of <name>.<major>.<minor>.<build>.dll, taken as the core takes them: what is no number
/// counts as 0, and a dot in the name shifts the rest.
struct PluginFileName
{
    explicit PluginFileName(const QString &fileName);

    /// The name filter with which the core looks for this name, major and minor.
    QString pattern() const;
    /// The same for people: the name as it is, also where the core's filter spoils its letters.
    QString shownPattern() const;
    /// "major.minor"
    QString version() const;

    QStringList parts;
    QString name;
    int major;
    int minor;
    int build;
};

/// The files of one folder, chosen among as the core chooses.
class PluginSelection
{
public:
    explicit PluginSelection(const QString &folder);

    bool exists() const;
    /// Everything in the folder, by name.
    QStringList entries() const;
    /// What the core finds by this filter, in its own order.
    QStringList found(const QString &pattern) const;
    /// The one of them that it loads: the first with the highest build.
    QString winner(const QString &pattern) const;

private:
    const QString path;
    mutable QHash<QString, QStringList> listings;
};

} // namespace KvSyncCli

#endif
