// All about one file: what the headers and the metadata say, and what becomes of it when it is
// loaded.

#include "PluginFolders.h"

#include "support/ApplicationFolder.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QJsonArray>

#if defined(_WIN32)
#include <QtCore/QtEndian>
#endif

using namespace KvSyncTest;

namespace {

class KvsyncPluginsWhy : public ::testing::Test
{
protected:
    /// Copies a fixture under the name that most tests use.
    QString add(const char *fixture, const char *fileName = "Demo.1.0.1.dll")
    {
        const QString path = folders.logicFile(QString::fromUtf8(fileName));
        copyFile(commandFixture(QString::fromUtf8(fixture)), path);
        return path;
    }

    QJsonObject loaded(const QString &path) const { return folders.why(path, loadPatiently()); }

    PluginFolders folders;
};

#if defined(_WIN32)
constexpr char ownFormat[] = "PE, 64 bits, machine ";
#else
constexpr char ownFormat[] = "ELF, 64 bits, machine ";
#endif

std::string textAt(const QJsonObject &file, const char *key)
{
    return file.value(QLatin1String(key)).toString().toStdString();
}

// Where the header names the processor.
int machineOffset(const QByteArray &module)
{
#if defined(_WIN32)
    return static_cast<int>(qFromLittleEndian<quint32>(module.constData() + 60)) + 4;
#else
    return module.isEmpty() ? 0 : 18;
#endif
}

} // namespace

TEST_F(KvsyncPluginsWhy, TellsPartsPatternWinnerAndLibraries)
{
    add("Recorder", "Demo.1.0.1.dll");
    add("Recorder", "Demo.1.0.2.dll");
    const QJsonObject file = folders.why(QStringLiteral("Demo.1.0.1.dll"));
    EXPECT_EQ(textAt(file, "pattern"), "Demo.1.0.*.dll");
    EXPECT_EQ(textAt(file, "winner"), "Demo.1.0.2.dll");
    EXPECT_TRUE(file.value(QStringLiteral("found")).toBool());
    EXPECT_EQ(textAt(file, "format").find(ownFormat), 0u);
    EXPECT_EQ(file.value(QStringLiteral("parts")).toArray().size(), 5);
    EXPECT_EQ(textAt(file.value(QStringLiteral("metaData")).toObject(), "className"), "Recorder");
    const QJsonArray libraries = file.value(QStringLiteral("libraries")).toArray();
    ASSERT_FALSE(libraries.isEmpty());
    for (const QJsonValue &each : libraries) {
        const QString path = each.toObject().value(QStringLiteral("path")).toString();
        EXPECT_TRUE(QFileInfo::exists(path)) << path.toStdString();
    }
}

TEST_F(KvsyncPluginsWhy, NamesTheLibrariesOfAForeignFileWithoutLookingForThem)
{
    const QString path = folders.logicFile(QStringLiteral("Demo.1.0.1.dll"));
    QByteArray module = contentOf(commandFixture(QStringLiteral("MissingLibrary")));
    const int machine = machineOffset(module);
    module[machine] = 1;
    module[machine + 1] = 0;
    writeFile(path, module);
    const QJsonObject file = folders.why(path);
    EXPECT_EQ(codes(file), "wrong-architecture");
    EXPECT_EQ(file.value(QStringLiteral("libraries")).toArray().size(), 0);
    const QStringList imports = file.value(QStringLiteral("imports")).toVariant().toStringList();
    EXPECT_EQ(imports.filter(QStringLiteral("AbsentLibrary")).size(), 1);
    const QString output =
        folders.run({QStringLiteral("plugins"), QStringLiteral("why"), path}).output;
    for (const QString &name : imports)
        EXPECT_TRUE(output.contains(QStringLiteral("needs     %1 (not looked for)\n").arg(name)))
            << output.toStdString();
}

TEST_F(KvsyncPluginsWhy, TellsPeopleEverythingOfAMissingLibrary)
{
    const QString path = add("MissingLibrary");
    const Outcome outcome = folders.run({QStringLiteral("plugins"), QStringLiteral("why"), path});
    const QStringList lines = outcome.output.split(QLatin1Char('\n'));
    EXPECT_EQ(lines.value(0), QStringLiteral("file      ") + path);
    EXPECT_EQ(lines.value(1), QStringLiteral("read as   name \"Demo\", major 1, minor 0, build 1"));
    EXPECT_EQ(lines.value(2), QStringLiteral("pattern   Demo.1.0.*.dll finds it"));
    EXPECT_EQ(lines.value(3), QStringLiteral("taken     this file"));
    EXPECT_EQ(lines.filter(QStringLiteral("AbsentLibrary")).size(), 2);
    EXPECT_EQ(lines.filter(QStringLiteral("-> missing")).size(), 1);
    EXPECT_EQ(lines.filter(QStringLiteral("reason    missing-library: ")).size(), 1);
}

TEST_F(KvsyncPluginsWhy, TellsWhoNeedsTheMissingLibrary)
{
    const QString path = add("MissingLibrary");
    int missing = 0;
    for (const QJsonValue &each : folders.why(path).value(QStringLiteral("libraries")).toArray()) {
        const QJsonObject library = each.toObject();
        if (!library.value(QStringLiteral("missing")).toBool())
            continue;
        ++missing;
        EXPECT_NE(textAt(library, "name").find("AbsentLibrary"), std::string::npos);
        EXPECT_EQ(QFileInfo(textAt(library, "neededBy").c_str()), QFileInfo(path));
        EXPECT_TRUE(library.value(QStringLiteral("path")).isNull());
    }
    EXPECT_EQ(missing, 1);
}

TEST_F(KvsyncPluginsWhy, TellsPeopleThatNoFileIsTakenForAName)
{
    const QString path = add("Recorder", "My.Demo.1.0.3.dll");
    const QStringList lines = folders.run({QStringLiteral("plugins"), QStringLiteral("why"), path})
                                  .output.split(QLatin1Char('\n'));
    EXPECT_EQ(lines.value(2), QStringLiteral("pattern   My.0.1.*.dll does not find it as a file"));
    EXPECT_EQ(lines.value(3), QStringLiteral("taken     no file"));
}

TEST_F(KvsyncPluginsWhy, NameIsLookedForAmongDevicePluginsToo)
{
    const QString path = folders.deviceFile(QStringLiteral("Camera.1.0.1.dll"));
    copyFile(deviceFixture(QStringLiteral("Scripted")), path);
    const QJsonObject file = folders.why(QStringLiteral("Camera.1.0.1.dll"));
    EXPECT_EQ(QFileInfo(textAt(file, "path").c_str()), QFileInfo(path));
    EXPECT_EQ(textAt(file, "kind"), "device");
    EXPECT_EQ(codes(file), "");
}

TEST_F(KvsyncPluginsWhy, PathIntoAFolderCountsAsInThatFolder)
{
    const QString path = folders.logicFile(QStringLiteral("Camera.1.0.1.dll"));
    copyFile(deviceFixture(QStringLiteral("Scripted")), path);
    const QJsonObject file = folders.why(path);
    EXPECT_EQ(textAt(file, "kind"), "device");
    EXPECT_EQ(warnings(file), "wrong-iid: its metadata name Veltrano.Device.IFactory.2.0.200324, "
                              "not Veltrano.CommandInterface_v1.0.0.20200424");
}

TEST_F(KvsyncPluginsWhy, FileElsewhereMayBeOfEitherKind)
{
    for (const QString &path :
         {commandFixture(QStringLiteral("Recorder")), deviceFixture(QStringLiteral("Scripted"))})
        EXPECT_EQ(warnings(folders.why(path)), "") << path.toStdString();
    EXPECT_EQ(warnings(folders.why(commandFixture(QStringLiteral("ForeignRoot")))),
              "wrong-iid: its metadata name KvSyncTest.ForeignRoot, not "
              "Veltrano.CommandInterface_v1.0.0.20200424 or "
              "Veltrano.Device.IFactory.2.0.200324");
}

TEST_F(KvsyncPluginsWhy, TellsTheLoadThatFailedOnlyIfAsked)
{
    const QString path = add("NullRoot");
    EXPECT_EQ(codes(folders.why(path)), "");
    EXPECT_EQ(codes(loaded(path)), "load-failed");
}

TEST_F(KvsyncPluginsWhy, RunsThePluginsCodeOnlyIfAskedAndTellsWhatItThrew)
{
    const QString path = add("ConstructorThrows");
    EXPECT_EQ(codes(folders.why(path)), "");
    const QJsonObject file = loaded(path);
    EXPECT_EQ(codes(file), "load-failed");
    EXPECT_EQ(firstText(file), "its code threw: the scanner is switched off");
}

TEST_F(KvsyncPluginsWhy, TellsThatAnythingElseWasThrown)
{
    const QJsonObject file = loaded(add("ThrowsNumber"));
    EXPECT_EQ(codes(file), "load-failed");
    EXPECT_EQ(firstText(file), "its code threw");
}

TEST_F(KvsyncPluginsWhy, WordsOutsideAsciiStayAsTheyWereThrown)
{
    EXPECT_EQ(firstText(loaded(add("ThrowsForeignWords"))),
              "its code threw: kein Ger\u00e4t, \u626b\u63cf");
}

TEST_F(KvsyncPluginsWhy, NamesOutsideAsciiAreShownAsTheyAre)
{
    const QJsonObject found = folders.why(add("Recorder", "\u626b\u63cf.1.0.1.dll"));
    EXPECT_EQ(textAt(found, "name"), "\u626b\u63cf");
    EXPECT_EQ(textAt(found, "pattern"), "\u626b\u63cf.1.0.*.dll");
    EXPECT_EQ(codes(found), "");
    const QString path = add("Recorder", "D\u00e9mo.1.0.1.dll");
    const QString output =
        folders.run({QStringLiteral("plugins"), QStringLiteral("why"), path}).output;
    EXPECT_TRUE(output.contains(
        QStringLiteral("pattern   D\u00e9mo.1.0.*.dll does not find it as a file\n")))
        << output.toStdString();
}

TEST_F(KvsyncPluginsWhy, TellsTheLoadersOwnWordsAfterTheMissingLibrary)
{
    const QJsonObject file = loaded(add("MissingLibrary"));
    EXPECT_EQ(codes(file), "missing-library load-failed");
    const QJsonObject failure = file.value(QStringLiteral("reasons")).toArray().at(1).toObject();
    EXPECT_EQ(textAt(failure, "text").find("Cannot load library "), 0u);
}

TEST_F(KvsyncPluginsWhy, LoadedRootObjectHasTheLastWordOverTheMetadata)
{
    const QString path = add("OtherMetadata");
    EXPECT_EQ(textAt(folders.why(path), "kind"), "");
    const QJsonObject file = loaded(path);
    EXPECT_EQ(codes(file), "");
    EXPECT_EQ(textAt(file, "kind"), "command");
    EXPECT_EQ(warnings(file), "wrong-iid: its metadata name KvSyncTest.SomethingElse, not "
                              "Veltrano.CommandInterface_v1.0.0.20200424");
}

TEST_F(KvsyncPluginsWhy, LoadedRootObjectOfAnotherKindIsWrong)
{
    const QString path = add("ForeignRoot");
    EXPECT_EQ(codes(folders.why(path)), "");
    const QJsonObject file = loaded(path);
    EXPECT_EQ(codes(file), "missing-interface");
    EXPECT_EQ(firstText(file),
              "its root object does not answer to Veltrano.CommandInterface_v1.0.0.20200424");
}

TEST_F(KvsyncPluginsWhy, LoadedRootObjectForTheOtherFolderIsWrong)
{
    const QString path = folders.logicFile(QStringLiteral("Camera.1.0.1.dll"));
    copyFile(deviceFixture(QStringLiteral("NullDevice")), path);
    EXPECT_EQ(codes(loaded(path)), "missing-interface");
}

TEST_F(KvsyncPluginsWhy, FileThatIsNotThereFails)
{
    expectFailure({QStringLiteral("plugins"), QStringLiteral("why"), QStringLiteral("None.dll")},
                  QStringLiteral("kvsync: PathNotExist (0x01000001): There is no file None.dll"));
}
