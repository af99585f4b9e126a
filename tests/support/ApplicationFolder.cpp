#include "support/ApplicationFolder.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <gtest/gtest.h>

namespace KvSyncTest {

namespace {

// Programs stand in tests/<program>/, fixtures in tests/fixtures/: the build tree may be moved.
QString fixture(const QString &kind, const QString &name)
{
    return QCoreApplication::applicationDirPath() + "/../fixtures/" + kind + QLatin1Char('/') +
           name + ".1.0.1.dll";
}

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return file.readAll();
}

} // namespace

QString commandFixture(const QString &name)
{
    return fixture("Logic", name);
}

QString deviceFixture(const QString &name)
{
    return fixture("Device", name);
}

ApplicationFolder::ApplicationFolder()
    : folder(QCoreApplication::applicationDirPath() + "/run-XXXXXX")
{
    EXPECT_TRUE(folder.isValid()) << folder.errorString().toStdString();
}

QString ApplicationFolder::name() const
{
    return QFileInfo(folder.path()).fileName();
}

QString ApplicationFolder::path() const
{
    return QCoreApplication::applicationDirPath() + QLatin1Char('/') + name();
}

QString ApplicationFolder::filePath(const QString &fileName) const
{
    return path() + QLatin1Char('/') + fileName;
}

void ApplicationFolder::copyModule(const QString &modulePath, const QString &fileName)
{
    write(fileName, contentOf(modulePath));
}

void ApplicationFolder::writeText(const QString &fileName, const QString &text)
{
    write(fileName, text.toUtf8());
}

void ApplicationFolder::writeTruncated(const QString &modulePath, const QString &fileName)
{
    const QByteArray module = contentOf(modulePath);
    write(fileName, module.left(module.size() / 2));
}

void ApplicationFolder::makeFolder(const QString &folderName)
{
    EXPECT_TRUE(QDir(path()).mkpath(folderName));
}

void ApplicationFolder::write(const QString &fileName, const QByteArray &content)
{
    const QString target = filePath(fileName);
    // A new file, never new content in an old one: the old one may be mapped as a loaded module.
    QFile::remove(target);
    QFile file(target);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly)) << target.toStdString();
    EXPECT_EQ(file.write(content), content.size());
}

} // namespace KvSyncTest
