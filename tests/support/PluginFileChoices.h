#ifndef KVSYNC_TESTS_PLUGINFILECHOICES_H
#define KVSYNC_TESTS_PLUGINFILECHOICES_H

#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QVersionNumber>

#include <ostream>
#include <vector>

namespace KvSyncTest {

/// Which of the files in a folder is the plug-in of a name and version. Both managers go by this
/// table, and so does what kvsync says of them.
struct PluginFileChoice
{
    const char *name;
    QString plugin;
    QVersionNumber version;
    QString key;       ///< under which a manager keeps the plug-in
    QStringList files; ///< "folder/" is a folder, "link -> target" a link
    QString taken;     ///< empty: none of them
};

std::ostream &operator<<(std::ostream &stream, const PluginFileChoice &choice);

/// File names follow the local encoding: use it under LocaleCodec("UTF-8").
std::vector<PluginFileChoice> pluginFileChoices();

/// Makes the choice's files below `folder`. The one to be taken is a copy of the module; no other
/// one can be loaded.
void provideFiles(const PluginFileChoice &choice, const QString &folder, const QString &modulePath);

} // namespace KvSyncTest

#endif
