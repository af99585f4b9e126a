// Plug-in files that do not load.

#include "device/support/DeviceLoading.h"
#include "support/CriticalLinesOff.h"
#include "support/RowName.h"

#include <QtCore/QPluginLoader>

#include <stdexcept>

using namespace KvSyncTest;

namespace {

struct UnloadableRow
{
    const char *name;
    void (*provide)(ApplicationFolder &folder, const QString &fileName);
};

const UnloadableRow unloadables[] = {
    {"TextFile",
     [](ApplicationFolder &folder, const QString &fileName) { folder.writeText(fileName); }},
    {"EmptyFile",
     [](ApplicationFolder &folder, const QString &fileName) { folder.writeText(fileName, ""); }},
    {"TruncatedModule",
     [](ApplicationFolder &folder, const QString &fileName) {
         folder.writeTruncated(deviceFixture("Scripted"), fileName);
     }},
    {"MissingLibrary",
     [](ApplicationFolder &folder, const QString &fileName) {
         folder.copyModule(commandFixture("MissingLibrary"), fileName);
     }},
    {"NullRoot",
     [](ApplicationFolder &folder, const QString &fileName) {
         folder.copyModule(commandFixture("NullRoot"), fileName);
     }},
};

const QString fileName = QStringLiteral("Camera.2.1.4.dll");

class UnloadableDeviceFile : public DeviceLoading,
                             public ::testing::WithParamInterface<UnloadableRow>
{
protected:
    UnloadableDeviceFile() { GetParam().provide(folder, fileName); }

    /// What Qt itself says of the file.
    QString loaderText() const
    {
        QPluginLoader loader(folder.filePath(fileName));
        EXPECT_EQ(loader.instance(), nullptr);
        return loader.errorString();
    }
};

using DeviceLoadFailure = DeviceLoading;

} // namespace

INSTANTIATE_TEST_SUITE_P(All, UnloadableDeviceFile, ::testing::ValuesIn(unloadables), rowName);

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
    put(QStringLiteral("Camera.2.1.3.dll"));
    EXPECT_EQ(load(camera, camera217), PluginLoadFailed);
}

TEST_P(UnloadableDeviceFile, IsTriedAgainAndANewerBuildLoads)
{
    EXPECT_EQ(load(camera, camera217), PluginLoadFailed);
    EXPECT_EQ(load(camera, camera217), PluginLoadFailed);
    put(QStringLiteral("Camera.2.1.5.dll"));
    expectLoads(camera, camera217, QStringLiteral("Camera.2.1.5.dll"));
}

TEST_F(DeviceLoadFailure, LeavesAModuleWithoutRootObjectInTheProcess)
{
    // The loader is deleted and not told to unload: the module's code may still be in use.
    folder.copyModule(commandFixture(QStringLiteral("NullRoot")), fileName);
    EXPECT_FALSE(QPluginLoader(folder.filePath(fileName)).isLoaded());
    EXPECT_EQ(load(camera, camera217), PluginLoadFailed);
    EXPECT_TRUE(QPluginLoader(folder.filePath(fileName)).isLoaded());
}

TEST_F(DeviceLoadFailure, AConstructorThatThrowsPassesThroughAndStoresNothing)
{
    const QString name = QStringLiteral("FactoryThrowsWhenLoaded");
    copyFixture(name, name + QStringLiteral(".1.0.1.dll"));
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
