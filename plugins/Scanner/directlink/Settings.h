#ifndef SCANNER_DIRECTLINK_SETTINGS_H
#define SCANNER_DIRECTLINK_SETTINGS_H

#include "Connection.h"

#include <QtCore/QMap>
#include <QtCore/QString>
#include <QtCore/QVariant>

#include <mutex>

namespace Scanner::DirectLink {

/// The open scanner's settings by name. A setting of a camera has the camera in front, from 0:
/// "camera1.gain". Any thread may call. Unknown names throw `FunctionNotExist`, values that cannot
/// be used `InvalidParameter`, and what the scanner refuses `DeviceOperationFailed`.
class Settings
{
public:
    explicit Settings(Connection &connection);

    /// One map for each setting of the connected cameras and the scanner: {"name", "unit",
    /// "minimum", "maximum", "count", "readable"} and, if it can be read, {"value"}.
    QVariantList list();

    /// A number, or a list of numbers where "count" is above 1.
    QVariant read(const QString &name);
    void write(const QString &name, const QVariant &value);

    /// Sets what it was before the first write since the scanner was opened; nothing happens if it
    /// was never written.
    void restore(const QString &name);
    void restoreAll();
    /// Another scanner begins: nothing was written yet.
    void forget();

private:
    void keepFirstValue(const QString &name, const QVariant &value);

    Connection &link;
    std::mutex mutex;
    QMap<QString, QVariant> firstValues;
};

} // namespace Scanner::DirectLink

#endif
