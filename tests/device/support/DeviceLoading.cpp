#include "device/support/DeviceLoading.h"

namespace KvSyncTest {

void DeviceLoading::put(const QString &fileName)
{
    copyFixture("Scripted", fileName);
}

ErrorCode DeviceLoading::load(const QString &name, const QVersionNumber &wanted)
{
    return manager->loadDevicePlugin(name, wanted);
}

std::vector<LogLine> DeviceLoading::loadLines(const QString &fileName) const
{
    const QString text = "load device plugin " + folder.filePath(fileName);
    return {glogInfoLine(text), debugLine(text)};
}

void DeviceLoading::expectLoads(const QString &name, const QVersionNumber &wanted,
                                const QString &fileName)
{
    log.clear();
    EXPECT_EQ(load(name, wanted), Success);
    EXPECT_EQ(log.lines(), loadLines(fileName));
}

void DeviceLoading::expectFailure(const QString &name, const QVersionNumber &wanted, ErrorCode code,
                                  const std::vector<LogLine> &lines)
{
    log.clear();
    EXPECT_EQ(load(name, wanted), code);
    EXPECT_EQ(log.lines(), lines);
    for (const LogLine &line : log.lines(Channel::QtCritical))
        expectWrittenBy(line, "KvSyncCore::DeviceManager::loadDevicePlugin(", "DevicePlugins.cpp");
    if (!name.isEmpty() && !wanted.isNull()) {
        EXPECT_EQ(manager->enumDevice(name, wanted).first, PluginNotLoaded);
    }
}

void DeviceLoading::expectMissingDirectory(const QString &name, const QVersionNumber &wanted,
                                           const QString &directory)
{
    const QString text = directory + " is no exist path";
    expectFailure(name, wanted, PathNotExist, {criticalLine(text), glogErrorLine(text)});
}

void DeviceLoading::expectNoFile(const QString &name, const QVersionNumber &wanted)
{
    const QString text = folder.path() + " is no exist dll";
    expectFailure(name, wanted, PluginFileNotExist, {criticalLine(text)});
}

} // namespace KvSyncTest
