#include "device/support/DeviceTest.h"

namespace KvSyncTest {

const QVersionNumber DeviceTest::version(1, 0);

DeviceTest::DeviceTest()
    : manager(std::make_unique<KvSyncCore::DeviceManager>())
{
    DeviceScript::use(&lending);
    manager->setPluginDirPath(folder.name());
}

DeviceTest::~DeviceTest()
{
    endManager();
    DeviceScript::use(nullptr);
}

void DeviceTest::endManager()
{
    manager.reset();
}

void DeviceTest::copyFixture(const QString &fixture, const QString &fileName)
{
    folder.copyModule(deviceFixture(fixture), fileName);
}

void DeviceTest::loadFixture(const QString &fixture)
{
    copyFixture(fixture, fixture + ".1.0.1.dll");
    ASSERT_EQ(manager->loadDevicePlugin(fixture, version), Success);
    log.clear();
}

DeviceHandle DeviceTest::createFixtureDevice(const QString &fixture)
{
    const QPair<ErrorCode, qint64> created = manager->createDevice(fixture, version);
    EXPECT_EQ(created.first, Success);
    return created.second;
}

DeviceHandle DeviceTest::lend(BaseDeviceSpace::DeviceInterface &device)
{
    const QString fixture = "Scripted";
    if (!scriptedIsLoaded)
        loadFixture(fixture);
    scriptedIsLoaded = true;
    lending.next = &device;
    return createFixtureDevice(fixture);
}

} // namespace KvSyncTest
