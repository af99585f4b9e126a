#include "GlogChannel.h"
#include "KvSyncDevice/IFactory.h"
#include "LeakChecker.h"
#include "LogChannels.h"
#include "PluginFile.h"
#include "device/DeviceManager.h"

#include <QtCore/QPluginLoader>

#include <algorithm>
#include <memory>
#include <new>
#include <utility>

namespace KvSyncCore {

using BaseDeviceSpace::DeviceInterface;
using BaseDeviceSpace::DeviceType;

namespace {

const char nameOrVersionNull[] = "plugin name or version is null";

// A handle is the device's address taken as a number.
qint64 handleOf(const DeviceInterface *device)
{
    return static_cast<qint64>(reinterpret_cast<quintptr>(device));
}

DeviceInterface *deviceOf(const DeviceHandle handle)
{
    return reinterpret_cast<DeviceInterface *>(static_cast<quintptr>(handle));
}

QString notLoadedText(const QString &name, const QVersionNumber &version)
{
    // No separator between name and version: part of the contract.
    return QStringLiteral("The ") + name + version.toString() + QStringLiteral(" is not exist");
}

} // namespace

ErrorCode DeviceManager::loadDevicePlugin(const QString &pluginName, const QVersionNumber &version)
{
    if (pluginName.isEmpty() || version.isNull()) {
        KVSYNC_CRITICAL << nameOrVersionNull;
        KVSYNC_GLOG_ERROR << nameOrVersionNull;
        // enumDevice and createDevice return another code for this: part of the contract.
        return InvalidParameter;
    }
    if (isLoaded(pluginName, version))
        return Success;

    const PluginFile::Search search =
        PluginFile::findHighestBuild(pluginDirPath, pluginName, version);
    if (search.code != Success) {
        KVSYNC_CRITICAL << search.failure;
        // A missing file, unlike a missing directory, is on the Qt channel alone: part of the
        // contract.
        if (search.code == PathNotExist)
            KVSYNC_GLOG_ERROR << search.failure.toStdString();
        return search.code;
    }

    KVSYNC_GLOG_INFO << "load device plugin " << search.filePath.toStdString();
    KVSYNC_DEBUG << "load device plugin " << search.filePath;
    std::unique_ptr<QPluginLoader> loader(new (std::nothrow) QPluginLoader(search.filePath));
    if (!loader) {
        KVSYNC_CRITICAL << "new QPluginLoader object failed";
        // INFO, unlike every other failure: part of the contract.
        KVSYNC_GLOG_INFO << "new QPluginLoader object failed";
        return DeviceOperationFailed;
    }
    QObject *const instance = PluginFile::rootObject(*loader);
    if (!instance) {
        const QString text = loader->errorString();
        KVSYNC_CRITICAL << text;
        KVSYNC_GLOG_ERROR << text.toStdString();
        return PluginLoadFailed;
    }

    const QWriteLocker locker(&registryLock);
    DevicePluginRecord &record = plugins[PluginFile::key(pluginName, version)];
    // Another thread may have loaded the same plug-in meanwhile: its loader stays alive.
    keepUntilProcessEnd(record.loader);
    record = {search.fileName, instance, loader.release()};
    return Success;
}

QPair<ErrorCode, int> DeviceManager::enumDevice(const QString &pluginName,
                                                const QVersionNumber &version)
{
    if (pluginName.isEmpty() || version.isNull()) {
        KVSYNC_CRITICAL << nameOrVersionNull;
        KVSYNC_GLOG_ERROR << nameOrVersionNull;
        return {PluginNameOrVersionNull, 0};
    }
    IFactory *const factory = factoryOfPlugin(pluginName, version);
    if (!factory) {
        const QString text = notLoadedText(pluginName, version);
        KVSYNC_GLOG_INFO << text.toStdString();
        KVSYNC_CRITICAL << text;
        return {PluginNotLoaded, 0};
    }
    return {Success, factory->enumDevices()};
}

QPair<ErrorCode, qint64> DeviceManager::createDevice(const QString &pluginName,
                                                     const QVersionNumber &version)
{
    if (pluginName.isEmpty() || version.isNull()) {
        KVSYNC_CRITICAL << nameOrVersionNull;
        KVSYNC_GLOG_ERROR << nameOrVersionNull;
        return {PluginNameOrVersionNull, 0};
    }
    IFactory *const factory = factoryOfPlugin(pluginName, version);
    if (!factory) {
        KVSYNC_CRITICAL << notLoadedText(pluginName, version);
        return {PluginNotLoaded, 0};
    }
    const qint64 handle = handleOf(factory->createDevice());
    const QWriteLocker locker(&registryLock);
    devices.insert(handle, PluginFile::key(pluginName, version));
    registrationNumbers.insert(handle, ++lastRegistrationNumber);
    return {Success, handle};
}

ErrorCode DeviceManager::deleteDevice(const DeviceHandle handle)
{
    const Registration registration = registrationOf(handle);
    if (!registration.device) {
        KVSYNC_CRITICAL << "handle is invalid";
        return HandleInvalid;
    }
    auto *const factory = qobject_cast<IFactory *>(registration.plugin);
    if (!factory) {
        KVSYNC_CRITICAL << "The handle is invalid";
        return HandleInvalid;
    }
    DeviceInterface *target = registration.device;
    const ErrorCode result = factory->destroyDevice(target);
    if (result != Success)
        return result;
    // The key is the pointer as the plug-in left it, so that a handle whose pointer was cleared
    // stays registered: part of the contract.
    const qint64 ended = handleOf(target);
    const QWriteLocker locker(&registryLock);
    // Another thread may have been given a new device at the freed address meanwhile: it stays.
    if (ended != handle || registrationNumbers.value(handle) == registration.number)
        endRegistration(ended);
    return Success;
}

QPair<ErrorCode, QString> DeviceManager::name(const DeviceHandle handle)
{
    DeviceInterface *const target = device(handle);
    if (!target) {
        KVSYNC_CRITICAL << "The handle is invalid";
        return {HandleInvalid, QString()};
    }
    return {Success, target->name()};
}

QPair<ErrorCode, QFlags<DeviceType>> DeviceManager::types(const DeviceHandle handle)
{
    DeviceInterface *const target = device(handle);
    if (!target) {
        KVSYNC_CRITICAL << "The handle is invalid";
        return {HandleInvalid, QFlags<DeviceType>()};
    }
    return {Success, target->types()};
}

bool DeviceManager::isLoaded(const QString &name, const QVersionNumber &version)
{
    const QReadLocker locker(&registryLock);
    return plugins.contains(PluginFile::key(name, version));
}

// The cast asks the root object's qt_metacast, which is plug-in code: never under the lock.

IFactory *DeviceManager::factoryOfPlugin(const QString &name, const QVersionNumber &version)
{
    QObject *instance = nullptr;
    {
        const QReadLocker locker(&registryLock);
        instance = plugins.value(PluginFile::key(name, version)).instance;
    }
    return qobject_cast<IFactory *>(instance);
}

DeviceInterface *DeviceManager::device(const DeviceHandle handle)
{
    const QReadLocker locker(&registryLock);
    return devices.contains(handle) ? deviceOf(handle) : nullptr;
}

DeviceManager::Registration DeviceManager::registrationOf(const DeviceHandle handle)
{
    const QReadLocker locker(&registryLock);
    const auto key = devices.constFind(handle);
    if (key == devices.constEnd())
        return {};
    return {deviceOf(handle), plugins.value(*key).instance, registrationNumbers.value(handle)};
}

// Under the write lock.
void DeviceManager::endRegistration(const DeviceHandle handle)
{
    devices.remove(handle);
    registrationNumbers.remove(handle);
}

QList<qint64> DeviceManager::allHandles()
{
    const QReadLocker locker(&registryLock);
    return devices.keys();
}

void DeviceManager::deleteAllDevices()
{
    for (const qint64 handle : allHandles())
        deleteDevice(handle);
}

// In key order. A root object that calls back while it ends finds the plug-ins that went before it
// empty and their devices gone; the records stay until the end, so that none is loaded again.
void DeviceManager::unloadAllPlugins()
{
    while (QPluginLoader *const loader = takeFirstLoader()) {
        loader->unload();
        delete loader;
    }
    plugins.clear();
}

QPluginLoader *DeviceManager::takeFirstLoader()
{
    const QWriteLocker locker(&registryLock);
    const auto first =
        std::find_if(plugins.begin(), plugins.end(),
                     [](const DevicePluginRecord &record) { return record.loader != nullptr; });
    if (first == plugins.end())
        return nullptr;
    for (const qint64 handle : devices.keys(first.key()))
        endRegistration(handle);
    return std::exchange(*first, DevicePluginRecord()).loader;
}

} // namespace KvSyncCore
