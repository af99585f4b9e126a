#include "UserInformation.h"

#include "Errors.h"
#include "Parameters.h"

namespace Scanner {

using KvSyncCore::DeviceController;

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

QVariant readUserInformation(DirectLink &link, const QVariantList &arguments)
{
    const unsigned int address = addressFrom(arguments);
    QByteArray data;
    link.run(
        QStringLiteral("The scanner refuses to read user information at address %1").arg(address),
        [&](DeviceController &c) { return c.readCustomInfo(DirectLink::handle, address, data); });
    return QString::fromLocal8Bit(data);
}

QVariant writeUserInformation(DirectLink &link, const QVariantList &arguments)
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
            const ErrorCode result = c.writeCustomInfo(DirectLink::handle, address, data);
            if (result == InvalidParameter)
                raise(result, QStringLiteral("User information is longer than 511 bytes in UTF-8"));
            return result;
        });
    return {};
}

} // namespace Scanner
