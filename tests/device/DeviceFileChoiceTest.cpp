// Which file loadDevicePlugin takes.

#include "device/support/DeviceLoading.h"
#include "support/LocaleCodec.h"
#include "support/RowName.h"

#include <QtCore/QFile>

using namespace KvSyncTest;

using DeviceFileChoice = DeviceLoading;

// Choice

TEST_F(DeviceFileChoice, ADirectoryWithoutAMatchingFileIsNamedOnTheQtChannelAlone)
{
    put(QStringLiteral("Camera.2.2.1.dll"));
    put(QStringLiteral("Camera2.1.1.dll"));
    put(QStringLiteral("Camera.2.1.1.so"));
    expectNoFile(camera, camera217);
}

TEST_F(DeviceFileChoice, TheHighestBuildIsLoadedAndALetterCountsAsZero)
{
    for (const char *build : {"3", "10", "x"})
        put(QStringLiteral("Camera.2.1.%1.dll").arg(QLatin1String(build)));
    expectLoads(camera, camera217, QStringLiteral("Camera.2.1.10.dll"));
}

TEST_F(DeviceFileChoice, OfEqualBuildsTheFirstOfTheListingIsLoaded)
{
    put(QStringLiteral("Camera.2.1.07.dll"));
    put(QStringLiteral("Camera.2.1.7.dll"));
    put(QStringLiteral("Camera.2.1.007.dll"));
    expectLoads(camera, camera217, QStringLiteral("Camera.2.1.007.dll"));
}

TEST_F(DeviceFileChoice, OfBuildsThatAreNoNumbersTheFirstOfTheListingIsLoaded)
{
    put(QStringLiteral("Camera.2.1.beta.dll"));
    put(QStringLiteral("Camera.2.1.alpha.dll"));
    expectLoads(camera, camera217, QStringLiteral("Camera.2.1.alpha.dll"));
}

TEST_F(DeviceFileChoice, ABuildBeyond32BitsCountsAsZero)
{
    put(QStringLiteral("Camera.2.1.1.dll"));
    put(QStringLiteral("Camera.2.1.4294967296.dll"));
    put(QStringLiteral("Camera.2.1.4294967396.dll")); // 100, if cut to 32 bits
    put(QStringLiteral("Camera.2.1.9223372036854775807.dll"));
    expectLoads(camera, camera217, QStringLiteral("Camera.2.1.1.dll"));
}

TEST_F(DeviceFileChoice, TheLargestIntIsStillANumber)
{
    put(QStringLiteral("Camera.2.1.2147483646.dll"));
    put(QStringLiteral("Camera.2.1.2147483647.dll"));
    put(QStringLiteral("Camera.2.1.2147483648.dll"));
    expectLoads(camera, camera217, QStringLiteral("Camera.2.1.2147483647.dll"));
}

TEST_F(DeviceFileChoice, AnEmptyBuildCountsAsZero)
{
    put(QStringLiteral("Camera.2.1..dll"));
    put(QStringLiteral("Camera.2.1.1.dll"));
    expectLoads(camera, camera217, QStringLiteral("Camera.2.1.1.dll"));
}

TEST_F(DeviceFileChoice, ADottedNameShiftsThePartThatIsCompared)
{
    // Part 3 is the minor version here, equal in both: the listing's order decides, not the build.
    put(QStringLiteral("Cam.era.2.1.3.dll"));
    put(QStringLiteral("Cam.era.2.1.10.dll"));
    expectLoads(QStringLiteral("Cam.era"), camera217, QStringLiteral("Cam.era.2.1.10.dll"));

    put(QStringLiteral("Cam.dot.2.1.1.dll"));
    put(QStringLiteral("Cam.dot.2.1.9.dll"));
    expectLoads(QStringLiteral("Cam.dot"), camera217, QStringLiteral("Cam.dot.2.1.1.dll"));
}

TEST_F(DeviceFileChoice, ABuildOfSeveralPartsIsComparedByItsFirst)
{
    put(QStringLiteral("Camera.2.1.4.99.dll"));
    put(QStringLiteral("Camera.2.1.5.1.dll"));
    expectLoads(camera, camera217, QStringLiteral("Camera.2.1.5.1.dll"));
}

TEST_F(DeviceFileChoice, AVersionOfOneSegmentSearchesMinorZero)
{
    put(QStringLiteral("Camera.2.0.4.dll"));
    put(QStringLiteral("Camera.2.1.5.dll"));
    expectLoads(camera, QVersionNumber(2), QStringLiteral("Camera.2.0.4.dll"));
    EXPECT_EQ(manager->enumDevice(camera, QVersionNumber(2, 0, 9)).first, Success);
}

TEST_F(DeviceFileChoice, AVersionOfOneZeroIsAVersion)
{
    put(QStringLiteral("Camera.0.0.4.dll"));
    expectLoads(camera, QVersionNumber(0), QStringLiteral("Camera.0.0.4.dll"));
}

TEST_F(DeviceFileChoice, FileNamesMatchWithoutRegardToCase)
{
    put(QStringLiteral("CAMERA.2.1.6.DLL"));
    expectLoads(camera, camera217, QStringLiteral("CAMERA.2.1.6.DLL"));
}

TEST_F(DeviceFileChoice, ADirectoryNamedLikeAPluginIsNoFile)
{
    folder.makeFolder(QStringLiteral("Camera.2.1.9.dll"));
    expectNoFile(camera, camera217);
}

TEST_F(DeviceFileChoice, ADirectoryNamedLikeAHigherBuildDoesNotShadowAFile)
{
    folder.makeFolder(QStringLiteral("Camera.2.1.9.dll"));
    put(QStringLiteral("Camera.2.1.3.dll"));
    expectLoads(camera, camera217, QStringLiteral("Camera.2.1.3.dll"));
}

// Names

namespace {

/// A plug-in that is asked for as `name`, and the file that is found for it.
struct NameRow
{
    const char *name;
    QString pluginName;
    QString fileName;
};

class DevicePluginName : public DeviceLoading, public ::testing::WithParamInterface<NameRow>
{
protected:
    const LocaleCodec utf8{"UTF-8"};
};

} // namespace

TEST_P(DevicePluginName, FindsItsFileAndCountsAsLoaded)
{
    const auto &[row, pluginName, fileName] = GetParam();
    put(fileName);
    expectLoads(pluginName, camera217, fileName);
    EXPECT_EQ(manager->enumDevice(pluginName, camera217), qMakePair(Success, 5));
}

// Names go through Latin-1, whose bytes are then read as UTF-8.
const NameRow names[] = {
    {"Blanks", "My Camera", "My Camera.2.1.3.dll"},
    {"Dots", "my.Camera", "my.Camera.2.1.3.dll"},
    {"PercentSign", "50%d", "50%d.2.1.3.dll"},
    {"Wildcard", "C?m*", "Camera.2.1.3.dll"},
    {"LetterOfLatin1", QStringLiteral("Cam\u00e9ra"), QStringLiteral("Cam\ufffdra.2.1.3.dll")},
    {"LetterBeyondLatin1", QStringLiteral("\u626bamera"), QStringLiteral("\u626bamera.2.1.3.dll")},
    {"LetterBeyondLatin1MatchesAny", QStringLiteral("\u626bamera"), "Xamera.2.1.3.dll"},
};
INSTANTIATE_TEST_SUITE_P(Names, DevicePluginName, ::testing::ValuesIn(names), rowName);

TEST_F(DeviceFileChoice, ALetterOfLatin1DoesNotFindTheFileOfThatName)
{
    const LocaleCodec utf8("UTF-8");
    put(QStringLiteral("Cam\u00e9ra.2.1.3.dll"));
    expectNoFile(QStringLiteral("Cam\u00e9ra"), camera217);
}

// Links and hidden files

#ifdef Q_OS_UNIX

TEST_F(DeviceFileChoice, AHiddenFileIsNotSeen)
{
    put(QStringLiteral(".Camera.2.1.3.dll"));
    expectNoFile(QStringLiteral(".Camera"), camera217);
}

TEST_F(DeviceFileChoice, ALinkToAPluginIsLoadedUnderItsOwnName)
{
    put(QStringLiteral("elsewhere.bin"));
    ASSERT_TRUE(QFile::link(folder.filePath(QStringLiteral("elsewhere.bin")),
                            folder.filePath(QStringLiteral("Camera.2.1.3.dll"))));
    expectLoads(camera, camera217, QStringLiteral("Camera.2.1.3.dll"));
}

TEST_F(DeviceFileChoice, ALinkToNothingIsNoFile)
{
    ASSERT_TRUE(QFile::link(folder.filePath(QStringLiteral("gone.bin")),
                            folder.filePath(QStringLiteral("Camera.2.1.3.dll"))));
    expectNoFile(camera, camera217);
}

TEST_F(DeviceFileChoice, ALinkToADirectoryIsNoFile)
{
    folder.makeFolder(QStringLiteral("folder"));
    ASSERT_TRUE(QFile::link(folder.filePath(QStringLiteral("folder")),
                            folder.filePath(QStringLiteral("Camera.2.1.3.dll"))));
    expectNoFile(camera, camera217);
}

#endif
