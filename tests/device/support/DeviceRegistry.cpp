#include "device/support/DeviceRegistry.h"

namespace KvSyncTest {

DeviceRegistry::DeviceRegistry()
    : device(succeed)
{
}

DeviceHandle DeviceRegistry::createBy(LendingScript &script)
{
    script.next = &device;
    DeviceScript::use(&script);
    loadFixture(scripted);
    return createFixtureDevice(scripted);
}

void DeviceRegistry::expectLines(const std::vector<LogLine> &expected, const std::string &operation)
{
    EXPECT_EQ(log.lines(), expected);
    for (const LogLine &line : log.lines(Channel::QtCritical))
        expectWrittenBy(line, "KvSyncCore::DeviceManager::" + operation + "(", "DevicePlugins.cpp");
    log.clear();
}

void DeviceRegistry::expectNotLoaded(const QString &name, const QVersionNumber &wanted)
{
    const QString text = "The " + name + wanted.toString() + " is not exist";
    EXPECT_EQ(manager->enumDevice(name, wanted), qMakePair(PluginNotLoaded, 0));
    expectLines({glogInfoLine(text), criticalLine(text)}, "enumDevice");
    EXPECT_EQ(manager->createDevice(name, wanted), qMakePair(PluginNotLoaded, qint64(0)));
    expectLines({criticalLine(text)}, "createDevice");
}

void DeviceRegistry::expectDeleteRefused(DeviceHandle handle, const char *text)
{
    log.clear();
    EXPECT_EQ(manager->deleteDevice(handle), HandleInvalid);
    expectLines({criticalLine(QString::fromLatin1(text))}, "deleteDevice");
}

DeviceHandle addressOf(const BaseDeviceSpace::DeviceInterface &device)
{
    return static_cast<DeviceHandle>(reinterpret_cast<quintptr>(&device));
}

} // namespace KvSyncTest
