#ifndef KVSYNC_TESTS_CLI_PLUGINFOLDERS_H
#define KVSYNC_TESTS_CLI_PLUGINFOLDERS_H

#include "Kvsync.h"

#include <QtCore/QTemporaryDir>

namespace KvSyncTest {

/// Two empty plug-in folders below kvsync's own, and kvsync run over them.
class PluginFolders
{
public:
    PluginFolders();

    QString logicFile(const QString &fileName) const;
    QString deviceFile(const QString &fileName) const;

    /// Runs kvsync with these words and the options that name the folders.
    Outcome run(const QStringList &words) const;

    /// The list's line for one file, for programs; fails the test if there is none.
    QJsonObject listed(const QString &fileName) const;
    /// All about one file.
    QJsonObject why(const QString &file, const QStringList &options = {}) const;

private:
    QTemporaryDir folder;
};

/// Tries to load, with time enough for a loaded machine.
QStringList loadPatiently();

/// The codes of a line's reasons, in order, with blanks between.
std::string codes(const QJsonObject &file);
/// "code: text" of each of a line's warnings.
std::string warnings(const QJsonObject &file);
/// The text of a line's first reason.
std::string firstText(const QJsonObject &file);

} // namespace KvSyncTest

#endif
