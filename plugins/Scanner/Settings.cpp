#include "Settings.h"

#include "Errors.h"
#include "Parameters.h"
#include "SettingTable.h"

#include <QtCore/QRegularExpression>

#include <algorithm>
#include <optional>

namespace Scanner {

using KvSyncCore::DeviceController;

namespace {

/// A setting, and the camera whose it is.
struct Target
{
    const Setting *setting;
    int camera; ///< 0 if the setting is the whole scanner's
};

std::optional<Target> findTarget(const QString &name)
{
    static const QRegularExpression ofCamera(QStringLiteral("^camera(\\d{1,2})\\.(.*)$"));
    const QRegularExpressionMatch match = ofCamera.match(name);
    const Scope scope = match.hasMatch() ? Scope::Camera : Scope::WholeScanner;
    const QString plainName = match.hasMatch() ? match.captured(2) : name;
    for (const Setting &setting : settingTable()) {
        if (setting.scope == scope && setting.name == plainName)
            return Target{&setting, match.captured(1).toInt()};
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

QVariant toVariant(const Setting &setting, double number)
{
    return setting.precision == Precision::Whole ? QVariant(static_cast<int>(number))
                                                 : QVariant(number);
}

QVariant toVariant(const Setting &setting, const Numbers &numbers)
{
    if (setting.count == 1)
        return toVariant(setting, numbers[0]);
    QVariantList list;
    std::transform(numbers.begin(), numbers.begin() + setting.count, std::back_inserter(list),
                   [&](double number) { return toVariant(setting, number); });
    return list;
}

double toNumber(const Setting &setting, const QString &name, const QVariant &value)
{
    if (setting.precision == Precision::Whole)
        return wholeNumberFrom(value, name, static_cast<int>(setting.minimum),
                               static_cast<int>(setting.maximum));
    return realNumberFrom(value, name, setting.minimum, setting.maximum);
}

Numbers toNumbers(const Setting &setting, const QString &name, const QVariant &value)
{
    Numbers numbers{};
    if (setting.count == 1) {
        numbers[0] = toNumber(setting, name, value);
        return numbers;
    }
    const QVariantList list = value.toList();
    if (list.size() != setting.count)
        raise(InvalidParameter,
              QStringLiteral("%1 must be a list of %2 numbers").arg(name).arg(setting.count));
    for (int place = 0; place < setting.count; ++place)
        numbers[static_cast<std::size_t>(place)] = toNumber(setting, name, list.at(place));
    return numbers;
}

QVariantMap describe(const Setting &setting, const QString &name)
{
    return {{QStringLiteral("name"), name},
            {QStringLiteral("unit"), QString(setting.unit)},
            {QStringLiteral("minimum"), toVariant(setting, setting.minimum)},
            {QStringLiteral("maximum"), toVariant(setting, setting.maximum)},
            {QStringLiteral("count"), setting.count},
            {QStringLiteral("readable"), setting.read != nullptr}};
}

QString cameraSetting(int camera, const Setting &setting)
{
    return QStringLiteral("camera%1.%2").arg(camera).arg(setting.name);
}

} // namespace

Settings::Settings(DirectLink &directLink)
    : link(directLink)
{
}

QVariantList Settings::list()
{
    int cameras = 0;
    check(link.call([&](DeviceController &c) { return c.getConnectCameraCount(cameras); }),
          QStringLiteral("The scanner does not say how many cameras it has"));
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
                append(setting, cameraSetting(camera, setting));
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
    check(link.call(
              [&](DeviceController &c) { return found.setting->read(c, found.camera, numbers); }),
          QStringLiteral("The scanner does not give the setting \"%1\"").arg(name));
    return toVariant(*found.setting, numbers);
}

void Settings::write(const QString &name, const QVariant &value)
{
    const Target found = target(name);
    const Numbers numbers =
        toNumbers(*found.setting, QStringLiteral("The setting \"%1\"").arg(name), value);
    if (found.setting->read)
        keepFirstValue(name, read(name));
    check(link.call(
              [&](DeviceController &c) { return found.setting->write(c, found.camera, numbers); }),
          QStringLiteral("The scanner refuses %1 for the setting \"%2\"").arg(shown(value), name));
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

} // namespace Scanner
