// A plug-in loader that cannot be made. This program has an allocator that fails on order.

#include "device/support/DeviceTest.h"

#include <QtCore/QPluginLoader>

#include <cstdlib>
#include <new>

using namespace KvSyncTest;

namespace {

bool failForLoaders = false;

} // namespace

// Only the non-throwing form of the size of a loader fails: nothing else asks for it so.
void *operator new(std::size_t size, const std::nothrow_t &) noexcept
{
    if (failForLoaders && size == sizeof(QPluginLoader))
        return nullptr;
    try {
        return ::operator new(size);
    } catch (const std::bad_alloc &) {
        return nullptr;
    }
}

using DeviceLoader = DeviceTest;

TEST_F(DeviceLoader, ThatCannotBeMadeIsADeviceFailureAndOnlyAnInfoInTheOtherLog)
{
    copyFixture("Scripted", "Scripted.1.0.1.dll");
    failForLoaders = true;
    const ErrorCode code = manager->loadDevicePlugin("Scripted", version);
    failForLoaders = false;

    EXPECT_EQ(code, DeviceOperationFailed);
    const QString path = "load device plugin " + folder.filePath("Scripted.1.0.1.dll");
    const QString text = "new QPluginLoader object failed";
    EXPECT_EQ(log.lines(), (std::vector{glogInfoLine(path), debugLine(path), criticalLine(text),
                                        glogInfoLine(text)}));
    EXPECT_EQ(manager->enumDevice("Scripted", version).first, PluginNotLoaded);
    EXPECT_EQ(manager->loadDevicePlugin("Scripted", version), Success);
}
