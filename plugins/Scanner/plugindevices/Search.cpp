#include "Search.h"

#include "Errors.h"
#include "Parameters.h"

#include <algorithm>
#include <limits>

namespace Scanner::PluginDevices {

using KvSyncCore::DeviceController;

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

namespace {

QString shownCode(ErrorCode code)
{
    return QStringLiteral("0x%1").arg(static_cast<quint32>(code), 8, 16, QLatin1Char('0'));
}

} // namespace

Search::Search(DeviceController &deviceController, const PluginAddress &pluginAddress)
    : controller(deviceController)
    , address(pluginAddress)
{
    check(controller.loadDevicePlugin(address.plugin, address.version),
          QStringLiteral("The device plug-in %1 cannot be loaded").arg(address.shown()));
    const QPair<ErrorCode, int> answer = controller.enumDevice(address.plugin, address.version);
    check(answer.first,
          QStringLiteral("The device plug-in %1 does not tell its devices").arg(address.shown()));
    if (answer.second <= 0)
        raise(ConnectFailed,
              QStringLiteral("The device plug-in %1 has no device").arg(address.shown()));
    deviceCount = answer.second;
}

Search::~Search()
{
    for (const std::vector<qint64> *const handles : {&idle, &connected}) {
        for (const qint64 handle : *handles) {
            try {
                controller.deleteDevice(handle);
            } catch (...) {
                // The plug-in's; another failure may be on its way to the host already.
            }
        }
    }
}

qint64 Search::connect(int index)
{
    wholeNumberFrom(index, QStringLiteral("\"index\""), 0, deviceCount - 1);
    ErrorCode answer = Success;
    for (std::size_t tried = 0; tried < static_cast<std::size_t>(deviceCount); ++tried) {
        if (tried == idle.size())
            idle.push_back(make());
        const qint64 handle = idle[tried];
        answer = controller.connectDeviceByIndex(handle, index);
        if (answer != Success)
            continue;
        connected.push_back(handle);
        idle.erase(idle.begin() + static_cast<std::ptrdiff_t>(tried));
        return handle;
    }
    raise(ConnectFailed,
          QStringLiteral("No device of the plug-in %1 accepts the index %2; the last answer was %3")
              .arg(address.shown())
              .arg(index)
              .arg(shownCode(answer)));
}

void Search::take(qint64 handle)
{
    connected.erase(std::remove(connected.begin(), connected.end(), handle), connected.end());
}

qint64 Search::make()
{
    const QPair<ErrorCode, qint64> answer =
        controller.createDevice(address.plugin, address.version);
    check(answer.first,
          QStringLiteral("The device plug-in %1 makes no device").arg(address.shown()));
    if (answer.second == 0)
        raise(ConnectFailed,
              QStringLiteral("The device plug-in %1 makes no device").arg(address.shown()));
    return answer.second;
}

} // namespace Scanner::PluginDevices
