#include "plugins/PluginReport.h"

#include "BoundedReader.h"
#include "plugins/LoadTrial.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QPluginLoader>

namespace KvSyncCli {

namespace {

/// Puts one report together, step by step.
class Inspection
{
public:
    Inspection(const PluginSelection &folder, const QString &filePath, PluginKind expected)
        : report{filePath, PluginFileName(QFileInfo(filePath).fileName())}
        , expectedKind(expected)
    {
        judgeName(folder);
    }

    void judgeFile(const LoadLimit &loadLimitMs)
    {
        if (!judgeEntry() || !judgeHeaders())
            return;
        judgeMetaData();
        judgeLibraries();
        if (loadLimitMs)
            judgeLoading(tryToLoad(report.filePath, *loadLimitMs));
    }

    PluginReport report;

private:
    void add(const char *code, const QString &text) { report.reasons.push_back({code, text}); }
    void warn(const char *code, const QString &text) { report.warnings.push_back({code, text}); }

    void judgeName(const PluginSelection &folder)
    {
        const QString file = QFileInfo(report.filePath).fileName();
        const QString pattern = report.fileName.pattern();
        report.found = folder.found(pattern).contains(file);
        report.winner = folder.winner(pattern);
        if (!QDir::match(pattern, file))
            add("name-pattern", patternText());
        else if (QFileInfo(report.filePath).isHidden())
            add("name-pattern", QStringLiteral("it is hidden, and %1 finds no hidden files")
                                    .arg(report.fileName.shownPattern()));
        else if (report.found && !report.isSelected())
            add("shadowed-by-higher-build", shadowText());
    }

    QString patternText() const
    {
        const PluginFileName &name = report.fileName;
        if (name.pattern() != name.shownPattern())
            return QStringLiteral("the core's search spoils letters of %1 that are not ASCII, and "
                                  "does not find it")
                .arg(name.name);
        return QStringLiteral("the name is read as %1, and %2 does not find it")
            .arg(name.parts.mid(0, 4).join(QStringLiteral(" | ")), name.pattern());
    }

    QString shadowText() const
    {
        const int build = PluginFileName(report.winner).build;
        if (build > report.fileName.build)
            return QStringLiteral("%1 has build %2, this file %3")
                .arg(report.winner)
                .arg(build)
                .arg(report.fileName.build);
        return QStringLiteral("%1 has build %2, too, and is listed before this file")
            .arg(report.winner)
            .arg(build);
    }

    // Asked before anything is opened: opening a pipe would wait for a writer.
    bool judgeEntry()
    {
        const QFileInfo entry(report.filePath);
        if (entry.isSymLink() && !entry.exists())
            add("not-a-plugin", QStringLiteral("it is a link to %1, which does not exist")
                                    .arg(entry.symLinkTarget()));
        else if (entry.isDir())
            add("not-a-plugin", QStringLiteral("it is a folder"));
        else if (!entry.isFile())
            add("not-a-plugin", QStringLiteral("it is no regular file"));
        else
            return true;
        return false;
    }

    bool judgeHeaders()
    {
        QFile file(report.filePath);
        if (!file.open(QIODevice::ReadOnly)) {
            add("load-failed", QStringLiteral("it cannot be read: ") + file.errorString());
            return false;
        }
        try {
            report.library = readLibraryFile(file);
        } catch (const MalformedFile &damage) {
            add("not-a-plugin", QStringLiteral("it is damaged, or no shared library: ") +
                                    QString::fromLatin1(damage.what()));
            return false;
        }
        if (report.library.isForThisProcess())
            return true;
        if (report.library.format == LibraryFormat::None)
            add("not-a-plugin", file.size() == 0 ? QStringLiteral("it is empty")
                                                 : QStringLiteral("it is neither ELF nor PE"));
        else
            add("wrong-architecture",
                QStringLiteral("it is made for another system or processor: ") +
                    report.library.kindText());
        return false;
    }

    // Metadata are read from the file; nothing is loaded.
    void judgeMetaData()
    {
        const QPluginLoader loader(report.filePath);
        report.metaData = loader.metaData();
        report.kind = kindOf(report.iid());
        if (report.metaData.isEmpty()) {
            add("not-a-plugin", QStringLiteral("it is a library without metadata of a Qt plug-in"));
            return;
        }
        // Of a good file that is not loaded yet, the loader has as little to say as without a file.
        if (loader.errorString() != QPluginLoader().errorString())
            add("built-with-incompatible-qt", loader.errorString());
        // Nobody reads the identifier but its author's colleagues.
        if (!isExpected(report.kind))
            warn("wrong-iid",
                 QStringLiteral("its metadata name %1, not %2").arg(report.iid(), expectedIids()));
    }

    bool isExpected(PluginKind kind) const
    {
        return kind != PluginKind::Unknown &&
               (expectedKind == PluginKind::Unknown || expectedKind == kind);
    }

    void judgeLibraries()
    {
        report.needed = findNeededLibraries(report.filePath, report.library);
        for (const NeededLibrary &library : report.needed)
            if (library.isMissing())
                add("missing-library",
                    QStringLiteral("%1 is missing; %2 needs it")
                        .arg(library.name, QFileInfo(library.neededBy).fileName()));
    }

    void judgeLoading(const LoadOutcome &outcome)
    {
        if (!outcome.hasRoot) {
            add("load-failed", outcome.failure);
            return;
        }
        if (!outcome.remark.isEmpty())
            warn("harms-host", outcome.remark);
        for (const QString &iid : outcome.answers)
            if (isExpected(kindOf(iid))) {
                report.kind = kindOf(iid);
                return;
            }
        add("missing-interface",
            QStringLiteral("its root object does not answer to ") + expectedIids());
    }

    QString expectedIids() const { return iidsOf(expectedKind).join(QStringLiteral(" or ")); }

    const PluginKind expectedKind;
};

} // namespace

bool PluginReport::isSelected() const
{
    return found && winner == QFileInfo(filePath).fileName();
}

QString PluginReport::iid() const
{
    return metaData.value(QStringLiteral("IID")).toString();
}

PluginReport inspectPlugin(const PluginSelection &folder, const QString &filePath,
                           PluginKind expected, const LoadLimit &loadLimitMs)
{
    Inspection inspection(folder, filePath, expected);
    inspection.judgeFile(loadLimitMs);
    return inspection.report;
}

} // namespace KvSyncCli
