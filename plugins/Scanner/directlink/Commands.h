#ifndef SCANNER_COMMANDS_H
#define SCANNER_COMMANDS_H

#include "CommandInfo.h"
#include "DirectLink.h"

#include <QtCore/QString>
#include <QtCore/QVariant>

namespace Scanner {

/// The commands of the direct link that run by themselves; "startScan" and "stopScan" do not, since
/// a scan needs a callback too.
const std::vector<CommandInfo> &linkCommands();
bool isLinkCommand(const QString &name);

/// Runs such a command and answers with the parameters that it used: those that are missing are
/// sent as 0 or false. Throws `InvalidParameter` for a parameter that the command does not have,
/// `CommandFailed` if the scanner refuses.
QVariantMap runLinkCommand(DirectLink &link, const QString &name, const QVariantMap &parameters);

} // namespace Scanner

#endif
