#include "DeviceSettings.h"

#include "DeviceSettingTable.h"
#include "Errors.h"
#include "Parameters.h"
#include "SettingName.h"

#include <QtCore/QMap>

namespace Scanner {

using KvSyncCore::DeviceController;
using namespace BaseDeviceSpace;

namespace {

using Values = QMap<QString, QVariant>;

/// A setting of the device's capabilities, and the sensor whose it is.
struct Target
{
    const DeviceSetting *setting; ///< null if the name is one of the plug-in's own
    signed char sensor;
};

bool isOfSensor(const DeviceSetting &setting)
{
    return setting.capability == CameraDevice;
}

Target findTarget(const OpenDevice &device, const QString &text)
{
    const SettingName name(text);
    for (const DeviceSetting &setting : deviceSettingTable()) {
        if (setting.name == name.plainName && isOfSensor(setting) == name.camera.has_value()) {
            device.require(setting.capability);
            return {&setting, static_cast<signed char>(name.camera.value_or(0))};
        }
    }
    return {nullptr, 0};
}

QVariant readNumbers(OpenDevice &device, const DeviceSetting &setting, signed char sensor,
                     const QString &name)
{
    Numbers numbers{};
    check(device.call([&](DeviceController &c, qint64 handle) {
        return setting.read(c, handle, sensor, numbers);
    }),
          QStringLiteral("The device does not give the setting \"%1\"").arg(name));
    return setting.form.toVariant(numbers);
}

QVariantMap describe(OpenDevice &device, const DeviceSetting &setting, signed char sensor,
                     const QString &name)
{
    QVariantMap entry = setting.form.describe();
    entry.insert(QStringLiteral("name"), name);
    entry.insert(QStringLiteral("readable"), true);
    entry.insert(QStringLiteral("writable"), setting.write != nullptr);
    entry.insert(QStringLiteral("value"), readNumbers(device, setting, sensor, name));
    return entry;
}

QStringList ownProperties(OpenDevice &device)
{
    Values values;
    const ErrorCode result = device.call([&](DeviceController &c, qint64 handle) {
        return c.getProperty(handle, QStringLiteral("properties"), values);
    });
    return result == Success ? values.value(QStringLiteral("names")).toStringList() : QStringList();
}

// The keys that went in are the host's own, unless the plug-in changed them.
QVariant withoutKeys(const Values &values, const QVariantMap &sent)
{
    QVariantMap received = values;
    for (auto key = sent.begin(); key != sent.end(); ++key) {
        if (received.value(key.key()) == key.value())
            received.remove(key.key());
    }
    const QString value = QStringLiteral("value");
    return received.size() == 1 && received.contains(value) ? received.value(value)
                                                            : QVariant(received);
}

bool isMap(const QVariant &value)
{
    return value.type() == QVariant::Map;
}

} // namespace

QVariantList listSettings(OpenDevice &device)
{
    const int sensors = device.has(CameraDevice) ? device.call(countSensors) : 0;
    QVariantList list;
    for (const DeviceSetting &setting : deviceSettingTable()) {
        if (!device.has(setting.capability))
            continue;
        if (!isOfSensor(setting))
            list.append(describe(device, setting, 0, setting.name));
        for (int sensor = 0; isOfSensor(setting) && sensor < sensors; ++sensor)
            list.append(describe(device, setting, static_cast<signed char>(sensor),
                                 SettingName::ofCamera(sensor, setting.name)));
    }
    const QStringList names = ownProperties(device);
    for (const QString &name : names)
        list.append(QVariantMap{{QStringLiteral("name"), name}});
    return list;
}

QVariant readSetting(OpenDevice &device, const QString &name, const QVariant &value)
{
    const Target target = findTarget(device, name);
    if (target.setting)
        return readNumbers(device, *target.setting, target.sensor, name);
    Values values = isMap(value) ? value.toMap() : QVariantMap();
    check(device.call([&](DeviceController &c, qint64 handle) {
        return c.getProperty(handle, name, values);
    }),
          QStringLiteral("The device does not give the property \"%1\"").arg(name));
    return withoutKeys(values, value.toMap());
}

void writeSetting(OpenDevice &device, const QString &name, const QVariant &value)
{
    const Target target = findTarget(device, name);
    const QString refusal =
        QStringLiteral("The device refuses %1 for \"%2\"").arg(shown(value), name);
    if (!target.setting) {
        const Values values =
            isMap(value) ? value.toMap() : QVariantMap{{QStringLiteral("value"), value}};
        check(device.call([&](DeviceController &c, qint64 handle) {
            return c.setProperty(handle, name, values);
        }),
              refusal);
        return;
    }
    if (!target.setting->write)
        raise(FunctionNotExist,
              QStringLiteral("The setting \"%1\" can be read, but not written").arg(name));
    const Numbers numbers =
        target.setting->form.toNumbers(QStringLiteral("The setting \"%1\"").arg(name), value);
    check(device.call([&](DeviceController &c, qint64 handle) {
        return target.setting->write(c, handle, target.sensor, numbers);
    }),
          refusal);
}

} // namespace Scanner
