#include "DeviceAddress.h"

#include "Errors.h"
#include "Parameters.h"

#include <limits>

namespace Scanner {

namespace {

QVersionNumber versionFrom(const QVariantMap &parameters)
{
    const QVariant value = parameters.value(QStringLiteral("version"));
    const QString text = value.type() == QVariant::String ? value.toString() : QString();
    // Not by the index where fromString ended: compilers that believe Qt's "pure" never see it
    // change.
    QVersionNumber version = QVersionNumber::fromString(text);
    if (version.isNull() || version.toString() != text)
        raise(
            InvalidParameter,
            QStringLiteral("\"version\" must be a text such as \"1.0\", not %1").arg(shown(value)));
    return version;
}

} // namespace

PluginAddress::PluginAddress(const QVariantMap &parameters)
    : plugin(Parameters(parameters).text(QStringLiteral("plugin")))
    , version(versionFrom(parameters))
{
}

QString PluginAddress::shown() const
{
    return QStringLiteral("%1 %2").arg(plugin, version.toString());
}

DeviceAddress::DeviceAddress(const QVariantMap &parameters)
    : PluginAddress(parameters)
    , index(Parameters(parameters)
                .wholeNumber(QStringLiteral("index"), 0, std::numeric_limits<int>::max()))
{
}

} // namespace Scanner
