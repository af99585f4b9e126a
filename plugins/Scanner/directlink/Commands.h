#ifndef SCANNER_DIRECTLINK_COMMANDS_H
#define SCANNER_DIRECTLINK_COMMANDS_H

#include "CommandInfo.h"
#include "Connection.h"

#include <QtCore/QString>
#include <QtCore/QVariant>

#include <limits>
#include <utility>
#include <vector>

namespace Scanner::DirectLink {

/// The commands of the direct link that run by themselves; "startScan" and "stopScan" do not, since
/// a scan needs a callback too.
const std::vector<CommandInfo> &commandTable();
bool hasCommand(const QString &name);

/// Runs such a command and returns the parameters that it used: those that are missing are
/// sent as 0 or false. Throws `InvalidParameter` for a parameter that the command does not have,
/// `CommandFailed` if the scanner refuses.
QVariantMap runCommand(Connection &link, const QString &name, const QVariantMap &parameters);

/// Of addresses; the scanner may have fewer.
constexpr std::pair<int, int> addressRange{0, std::numeric_limits<int>::max()};

/// The text at an address of the scanner's store. `arguments` is [address], from 0. Throws
/// `InvalidParameter`, or `DeviceOperationFailed` if the scanner refuses.
QVariant readUserInformation(Connection &link, const QVariantList &arguments);

/// Writes a text of at most 511 bytes in UTF-8. `arguments` is [address, text]. Throws
/// `InvalidParameter`, also for a text that the local 8-bit encoding cannot hold, or
/// `DeviceOperationFailed` if the scanner refuses.
QVariant writeUserInformation(Connection &link, const QVariantList &arguments);

} // namespace Scanner::DirectLink

#endif
