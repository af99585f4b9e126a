#include "device/virtualscanner/VirtualScannerTest.h"

#include <QtCore/QCoreApplication>

namespace KvSyncTest {

const QString VirtualScannerTest::name = QStringLiteral("VirtualScanner");
const QVersionNumber VirtualScannerTest::version(1, 0);

VirtualScannerTest::VirtualScannerTest()
{
    const QString fileName = QStringLiteral("VirtualScanner.1.0.1.dll");
    const QString built =
        QCoreApplication::applicationDirPath() + QStringLiteral("/../../bin/Device/") + fileName;
    folder.copyModule(built, fileName);
    manager.setPluginDirPath(folder.name());
    EXPECT_EQ(devices.loadDevicePlugin(name, version), Success);
}

DeviceHandle VirtualScannerTest::create(int index)
{
    // As the plug-in's documentation tells callers to find one.
    const int count = devices.enumDevice(name, version).second;
    for (int attempt = 0; attempt < count; ++attempt) {
        const DeviceHandle handle = devices.createDevice(name, version).second;
        if (get(handle, "info").value(QStringLiteral("index")).toInt() == index)
            return handle;
        EXPECT_EQ(devices.deleteDevice(handle), Success);
    }
    ADD_FAILURE() << "no device at " << index;
    return 0;
}

DeviceHandle VirtualScannerTest::open(int index)
{
    const DeviceHandle handle = create(index);
    EXPECT_EQ(devices.connectDeviceByIndex(handle, index), Success);
    return handle;
}

ErrorCode VirtualScannerTest::set(DeviceHandle handle, const char *property, const Values &values)
{
    return devices.setProperty(handle, QString::fromLatin1(property), values);
}

Values VirtualScannerTest::get(DeviceHandle handle, const char *property, Values values)
{
    EXPECT_EQ(devices.getProperty(handle, QString::fromLatin1(property), values), Success)
        << property;
    return values;
}

ErrorCode VirtualScannerTest::codeOfGet(DeviceHandle handle, const char *property, Values values)
{
    return devices.getProperty(handle, QString::fromLatin1(property), values);
}

bool VirtualScannerTest::isCalled(DeviceHandle handle)
{
    return eventually(
        [&] { return get(handle, "vanish").value(QStringLiteral("calls")).toInt() == 1; });
}

} // namespace KvSyncTest
