#include "commands/Options.h"
#include "output/Json.h"
#include "session/ServiceSession.h"
#include "session/Simulator.h"

#include <CLI/CLI.hpp>
#include <KvSyncTool/Exception.h>
#include <QtCore/QJsonArray>

#include <memory>

namespace KvSyncCli {

namespace {

struct ListOptions
{
    bool json = false;
};

/// A scanner that is there.
struct Found
{
    QString serial;
    QVariantList cameras;
};

QString commonBeginning(const QStringList &texts)
{
    QString common = texts.value(0);
    for (const QString &text : texts)
        while (!text.startsWith(common))
            common.chop(1);
    return common;
}

// The scanner library tells serial numbers of cameras alone. A scanner's own is what they begin
// with, without a mark that sets the rest apart, or that of a camera.
QStringList candidates(const QVariantList &cameras)
{
    QStringList serials;
    for (const QVariant &camera : cameras)
        serials.append(camera.toMap().value(QStringLiteral("serial")).toString());
    QString common = commonBeginning(serials);
    while (!common.isEmpty() && !common.back().isLetterOrNumber())
        common.chop(1);
    if (!common.isEmpty())
        serials.prepend(common);
    serials.removeDuplicates();
    return serials;
}

bool responds(ServiceSession &session, Interruption &interruption, const QString &serial)
{
    try {
        session.open({{QStringLiteral("serial"), serial}});
        session.close();
        return true;
    } catch (const KvSyncTool::Exception &refusal) {
        if (interruption.signal() != 0 || refusal.code() != ConnectFailed)
            throw;
        return false;
    }
}

QList<Found> findScanners(Context &context)
{
    ServiceSession session(context.directories, context.interruption);
    QList<Found> found;
    const QVariantList devices = session.call(QStringLiteral("getRunningDevList")).toList();
    if (devices.isEmpty())
        requireUsableSimulator();
    for (const QVariant &device : devices) {
        const QVariantList cameras = device.toMap().value(QStringLiteral("cameras")).toList();
        for (const QString &serial : candidates(cameras)) {
            if (responds(session, context.interruption, serial))
                found.append({serial, cameras});
        }
    }
    return found;
}

QString text(const QList<Found> &scanners)
{
    QString result;
    for (const Found &scanner : scanners)
        result +=
            QStringLiteral("%1  %2 cameras\n").arg(scanner.serial).arg(scanner.cameras.size());
    return result.isEmpty() ? QStringLiteral("no scanner\n") : result;
}

QJsonObject json(const QList<Found> &scanners)
{
    QJsonArray list;
    for (const Found &scanner : scanners)
        list.append(
            QJsonObject{{QStringLiteral("serial"), scanner.serial},
                        {QStringLiteral("cameras"), toJson(scanner.cameras, Bytes::Summary)}});
    return {{QStringLiteral("scanners"), list}};
}

void runList(const ListOptions &options, Context &context)
{
    const QList<Found> scanners = findScanners(context);
    print(context, options.json, text(scanners), json(scanners));
}

} // namespace

void addScannerListCommand(CLI::App &scanner, Command &chosen)
{
    const auto options = std::make_shared<ListOptions>();
    CLI::App *const command =
        scanner.add_subcommand("list", "List the serial numbers that --serial takes");
    command->footer("Connects the scanner for a moment by each number that it might answer to.");
    command->add_flag("--json", options->json, "Print JSON");
    command->callback([options, &chosen] {
        chosen = [options](Context &context) { runList(*options, context); };
    });
}

} // namespace KvSyncCli
