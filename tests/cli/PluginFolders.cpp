#include "PluginFolders.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QJsonArray>

namespace KvSyncTest {

namespace {

QString programFolder()
{
    return QFileInfo(logicFolder()).path();
}

} // namespace

PluginFolders::PluginFolders()
    : folder(programFolder() + QStringLiteral("/plugins-XXXXXX"))
{
    EXPECT_TRUE(folder.isValid());
    EXPECT_TRUE(QDir(folder.path()).mkdir(QStringLiteral("Logic")));
    EXPECT_TRUE(QDir(folder.path()).mkdir(QStringLiteral("Device")));
}

QString PluginFolders::logicFile(const QString &fileName) const
{
    return folder.filePath(QStringLiteral("Logic/") + fileName);
}

QString PluginFolders::deviceFile(const QString &fileName) const
{
    return folder.filePath(QStringLiteral("Device/") + fileName);
}

Outcome PluginFolders::run(const QStringList &words) const
{
    return runKvsync(words + QStringList{QStringLiteral("--logic-dir"),
                                         folder.filePath(QStringLiteral("Logic")),
                                         QStringLiteral("--device-dir"),
                                         folder.filePath(QStringLiteral("Device"))});
}

QJsonObject PluginFolders::listed(const QString &fileName) const
{
    const Outcome outcome = run({QStringLiteral("plugins"), QStringLiteral("--json")});
    EXPECT_EQ(outcome.exitCode, 0) << outcome.errors.toStdString();
    for (const QJsonValue &each : outcome.json().value(QStringLiteral("folders")).toArray())
        for (const QJsonValue &file : each.toObject().value(QStringLiteral("files")).toArray())
            if (file.toObject().value(QStringLiteral("file")).toString() == fileName)
                return file.toObject();
    ADD_FAILURE() << fileName.toStdString() << " is not in the list";
    return {};
}

QJsonObject PluginFolders::why(const QString &file, const QStringList &options) const
{
    const Outcome outcome = run(QStringList{QStringLiteral("plugins"), QStringLiteral("why"), file,
                                            QStringLiteral("--json")} +
                                options);
    EXPECT_EQ(outcome.exitCode, 0) << outcome.errors.toStdString();
    return outcome.json();
}

QStringList loadPatiently()
{
    return {QStringLiteral("--load"), QStringLiteral("--timeout"), QStringLiteral("60000")};
}

std::string codes(const QJsonObject &file)
{
    QStringList result;
    for (const QJsonValue &reason : file.value(QStringLiteral("reasons")).toArray())
        result.append(reason.toObject().value(QStringLiteral("code")).toString());
    return result.join(QLatin1Char(' ')).toStdString();
}

std::string warnings(const QJsonObject &file)
{
    QStringList result;
    for (const QJsonValue &each : file.value(QStringLiteral("warnings")).toArray()) {
        const QJsonObject warning = each.toObject();
        result.append(warning.value(QStringLiteral("code")).toString() + QStringLiteral(": ") +
                      warning.value(QStringLiteral("text")).toString());
    }
    return result.join(QLatin1Char('\n')).toStdString();
}

std::string firstText(const QJsonObject &file)
{
    return file.value(QStringLiteral("reasons"))
        .toArray()
        .at(0)
        .toObject()
        .value(QStringLiteral("text"))
        .toString()
        .toStdString();
}

} // namespace KvSyncTest
