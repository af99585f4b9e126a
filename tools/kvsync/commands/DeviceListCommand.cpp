#include "commands/Options.h"
#include "output/Console.h"
#include "output/Json.h"
#include "plugins/PluginReport.h"
#include "session/ServiceSession.h"

#include <CLI/CLI.hpp>
#include <QtCore/QJsonArray>

#include <memory>

namespace KvSyncCli {

namespace {

struct ListOptions
{
    bool json = false;
};

/// One device plug-in and what it has.
struct Listing
{
    QString plugin;
    QString version;
    QVariantList devices;
    QString failure; ///< why it could not be asked; empty if it was
};

/// The device plug-ins that the core would load.
std::vector<Listing> findPlugins(const PluginDirectories &directories)
{
    std::vector<Listing> plugins;
    for (const PluginFolder &folder : pluginFolders(directories)) {
        if (folder.kind != PluginKind::DevicePlugin)
            continue;
        const PluginSelection selection(folder.path);
        const QStringList entries = selection.exists() ? selection.entries() : QStringList();
        for (const QString &entry : entries) {
            const PluginReport report = inspectPlugin(
                selection, folder.path + QLatin1Char('/') + entry, folder.kind, std::nullopt);
            if (report.wouldLoad())
                plugins.push_back({report.fileName.name, report.fileName.version(), {}, {}});
        }
    }
    return plugins;
}

void query(ServiceSession &session, Listing &listing)
{
    const QVariantMap address{{QStringLiteral("plugin"), listing.plugin},
                              {QStringLiteral("version"), listing.version}};
    const QVariant noDevice = QVariant::fromValue<qint64>(0);
    try {
        listing.devices =
            session
                .call(QStringLiteral("execute"),
                      {noDevice, QStringLiteral("listDevices"), QVariant(QVariantList{address})})
                .toList();
        // The other plug-ins are worth a look all the same.
    } catch (...) {
        listing.failure = currentErrorText();
    }
}

QString text(const Listing &listing)
{
    QString result = QStringLiteral("%1 %2\n").arg(listing.plugin, listing.version);
    if (!listing.failure.isEmpty())
        result += QStringLiteral("  %1\n").arg(listing.failure);
    for (const QVariant &each : listing.devices) {
        const QVariantMap device = each.toMap();
        const bool isKnown = device.contains(QStringLiteral("name"));
        result +=
            QStringLiteral("  %1  %2  %3\n")
                .arg(device.value(QStringLiteral("index")).toInt())
                .arg(device.value(QStringLiteral("name")).toString(), -20)
                .arg(isKnown ? typesText(device) : QStringLiteral("does not let itself be opened"));
    }
    return result;
}

QJsonObject json(const Listing &listing)
{
    QJsonObject object{{QStringLiteral("plugin"), listing.plugin},
                       {QStringLiteral("version"), listing.version},
                       {QStringLiteral("devices"), toJson(listing.devices, Bytes::Summary)}};
    if (!listing.failure.isEmpty())
        object.insert(QStringLiteral("failure"), listing.failure);
    return object;
}

void runList(const ListOptions &options, Context &context)
{
    std::vector<Listing> plugins = findPlugins(context.directories);
    ServiceSession session(context.directories, context.interruption);
    QString texts;
    QJsonArray objects;
    for (Listing &listing : plugins) {
        query(session, listing);
        texts += text(listing);
        objects.append(json(listing));
    }
    if (plugins.empty())
        texts = QStringLiteral("no device plug-in that can be loaded\n");
    print(context, options.json, texts, {{QStringLiteral("plugins"), objects}});
}

} // namespace

void addDeviceListCommand(CLI::App &device, Command &chosen)
{
    const auto options = std::make_shared<ListOptions>();
    CLI::App *const command =
        device.add_subcommand("list", "List the device plug-ins and their devices");
    command->footer("Loads each plug-in and connects each of its devices for a moment. Files that\n"
                    "are not loaded: see kvsync plugins.");
    command->add_flag("--json", options->json, "Print JSON");
    command->callback([options, &chosen] {
        chosen = [options](Context &context) { runList(*options, context); };
    });
}

} // namespace KvSyncCli
