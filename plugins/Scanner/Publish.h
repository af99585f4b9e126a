#ifndef SCANNER_PUBLISH_H
#define SCANNER_PUBLISH_H

#include <QtCore/QString>
#include <QtCore/QVariant>

#include <functional>

namespace Scanner {

/// Tells the host of an event: its name and its payload.
using Publish = std::function<void(const QString &name, const QVariantList &payload)>;

} // namespace Scanner

#endif
