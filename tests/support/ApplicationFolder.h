#ifndef KVSYNC_TESTS_APPLICATIONFOLDER_H
#define KVSYNC_TESTS_APPLICATIONFOLDER_H

#include <QtCore/QString>
#include <QtCore/QTemporaryDir>

namespace KvSyncTest {

/// The built module of a fixture plug-in below tests/fixtures/plugins, by its folder's name.
QString commandFixture(const QString &name);
QString deviceFixture(const QString &name);

/// A folder of its own below the application's folder, where the core looks for plug-ins: tests
/// that use one run in any order and in parallel. It goes with the object, except for what the
/// system still holds: Windows does not delete a loaded module.
class ApplicationFolder
{
public:
    ApplicationFolder();

    /// Relative to the application's folder: what the core is given.
    QString name() const;
    /// Application folder + "/" + name: what the core's texts show.
    QString path() const;
    /// The path of a file in this folder.
    QString filePath(const QString &fileName) const;

    /// Each replaces the file, and fails the test if it cannot be written.
    void copyModule(const QString &modulePath, const QString &fileName);
    void writeText(const QString &fileName, const QString &text = "not a module");
    /// The first half of a module.
    void writeTruncated(const QString &modulePath, const QString &fileName);
    void makeFolder(const QString &folderName);

private:
    void write(const QString &fileName, const QByteArray &content);

    QTemporaryDir folder;
};

} // namespace KvSyncTest

#endif
