#include "Settings.h"

#include "Errors.h"
#include "Parameters.h"
#include "SettingForm.h"

#include <QtCore/QMap>

#include <vector>

namespace Scanner::PluginDevices {

using KvSyncCore::DeviceController;
using namespace BaseDeviceSpace;

namespace {

/// One setting that a capability offers.
struct Setting
{
    QLatin1String name;
    BaseDeviceSpace::DeviceType capability; ///< a camera's setting is one of each sensor
    NumberForm form;
    ErrorCode (*read)(DeviceController &controller, qint64 handle, signed char sensor,
                      Numbers &numbers);
    /// Null where it can only be read.
    ErrorCode (*write)(DeviceController &controller, qint64 handle, signed char sensor,
                       const Numbers &numbers);
};

using Text = QLatin1String;
using C = DeviceController;

constexpr double largest = 2147483647.0;

ErrorCode readExposureRange(C &c, qint64 handle, signed char sensor, Numbers &numbers)
{
    unsigned int minimumUs = 0;
    unsigned int maximumUs = 0;
    const ErrorCode result = c.getExposureTimeRange(handle, minimumUs, maximumUs, sensor);
    numbers = {double(minimumUs), double(maximumUs)};
    return result;
}

ErrorCode readGainRange(C &c, qint64 handle, signed char sensor, Numbers &numbers)
{
    unsigned short minimum = 0;
    unsigned int maximum = 0;
    const ErrorCode result = c.getGainRange(handle, minimum, maximum, sensor);
    numbers = {double(minimum), double(maximum)};
    return result;
}

using PairReader = ErrorCode (C::*)(const DeviceHandle, unsigned int &, unsigned int &,
                                    signed char);
using PairWriter = ErrorCode (C::*)(const DeviceHandle, unsigned int, unsigned int, signed char);

template <PairReader operation>
ErrorCode readPair(C &c, qint64 handle, signed char sensor, Numbers &numbers)
{
    unsigned int first = 0;
    unsigned int second = 0;
    const ErrorCode result = (c.*operation)(handle, first, second, sensor);
    numbers = {double(first), double(second)};
    return result;
}

template <PairWriter operation>
ErrorCode writePair(C &c, qint64 handle, signed char sensor, const Numbers &numbers)
{
    return (c.*operation)(handle, static_cast<unsigned int>(numbers[0]),
                          static_cast<unsigned int>(numbers[1]), sensor);
}

ErrorCode readPixelFormat(C &c, qint64 handle, signed char sensor, Numbers &numbers)
{
    auto format = CameraSpace::Mono8;
    const ErrorCode result = c.getPixelFormat(handle, format, sensor);
    numbers[0] = static_cast<int>(format);
    return result;
}

ErrorCode readTriggerMode(C &c, qint64 handle, signed char sensor, Numbers &numbers)
{
    auto mode = CameraSpace::FreeRunning;
    const ErrorCode result = c.getTriggerMode(handle, mode, sensor);
    numbers[0] = static_cast<int>(mode);
    return result;
}

ErrorCode writeTriggerMode(C &c, qint64 handle, signed char sensor, const Numbers &numbers)
{
    const auto mode = static_cast<CameraSpace::TriggerMode>(static_cast<int>(numbers[0]));
    return c.setTriggerMode(handle, mode, sensor);
}

template <ErrorCode (C::*operation)(const DeviceHandle, bool &)>
ErrorCode readFlag(C &c, qint64 handle, signed char, Numbers &numbers)
{
    bool on = false;
    const ErrorCode result = (c.*operation)(handle, on);
    numbers[0] = on ? 1 : 0;
    return result;
}

template <ErrorCode (C::*operation)(const DeviceHandle, bool)>
ErrorCode writeFlag(C &c, qint64 handle, signed char, const Numbers &numbers)
{
    return (c.*operation)(handle, numbers[0] != 0.0);
}

ErrorCode readLuminance(C &c, qint64 handle, signed char, Numbers &numbers)
{
    unsigned char red = 0;
    unsigned char green = 0;
    unsigned char blue = 0;
    const ErrorCode result = c.getProjectorLuminance(handle, red, green, blue);
    numbers = {double(red), double(green), double(blue)};
    return result;
}

ErrorCode writeLuminance(C &c, qint64 handle, signed char, const Numbers &numbers)
{
    return c.setProjectorLuminance(handle, static_cast<unsigned char>(numbers[0]),
                                   static_cast<unsigned char>(numbers[1]),
                                   static_cast<unsigned char>(numbers[2]));
}

/// Every setting, in the order in which they are listed.
// clang-format off
const std::vector<Setting> &settingTable()
{
    static const std::vector<Setting> table = {
        {Text("exposureRangeUs"), CameraDevice, {Precision::Whole, Text("us"), 0, largest, 2},
         readExposureRange, nullptr},
        {Text("gainRange"), CameraDevice, {Precision::Whole, Text(""), 0, largest, 2},
         readGainRange, nullptr},
        {Text("maximumSize"), CameraDevice, {Precision::Whole, Text("px"), 0, largest, 2},
         readPair<&C::getMaxImageSize>, nullptr},
        {Text("size"), CameraDevice, {Precision::Whole, Text("px"), 0, largest, 2},
         readPair<&C::getInterestSize>, writePair<&C::setInterestSize>},
        {Text("offset"), CameraDevice, {Precision::Whole, Text("px"), 0, largest, 2},
         readPair<&C::getAOIOffset>, writePair<&C::setAOIOffset>},
        {Text("pixelFormat"), CameraDevice, {Precision::Whole, Text(""), 0, largest, 1},
         readPixelFormat, nullptr},
        {Text("triggerMode"), CameraDevice, {Precision::Whole, Text(""), 0, CameraSpace::HardwareTrigger, 1},
         readTriggerMode, writeTriggerMode},
        {Text("projectorPwm"), ProjectorDevice, {Precision::Flag, Text(""), 0, 1, 1},
         readFlag<&C::currentProjectorPWM>, writeFlag<&C::projectorPWM>},
        {Text("projectorLed"), ProjectorDevice, {Precision::Flag, Text(""), 0, 1, 1},
         readFlag<&C::currentProjectorLEDSwitch>, writeFlag<&C::projectorLEDSwitch>},
        {Text("luminance"), ProjectorDevice, {Precision::Whole, Text(""), 0, 255, 3},
         readLuminance, writeLuminance},
    };
    return table;
}
// clang-format on

using Values = QMap<QString, QVariant>;

/// A setting of the device's capabilities, and the sensor whose it is.
struct Target
{
    const Setting *setting; ///< null if the name is one of the plug-in's own
    signed char sensor;
};

bool isOfSensor(const Setting &setting)
{
    return setting.capability == CameraDevice;
}

Target findTarget(const Connection &device, const QString &text)
{
    const SettingName name(text);
    for (const Setting &setting : settingTable()) {
        if (setting.name == name.plainName && isOfSensor(setting) == name.camera.has_value()) {
            device.require(setting.capability);
            return {&setting, static_cast<signed char>(name.camera.value_or(0))};
        }
    }
    return {nullptr, 0};
}

QVariant readNumbers(Connection &device, const Setting &setting, signed char sensor,
                     const QString &name)
{
    Numbers numbers{};
    device.run(QStringLiteral("The device does not give the setting \"%1\"").arg(name),
               [&](DeviceController &c, qint64 handle) {
                   return setting.read(c, handle, sensor, numbers);
               });
    return setting.form.toVariant(numbers);
}

QVariantMap describe(Connection &device, const Setting &setting, signed char sensor,
                     const QString &name)
{
    QVariantMap entry = setting.form.describe();
    entry.insert(QStringLiteral("name"), name);
    entry.insert(QStringLiteral("readable"), true);
    entry.insert(QStringLiteral("writable"), setting.write != nullptr);
    entry.insert(QStringLiteral("value"), readNumbers(device, setting, sensor, name));
    return entry;
}

QStringList ownProperties(Connection &device)
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

QVariantList listSettings(Connection &device)
{
    const int sensors = device.has(CameraDevice) ? device.call(countSensors) : 0;
    QVariantList list;
    for (const Setting &setting : settingTable()) {
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

QVariant readSetting(Connection &device, const QString &name, const QVariant &value)
{
    const Target target = findTarget(device, name);
    if (target.setting)
        return readNumbers(device, *target.setting, target.sensor, name);
    Values values = isMap(value) ? value.toMap() : QVariantMap();
    device.run(
        QStringLiteral("The device does not give the property \"%1\"").arg(name),
        [&](DeviceController &c, qint64 handle) { return c.getProperty(handle, name, values); });
    return withoutKeys(values, value.toMap());
}

void writeSetting(Connection &device, const QString &name, const QVariant &value)
{
    const Target target = findTarget(device, name);
    const QString refusal =
        QStringLiteral("The device refuses %1 for \"%2\"").arg(shown(value), name);
    if (!target.setting) {
        const Values values =
            isMap(value) ? value.toMap() : QVariantMap{{QStringLiteral("value"), value}};
        device.run(refusal, [&](DeviceController &c, qint64 handle) {
            return c.setProperty(handle, name, values);
        });
        return;
    }
    if (!target.setting->write)
        raise(FunctionNotExist,
              QStringLiteral("The setting \"%1\" can be read, but not written").arg(name));
    const Numbers numbers =
        target.setting->form.toNumbers(QStringLiteral("The setting \"%1\"").arg(name), value);
    device.run(refusal, [&](DeviceController &c, qint64 handle) {
        return target.setting->write(c, handle, target.sensor, numbers);
    });
}

} // namespace Scanner::PluginDevices
