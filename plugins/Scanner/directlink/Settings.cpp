#include "Settings.h"

#include "Errors.h"
#include "Parameters.h"
#include "SettingName.h"
#include "SettingTable.h"

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

Settings::Settings(DirectLink &directLink)
    : link(directLink)
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

} // namespace Scanner
