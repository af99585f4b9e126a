#include "plugins/ReportJson.h"

#include <QtCore/QFileInfo>
#include <QtCore/QJsonArray>

namespace KvSyncCli {

namespace {

QJsonValue textOrNull(const QString &text)
{
    return text.isEmpty() ? QJsonValue() : QJsonValue(text);
}

QJsonValue kindOrNull(PluginKind kind)
{
    const char *const name = kindName(kind);
    return name ? QJsonValue(QString::fromLatin1(name)) : QJsonValue();
}

QJsonObject object(const Reason &reason)
{
    return {{QStringLiteral("code"), QString::fromLatin1(reason.code)},
            {QStringLiteral("text"), reason.text}};
}

QJsonObject object(const NeededLibrary &library)
{
    return {{QStringLiteral("name"), library.name},
            {QStringLiteral("neededBy"), library.neededBy},
            {QStringLiteral("missing"), library.isMissing()},
            {QStringLiteral("path"), textOrNull(library.path)}};
}

template <typename List>
QJsonArray array(const List &list)
{
    QJsonArray result;
    for (const auto &each : list)
        result.append(object(each));
    return result;
}

} // namespace

QJsonObject shortJson(const PluginReport &report)
{
    const PluginFileName &name = report.fileName;
    return {{QStringLiteral("file"), QFileInfo(report.filePath).fileName()},
            {QStringLiteral("name"), name.name},
            {QStringLiteral("version"), name.version()},
            {QStringLiteral("build"), name.build},
            {QStringLiteral("kind"), kindOrNull(report.kind)},
            {QStringLiteral("iid"), textOrNull(report.iid())},
            {QStringLiteral("selected"), report.isSelected()},
            {QStringLiteral("loads"), report.wouldLoad()},
            {QStringLiteral("reasons"), array(report.reasons)},
            {QStringLiteral("warnings"), array(report.warnings)}};
}

QJsonObject fullJson(const PluginReport &report)
{
    QJsonObject result = shortJson(report);
    result.insert(QStringLiteral("path"), report.filePath);
    result.insert(QStringLiteral("parts"), QJsonArray::fromStringList(report.fileName.parts));
    result.insert(QStringLiteral("pattern"), report.fileName.shownPattern());
    result.insert(QStringLiteral("found"), report.found);
    result.insert(QStringLiteral("winner"), textOrNull(report.winner));
    result.insert(QStringLiteral("format"), report.library.kindText());
    result.insert(QStringLiteral("metaData"), report.metaData);
    result.insert(QStringLiteral("imports"), QJsonArray::fromStringList(report.library.needed));
    result.insert(QStringLiteral("libraries"), array(report.needed));
    return result;
}

} // namespace KvSyncCli
