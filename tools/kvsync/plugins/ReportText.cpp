#include "plugins/ReportText.h"

#include <QtCore/QFileInfo>

namespace KvSyncCli {

namespace {

QString kindText(const PluginReport &report)
{
    const char *const name = kindName(report.kind);
    return name ? QString::fromLatin1(name) : QStringLiteral("-");
}

QString codeAndText(const Reason &reason)
{
    return QStringLiteral("%1: %2").arg(QString::fromLatin1(reason.code), reason.text);
}

QString row(const QString &title, const QString &content)
{
    return title.leftJustified(10) + content + QLatin1Char('\n');
}

QString partsText(const PluginFileName &name)
{
    return QStringLiteral("name \"%1\", major %2, minor %3, build %4")
        .arg(name.name)
        .arg(name.major)
        .arg(name.minor)
        .arg(name.build);
}

QString patternText(const PluginReport &report)
{
    return report.fileName.shownPattern() + (report.found
                                                 ? QStringLiteral(" finds it")
                                                 : QStringLiteral(" does not find it as a file"));
}

QString winnerText(const PluginReport &report)
{
    if (report.isSelected())
        return QStringLiteral("this file");
    return report.winner.isEmpty() ? QStringLiteral("no file") : report.winner;
}

// Only this system's own libraries are looked for.
QString foreignLibrariesText(const LibraryFile &library)
{
    QString text;
    for (const QString &name : library.needed)
        text += row(QStringLiteral("needs"), name + QStringLiteral(" (not looked for)"));
    return text;
}

QString librariesText(const PluginReport &report)
{
    if (!report.library.isForThisProcess())
        return foreignLibrariesText(report.library);
    QString text;
    for (const NeededLibrary &library : report.needed)
        text += row(
            QStringLiteral("needs"),
            QStringLiteral("%1 -> %2")
                .arg(library.name, library.isMissing() ? QStringLiteral("missing") : library.path));
    return text;
}

QString reasonsText(const PluginReport &report)
{
    QString text;
    if (report.wouldLoad())
        text += row(QStringLiteral("result"), QStringLiteral("loads"));
    for (const Reason &reason : report.reasons)
        text += row(QStringLiteral("reason"), codeAndText(reason));
    for (const Reason &warning : report.warnings)
        text += row(QStringLiteral("warning"), codeAndText(warning));
    return text;
}

QString resultText(const PluginReport &report)
{
    if (!report.wouldLoad())
        return codeAndText(report.reasons.front());
    if (report.warnings.empty())
        return QStringLiteral("loads");
    return QStringLiteral("loads, but ") + codeAndText(report.warnings.front());
}

QString valueText(const QString &text)
{
    return text.isEmpty() ? QStringLiteral("-") : text;
}

} // namespace

QString shortText(const PluginReport &report)
{
    return QStringLiteral("  %1  %2 %3 build %4  %5  %6\n")
        .arg(QFileInfo(report.filePath).fileName(), report.fileName.name, report.fileName.version(),
             QString::number(report.fileName.build), kindText(report), resultText(report));
}

QString fullText(const PluginReport &report)
{
    return row(QStringLiteral("file"), report.filePath) +
           row(QStringLiteral("read as"), partsText(report.fileName)) +
           row(QStringLiteral("pattern"), patternText(report)) +
           row(QStringLiteral("taken"), winnerText(report)) +
           row(QStringLiteral("format"), report.library.kindText()) +
           row(QStringLiteral("iid"), valueText(report.iid())) +
           row(QStringLiteral("class"),
               valueText(report.metaData.value(QStringLiteral("className")).toString())) +
           row(QStringLiteral("kind"), kindText(report)) + librariesText(report) +
           reasonsText(report);
}

} // namespace KvSyncCli
