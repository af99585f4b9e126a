#ifndef SCANNER_USERINFORMATION_H
#define SCANNER_USERINFORMATION_H

#include "DirectLink.h"

#include <QtCore/QString>
#include <QtCore/QVariant>

#include <limits>
#include <utility>

namespace Scanner {

/// Of addresses; the scanner may have fewer.
constexpr std::pair<int, int> addressRange{0, std::numeric_limits<int>::max()};

/// The text at an address of the scanner's store. `arguments` is [address], from 0. Throws
/// `InvalidParameter`, or `DeviceOperationFailed` if the scanner refuses.
QVariant readUserInformation(DirectLink &link, const QVariantList &arguments);

/// Writes a text of at most 511 bytes in UTF-8. `arguments` is [address, text]. Throws
/// `InvalidParameter`, also for a text that the local 8-bit encoding cannot hold, or
/// `DeviceOperationFailed` if the scanner refuses.
QVariant writeUserInformation(DirectLink &link, const QVariantList &arguments);

} // namespace Scanner

#endif
