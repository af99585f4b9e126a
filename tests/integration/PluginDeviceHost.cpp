#include "PluginDeviceHost.h"

namespace KvSyncTest {

namespace {

// Loaded machines and sanitizers make pictures slowly.
constexpr int patientMs = 60000;

} // namespace

PluginDeviceHost::~PluginDeviceHost()
{
    for (const QVariant &handle : qAsConst(opened)) {
        try {
            close(handle);
        } catch (const KvSyncTool::Exception &) {
            // The test closed it itself.
        }
    }
}

QVariantMap PluginDeviceHost::address(int index)
{
    return {{"plugin", "VirtualScanner"}, {"version", "1.0"}, {"index", index}};
}

QVariant PluginDeviceHost::openDevice(int index)
{
    opened.append(call("openDevices", {address(index)}));
    return opened.last();
}

void PluginDeviceHost::close(const QVariant &handle)
{
    call("closeDevices", {handle});
}

QVariant PluginDeviceHost::get(const QVariant &handle, const QString &name, const QVariant &value)
{
    return call("getProperty", {handle, name, value});
}

void PluginDeviceHost::set(const QVariant &handle, const QString &name, const QVariant &value)
{
    call("setProperty", {handle, name, value});
}

void PluginDeviceHost::turn(const QVariant &handle, const QString &axis,
                            const QVariantMap &parameters, bool isRelative)
{
    call("turntableRotate", {handle, axis, parameters, isRelative});
}

double PluginDeviceHost::positionOf(const QVariant &handle, const QString &axis)
{
    return get(handle, "position").toMap().value(axis).toDouble();
}

QVariantList PluginDeviceHost::capture(const QVariant &handle, QVariantMap parameters)
{
    if (!parameters.contains("timeoutMs"))
        parameters.insert("timeoutMs", patientMs);
    return call("captureImage", {handle, "scan", parameters}).toList();
}

QVariant PluginDeviceHost::run(const QVariant &handle, const QString &command,
                               const QVariantList &arguments)
{
    return call("execute", {handle, command, QVariant(arguments)});
}

void PluginDeviceHost::makeFail(const QVariant &handle, const QString &operation, int code)
{
    set(handle, "fail", QVariantMap{{"operation", operation}, {"code", code}});
}

} // namespace KvSyncTest
