// The commands that each handle says it serves, and the documents that name them.
#include "PluginDeviceHost.h"

#include <QtCore/QFile>
#include <QtCore/QRegularExpression>

#include <map>

using namespace KvSyncTest;

namespace {

const QVariant pluginHandle = QVariant::fromValue<qint64>(0);

/// Form and parameters of each command, by its name.
using Commands = std::map<QString, QStringList>;

/// The words that stand in backquotes.
QStringList quotedIn(const QString &text)
{
    static const QRegularExpression word(R"(`(\w+)`)");
    QStringList words;
    for (auto found = word.globalMatch(text); found.hasNext();)
        words.append(found.next().captured(1));
    return words;
}

/// What the rows of a document's tables say of commands: `row` captures the name, the form (or
/// nothing, for a map) and the parameters.
Commands commandsIn(const char *document, const QRegularExpression &row)
{
    QFile file(QString::fromUtf8(document));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << document;
    Commands commands;
    for (auto found = row.globalMatch(QString::fromUtf8(file.readAll())); found.hasNext();) {
        const QRegularExpressionMatch match = found.next();
        const QString form = match.captured(2).isEmpty() ? "map" : match.captured(2);
        commands[match.captured(1)] = QStringList(form) + quotedIn(match.captured(3));
    }
    return commands;
}

Commands readmeCommands()
{
    static const QRegularExpression row(R"(^\| `(\w+)` \| (map|list) \| ([^|\n]*)\|)",
                                        QRegularExpression::MultilineOption);
    return commandsIn(KVSYNC_SCANNER_DOCUMENT, row);
}

/// Those of the direct link that run by themselves.
Commands directLinkCommands()
{
    static const QRegularExpression row(R"(^\| `([A-Z]\w+)` \|() ([^|\n]*\((?:int|bool)\)) \|)",
                                        QRegularExpression::MultilineOption);
    return commandsIn(KVSYNC_DIRECT_LINK_DOCUMENT, row);
}

} // namespace

class ScannerCommandList : public PluginDeviceHost
{
protected:
    QVariantList list(const QVariant &handle) { return run(handle, "commands").toList(); }

    Commands served(const QVariant &handle)
    {
        Commands commands;
        for (const QVariant &each : list(handle)) {
            const QVariantMap command = each.toMap();
            QStringList &parts = commands[command.value("name").toString()];
            parts.append(command.value("form").toString());
            for (const QVariant &parameter : command.value("parameters").toList())
                parts.append(parameter.toMap().value("name").toString());
        }
        return commands;
    }

    QStringList names(const QVariant &handle)
    {
        QStringList all;
        for (const auto &command : served(handle))
            all.append(command.first);
        return all;
    }

    QVariantMap described(const QVariant &handle, const QString &name)
    {
        for (const QVariant &each : list(handle)) {
            if (each.toMap().value("name") == name)
                return each.toMap();
        }
        return {};
    }
};

TEST_F(ScannerCommandList, OfAllHandlesIsTheTableOfTheReadme)
{
    open();
    Commands all = served(pluginHandle);
    all.merge(served(scannerHandle));
    all.merge(served(openDevice(WholeScanner)));
    EXPECT_EQ(all, readmeCommands());
}

TEST_F(ScannerCommandList, OfTheDirectLinkHasTheCommandsOfItsDocument)
{
    open();
    Commands own;
    for (const auto &command : served(scannerHandle)) {
        if (command.first.at(0).isUpper())
            own.insert(command);
    }
    EXPECT_EQ(own.size(), 11u);
    EXPECT_EQ(own, directLinkCommands());
}

TEST_F(ScannerCommandList, TellsTypeUnitAndRangeOfAParameterAsFarAsTheyAreKnown)
{
    open();
    EXPECT_EQ(described(scannerHandle, "SetProjectDutioRatio"),
              (QVariantMap{{"name", "SetProjectDutioRatio"},
                           {"form", "map"},
                           {"parameters", QVariantList{QVariantMap{{"name", "dutioRatio"},
                                                                   {"type", "int"},
                                                                   {"unit", "%"},
                                                                   {"minimum", 0},
                                                                   {"maximum", 100}}}}}));
    EXPECT_EQ(described(scannerHandle, "EnableIRLaser").value("parameters"),
              QVariant(QVariantList{QVariantMap{{"name", "bIRLaserEnable"}, {"type", "bool"}}}));
    EXPECT_EQ(described(scannerHandle, "stopScan").value("parameters"), QVariant(QVariantList()));
}

TEST_F(ScannerCommandList, OfADeviceHasWhatItsCapabilitiesServe)
{
    EXPECT_EQ(names(openDevice(TurntableAlone)), (QStringList{"commands", "info", "stopMotor"}));
    EXPECT_EQ(names(openDevice(Marker)), (QStringList{"commands", "info"}));
    EXPECT_EQ(names(pluginHandle), (QStringList{"commands", "listDevices"}));
}

TEST_F(ScannerCommandList, NamesParametersThatTheCommandsTake)
{
    open();
    for (const auto &[name, parts] : served(scannerHandle)) {
        if (!name.at(0).isUpper())
            continue;
        QVariantMap parameters;
        for (const QString &parameter : parts.mid(1))
            parameters.insert(parameter, 1);
        EXPECT_EQ(execute(name, {parameters}), QVariant(parameters)) << name.toStdString();
    }
}
