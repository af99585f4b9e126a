// Plug-in files that do not load.

#include "device/support/DeviceLoading.h"
#include "support/CriticalLinesOff.h"
#include "support/RowName.h"
#include "support/UnloadableFiles.h"

#include <QtCore/QPluginLoader>

#include <stdexcept>

namespace {

using namespace KvSyncTest;

const QString fileName = "Camera.2.1.4.dll";

class UnloadableDeviceFile : public DeviceLoading,
                             public ::testing::WithParamInterface<UnloadableFile>
{
protected:
    UnloadableDeviceFile() { GetParam().provide(folder, fileName); }

    QString loaderText() const { return loaderError(folder.filePath(fileName)); }
};

using DeviceLoadFailure = DeviceLoading;

INSTANTIATE_TEST_SUITE_P(All, UnloadableDeviceFile, ::testing::ValuesIn(unloadableFiles), rowName);

TEST_P(UnloadableDeviceFile, FailsWithTheLoadersOwnWordsInBothLogs)
{
    const QString text = loaderText();
    EXPECT_FALSE(text.isEmpty());
    std::vector<LogLine> lines = loadLines(fileName);
    lines.push_back(criticalLine(text));
    lines.push_back(glogErrorLine(text));
    expectFailure(camera, camera217, PluginLoadFailed, lines);
}

TEST_P(UnloadableDeviceFile, FailsInTheOtherLogAloneWithCriticalLinesOff)
{
    const CriticalLinesOff off;
    std::vector<LogLine> lines = loadLines(fileName);
    lines.push_back(glogErrorLine(loaderText()));
    expectFailure(camera, camera217, PluginLoadFailed, lines);
}

TEST_P(UnloadableDeviceFile, IsNotTriedAroundByALowerBuild)
{
    put("Camera.2.1.3.dll");
    EXPECT_EQ(load(camera, camera217), PluginLoadFailed);
}

TEST_P(UnloadableDeviceFile, IsTriedAgainAndANewerBuildLoads)
{
    EXPECT_EQ(load(camera, camera217), PluginLoadFailed);
    EXPECT_EQ(load(camera, camera217), PluginLoadFailed);
    put("Camera.2.1.5.dll");
    expectLoads(camera, camera217, "Camera.2.1.5.dll");
}

TEST_F(DeviceLoadFailure, LeavesAModuleWithoutRootObjectInTheProcess)
{
    // The loader is deleted and not told to unload: the module's code may still be in use.
    folder.copyModule(commandFixture("NullRoot"), fileName);
    EXPECT_FALSE(QPluginLoader(folder.filePath(fileName)).isLoaded());
    EXPECT_EQ(load(camera, camera217), PluginLoadFailed);
    EXPECT_TRUE(QPluginLoader(folder.filePath(fileName)).isLoaded());
}

TEST_F(DeviceLoadFailure, AConstructorThatThrowsPassesThroughAndStoresNothing)
{
    const QString name = "FactoryThrowsWhenLoaded";
    copyFixture(name, name + ".1.0.1.dll");
    for (int attempt = 0; attempt < 2; ++attempt) {
        try {
            load(name, version);
            FAIL() << "nothing thrown";
        } catch (const std::runtime_error &exception) {
            EXPECT_STREQ(exception.what(), "no driver");
        }
        EXPECT_EQ(manager->enumDevice(name, version).first, PluginNotLoaded);
    }
}

} // namespace
