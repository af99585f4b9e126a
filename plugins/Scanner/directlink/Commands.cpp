#include "Commands.h"

#include "Errors.h"
#include "Parameters.h"

#include <algorithm>
#include <utility>

namespace Scanner::DirectLink {

using KvSyncCore::DeviceController;

namespace {

constexpr std::pair<int, int> percent{0, 100};

const CommandInfo *findCommand(const QString &name)
{
    const std::vector<CommandInfo> &commands = commandTable();
    const auto found = std::find_if(commands.begin(), commands.end(), [&](const CommandInfo &each) {
        return name == QLatin1String(each.name);
    });
    return found == commands.end() ? nullptr : &*found;
}

} // namespace

// The spellings "Dutio" and "disStauts" are the link's own. Ranges are the scanner's, and not all
// of them are known.
// clang-format off
const std::vector<CommandInfo> &commandTable()
{
    static const std::vector<CommandInfo> commands = {
        {"Project", "map", {{"projectWorkType", "int"}}},
        {"SetStrobeControlledByTrigger", "map", {{"controlRoute", "int"}, {"strobeState", "int"}}},
        {"EnableBlueLaser", "map", {{"laserWorkMode", "int"}, {"bLaserEnable", "bool"}}},
        {"EnableIRLaser", "map", {{"bIRLaserEnable", "bool"}}},
        {"SetVideoTriggerPeriod", "map", {{"triggerPeriod", "int", "ms"}}},
        {"EnableVideoTrigger", "map", {{"cameraTriggerMode", "int"}, {"bEnable", "bool"}}},
        {"SetStrobeDutioRatio", "map", {{"TexDutioRatio", "int", "%", percent},
                                        {"dutioRatioWithTex", "int", "%", percent},
                                        {"dutioRatio", "int", "%", percent}}},
        {"SetLaserLineDutioRatio", "map", {{"dutioRatio", "int", "%", percent}}},
        {"SetProjectDutioRatio", "map", {{"dutioRatio", "int", "%", percent}}},
        {"SetIRLaserDutioRatio", "map", {{"dutioRatio", "int", "%", percent}}},
        {"SetDistanceIndicate", "map", {{"disStauts", "int"}}},
    };
    return commands;
}
// clang-format on

bool hasCommand(const QString &name)
{
    return findCommand(name) != nullptr;
}

QVariantMap runCommand(Connection &link, const QString &name, const QVariantMap &parameters)
{
    Parameters(parameters)
        .allowOnly(QStringLiteral("The command \"%1\"").arg(name),
                   namesOf(findCommand(name)->parameters));
    QMap<QString, QVariant> used = parameters;
    link.run(QStringLiteral("The scanner refuses the command \"%1\"").arg(name),
             [&](DeviceController &c) { return c.executeCommand(Connection::handle, name, used); });
    return used;
}

namespace {

unsigned int addressFrom(const QVariantList &arguments)
{
    return static_cast<unsigned int>(wholeNumberFrom(arguments.value(0),
                                                     QStringLiteral("The address"),
                                                     addressRange.first, addressRange.second));
}

QByteArray localBytes(const QString &text)
{
    QByteArray bytes = text.toLocal8Bit();
    if (QString::fromLocal8Bit(bytes) != text)
        raise(InvalidParameter,
              QStringLiteral("The text has characters that the local encoding lacks"));
    return bytes;
}

} // namespace

QVariant readUserInformation(Connection &link, const QVariantList &arguments)
{
    const unsigned int address = addressFrom(arguments);
    QByteArray data;
    link.run(
        QStringLiteral("The scanner refuses to read user information at address %1").arg(address),
        [&](DeviceController &c) { return c.readCustomInfo(Connection::handle, address, data); });
    return QString::fromLocal8Bit(data);
}

QVariant writeUserInformation(Connection &link, const QVariantList &arguments)
{
    const unsigned int address = addressFrom(arguments);
    const QVariant text = arguments.value(1);
    if (text.type() != QVariant::String)
        raise(InvalidParameter,
              QStringLiteral("User information must be a text, not %1").arg(shown(text)));
    const QByteArray data = localBytes(text.toString());
    link.run(
        QStringLiteral("The scanner refuses to write user information at address %1").arg(address),
        [&](DeviceController &c) {
            const ErrorCode result = c.writeCustomInfo(Connection::handle, address, data);
            if (result == InvalidParameter)
                raise(result, QStringLiteral("User information is longer than 511 bytes in UTF-8"));
            return result;
        });
    return {};
}

} // namespace Scanner::DirectLink
