#include "Settings.h"

#include "Errors.h"
#include "Parameters.h"
#include "SettingForm.h"

#include <QtCore/QMap>
#include <QtCore/QVariant>

#include <optional>
#include <vector>

namespace Scanner::DirectLink {

using KvSyncCore::DeviceController;

namespace {

enum class Scope { Camera, WholeScanner };

/// One setting of the direct link.
struct Setting
{
    QLatin1String name;
    Scope scope;
    NumberForm form;
    /// Null where the scanner cannot be asked.
    ErrorCode (*read)(DeviceController &controller, int camera, Numbers &numbers);
    ErrorCode (*write)(DeviceController &controller, int camera, const Numbers &numbers);
};

signed char cameraNumber(int camera)
{
    return static_cast<signed char>(camera);
}

ErrorCode readExposure(DeviceController &c, int camera, Numbers &numbers)
{
    return c.getExposureTime(Connection::handle, numbers[0], cameraNumber(camera));
}

ErrorCode writeExposure(DeviceController &c, int camera, const Numbers &numbers)
{
    return c.setExopsureTime(Connection::handle, numbers[0], cameraNumber(camera));
}

// Gains go together with the exposure: getGain and setGain do not tell whether the scanner refused.

ErrorCode readGain(DeviceController &c, int camera, Numbers &numbers)
{
    unsigned short gain = 0;
    double exposure = 0.0;
    const ErrorCode result =
        c.getGainAndExpo(Connection::handle, gain, exposure, cameraNumber(camera));
    numbers[0] = gain;
    return result;
}

ErrorCode writeGain(DeviceController &c, int camera, const Numbers &numbers)
{
    unsigned short gain = 0;
    double exposure = 0.0;
    const ErrorCode result =
        c.getGainAndExpo(Connection::handle, gain, exposure, cameraNumber(camera));
    if (result != Success)
        return result;
    return c.setGainAndExpo(Connection::handle, static_cast<unsigned short>(numbers[0]), exposure,
                            cameraNumber(camera));
}

template <ErrorCode (DeviceController::*operation)(int &)>
ErrorCode readWhole(DeviceController &c, int, Numbers &numbers)
{
    int value = 0;
    const ErrorCode result = (c.*operation)(value);
    numbers[0] = value;
    return result;
}

template <ErrorCode (DeviceController::*operation)(int)>
ErrorCode writeWhole(DeviceController &c, int, const Numbers &numbers)
{
    return (c.*operation)(static_cast<int>(numbers[0]));
}

ErrorCode readStrobeRatios(DeviceController &c, int, Numbers &numbers)
{
    int first = 0;
    int second = 0;
    int third = 0;
    const ErrorCode result = c.getStrobeDutioRatio(first, second, third);
    numbers = {double(first), double(second), double(third)};
    return result;
}

ErrorCode writeStrobeRatios(DeviceController &c, int, const Numbers &numbers)
{
    return c.setStrobeDutioRatio(static_cast<int>(numbers[0]), static_cast<int>(numbers[1]),
                                 static_cast<int>(numbers[2]));
}

ErrorCode writeRatioByCommand(DeviceController &c, const QString &command, const Numbers &numbers)
{
    QMap<QString, QVariant> parameters{
        {QStringLiteral("dutioRatio"), static_cast<int>(numbers[0])}};
    return c.executeCommand(Connection::handle, command, parameters);
}

ErrorCode writeLaserLineRatio(DeviceController &c, int, const Numbers &numbers)
{
    return writeRatioByCommand(c, QStringLiteral("SetLaserLineDutioRatio"), numbers);
}

ErrorCode writeInfraredRatio(DeviceController &c, int, const Numbers &numbers)
{
    return writeRatioByCommand(c, QStringLiteral("SetIRLaserDutioRatio"), numbers);
}

using Text = QLatin1String;
using C = DeviceController;

// clang-format off
const std::vector<Setting> &settingTable()
{
    static const std::vector<Setting> table = {
        {Text("exposureUs"), Scope::Camera, {Precision::Real, Text("us"), 1, 1000000, 1},
         readExposure, writeExposure},
        {Text("gain"), Scope::Camera, {Precision::Whole, Text(""), 0, 65535, 1},
         readGain, writeGain},
        {Text("periodMs"), Scope::WholeScanner, {Precision::Whole, Text("ms"), 1, 60000, 1},
         readWhole<&C::getVideoTriggerPeriod>, writeWhole<&C::setVideoTriggerPeriod>},
        {Text("projectorBrightness"), Scope::WholeScanner, {Precision::Whole, Text("%"), 0, 100, 1},
         readWhole<&C::getProjectorBrightness>, writeWhole<&C::setProjectorBrightness>},
        {Text("projectorDutyRatio"), Scope::WholeScanner, {Precision::Whole, Text("%"), 0, 100, 1},
         readWhole<&C::getProjectDutioRatio>, writeWhole<&C::setProjectDutioRatio>},
        {Text("strobeDutyRatios"), Scope::WholeScanner, {Precision::Whole, Text("%"), 0, 100, 3},
         readStrobeRatios, writeStrobeRatios},
        {Text("laserLineDutyRatio"), Scope::WholeScanner, {Precision::Whole, Text("%"), 0, 100, 1},
         readWhole<&C::getLaserLineDutioRatio>, writeLaserLineRatio},
        {Text("infraredDutyRatio"), Scope::WholeScanner, {Precision::Whole, Text("%"), 0, 100, 1},
         readWhole<&C::getIRLaserDutioRatio>, writeInfraredRatio},
        {Text("distanceIndication"), Scope::WholeScanner, {Precision::Whole, Text(""), 0, 3, 1},
         nullptr, writeWhole<&C::setDistanceIndicate>},
    };
    return table;
}
// clang-format on

/// A setting, and the camera whose it is.
struct Target
{
    const Setting *setting;
    int camera; ///< 0 if the setting is the whole scanner's
};

std::optional<Target> findTarget(const QString &text)
{
    const SettingName name(text);
    const Scope scope = name.camera ? Scope::Camera : Scope::WholeScanner;
    for (const Setting &setting : settingTable()) {
        if (setting.scope == scope && setting.name == name.plainName)
            return Target{&setting, name.camera.value_or(0)};
    }
    return std::nullopt;
}

Target target(const QString &name)
{
    const std::optional<Target> found = findTarget(name);
    if (!found)
        raise(FunctionNotExist, QStringLiteral("There is no setting \"%1\"").arg(name));
    return *found;
}

QVariantMap describe(const Setting &setting, const QString &name)
{
    QVariantMap entry = setting.form.describe();
    entry.insert(QStringLiteral("name"), name);
    entry.insert(QStringLiteral("readable"), setting.read != nullptr);
    return entry;
}

} // namespace

Settings::Settings(Connection &connection)
    : link(connection)
{
}

QVariantList Settings::list()
{
    int cameras = 0;
    link.run(QStringLiteral("The scanner does not say how many cameras it has"),
             [&](DeviceController &c) { return c.getConnectCameraCount(cameras); });
    QVariantList list;
    const auto append = [&](const Setting &setting, const QString &name) {
        QVariantMap entry = describe(setting, name);
        if (setting.read)
            entry.insert(QStringLiteral("value"), read(name));
        list.append(entry);
    };
    for (const Setting &setting : settingTable()) {
        if (setting.scope == Scope::WholeScanner)
            append(setting, setting.name);
        else
            for (int camera = 0; camera < cameras; ++camera)
                append(setting, SettingName::ofCamera(camera, setting.name));
    }
    return list;
}

QVariant Settings::read(const QString &name)
{
    const Target found = target(name);
    if (!found.setting->read)
        raise(FunctionNotExist,
              QStringLiteral("The setting \"%1\" can be written, but not read").arg(name));
    Numbers numbers{};
    link.run(QStringLiteral("The scanner does not give the setting \"%1\"").arg(name),
             [&](DeviceController &c) { return found.setting->read(c, found.camera, numbers); });
    return found.setting->form.toVariant(numbers);
}

void Settings::write(const QString &name, const QVariant &value)
{
    const Target found = target(name);
    const Numbers numbers =
        found.setting->form.toNumbers(QStringLiteral("The setting \"%1\"").arg(name), value);
    if (found.setting->read)
        keepFirstValue(name, read(name));
    link.run(
        QStringLiteral("The scanner refuses %1 for the setting \"%2\"").arg(shown(value), name),
        [&](DeviceController &c) { return found.setting->write(c, found.camera, numbers); });
}

void Settings::restore(const QString &name)
{
    target(name);
    QVariant first;
    {
        const std::lock_guard<std::mutex> lock(mutex);
        first = firstValues.value(name);
    }
    if (first.isValid())
        write(name, first);
}

void Settings::restoreAll()
{
    QStringList names;
    {
        const std::lock_guard<std::mutex> lock(mutex);
        names = firstValues.keys();
    }
    for (const QString &name : qAsConst(names))
        restore(name);
}

void Settings::forget()
{
    const std::lock_guard<std::mutex> lock(mutex);
    firstValues.clear();
}

void Settings::keepFirstValue(const QString &name, const QVariant &value)
{
    const std::lock_guard<std::mutex> lock(mutex);
    if (!firstValues.contains(name))
        firstValues.insert(name, value);
}

} // namespace Scanner::DirectLink
