#ifndef SCANNER_COMMANDS_H
#define SCANNER_COMMANDS_H

#include "DirectLink.h"

#include <QtCore/QString>
#include <QtCore/QVariant>

namespace Scanner {

/// Whether the direct link has a command of this name that runs by itself; "startScan" and
/// "stopScan" do not, since a scan needs a callback too.
bool isLinkCommand(const QString &name);

/// Runs such a command and answers with the parameters that it used: those that are missing are
/// sent as 0 or false. Throws `InvalidParameter` for a parameter that the command does not have,
/// `CommandFailed` if the scanner refuses.
QVariantMap runLinkCommand(DirectLink &link, const QString &name, const QVariantMap &parameters);

} // namespace Scanner

#endif
