#include "PluginFolders.h"

#include "support/ApplicationFolder.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QProcess>

#if !defined(_WIN32)
#include <sys/stat.h>
#endif

using namespace KvSyncTest;

namespace {

#if defined(_WIN32)
const QString programSuffix = QStringLiteral(".exe");
const QString librariesVariable = QStringLiteral("PATH");
#else
const QString programSuffix;
const QString librariesVariable = QStringLiteral("LD_LIBRARY_PATH");
#endif

class KvsyncPlugins : public ::testing::Test
{
protected:
    static QString recorder() { return commandFixture(QStringLiteral("Recorder")); }

    void addRecorder(const char *fileName) { copyFile(recorder(), logic(fileName)); }
    QString logic(const char *fileName) const
    {
        return folders.logicFile(QString::fromUtf8(fileName));
    }
    QJsonObject listed(const char *fileName) const
    {
        return folders.listed(QString::fromUtf8(fileName));
    }
    bool selected(const char *fileName) const
    {
        return listed(fileName).value(QStringLiteral("selected")).toBool();
    }

    PluginFolders folders;
};

} // namespace

TEST_F(KvsyncPlugins, ListsAPluginThatLoads)
{
    addRecorder("Demo.1.2.12.dll");
    const QJsonObject file = listed("Demo.1.2.12.dll");
    EXPECT_EQ(codes(file), "");
    EXPECT_TRUE(file.value(QStringLiteral("loads")).toBool());
    EXPECT_TRUE(file.value(QStringLiteral("selected")).toBool());
    EXPECT_EQ(file.value(QStringLiteral("name")).toString().toStdString(), "Demo");
    EXPECT_EQ(file.value(QStringLiteral("version")).toString().toStdString(), "1.2");
    EXPECT_EQ(file.value(QStringLiteral("build")).toInt(), 12);
    EXPECT_EQ(file.value(QStringLiteral("kind")).toString().toStdString(), "command");
    EXPECT_EQ(file.value(QStringLiteral("iid")).toString().toStdString(),
              "Veltrano.CommandInterface_v1.0.0.20200424");
}

TEST_F(KvsyncPlugins, ListsBothFoldersForPeople)
{
    addRecorder("Demo.1.0.1.dll");
    const Outcome outcome = folders.run({QStringLiteral("plugins")});
    EXPECT_EQ(outcome.exitCode, 0);
    const QString command = QFileInfo(logic("x")).path();
    const QString device = QFileInfo(folders.deviceFile(QStringLiteral("x"))).path();
    EXPECT_EQ(outcome.output.toStdString(),
              "command plug-ins, " + command.toStdString() +
                  "\n  Demo.1.0.1.dll  Demo 1.0 build 1  command  loads\ndevice plug-ins, " +
                  device.toStdString() + "\n  no files\n");
}

// A kvsync of its own, beside which nothing stands.
TEST_F(KvsyncPlugins, SaysWhenAFolderIsMissing)
{
    const QFileInfo original(kvsyncProgram() + programSuffix);
    const QTemporaryDir alone;
    const QString copy = alone.filePath(original.fileName());
    copyFile(original.filePath(), copy);
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(librariesVariable, original.path() + QDir::listSeparator() +
                                              environment.value(librariesVariable));
    process.setProcessEnvironment(environment);
    process.start(copy, {QStringLiteral("plugins"), QStringLiteral("--json")});
    ASSERT_TRUE(process.waitForFinished());
    const QJsonArray list = QJsonDocument::fromJson(process.readAllStandardOutput())
                                .object()
                                .value(QStringLiteral("folders"))
                                .toArray();
    ASSERT_EQ(list.size(), 2) << process.readAllStandardError().toStdString();
    for (const QJsonValue &each : list)
        EXPECT_EQ(each.toObject().value(QStringLiteral("exists")), QJsonValue(false));
}

TEST_F(KvsyncPlugins, HighestBuildShadowsTheOthersAsANumber)
{
    addRecorder("Demo.1.0.9.dll");
    addRecorder("Demo.1.0.10.dll");
    EXPECT_EQ(codes(listed("Demo.1.0.9.dll")), "shadowed-by-higher-build");
    EXPECT_EQ(firstText(listed("Demo.1.0.9.dll")), "Demo.1.0.10.dll has build 10, this file 9");
    EXPECT_EQ(codes(listed("Demo.1.0.10.dll")), "");
}

TEST_F(KvsyncPlugins, HighestBuildIsTakenEvenIfItIsNoPlugin)
{
    addRecorder("Demo.1.0.1.dll");
    writeFile(logic("Demo.1.0.2.dll"), "text");
    EXPECT_EQ(codes(listed("Demo.1.0.1.dll")), "shadowed-by-higher-build");
    EXPECT_TRUE(selected("Demo.1.0.2.dll"));
    EXPECT_EQ(codes(listed("Demo.1.0.2.dll")), "not-a-plugin");
}

TEST_F(KvsyncPlugins, FirstOfEqualBuildsIsTaken)
{
    addRecorder("Demo.1.0.07.dll");
    addRecorder("Demo.1.0.7.dll");
    EXPECT_TRUE(selected("Demo.1.0.07.dll"));
    EXPECT_EQ(firstText(listed("Demo.1.0.7.dll")),
              "Demo.1.0.07.dll has build 7, too, and is listed before this file");
}

TEST_F(KvsyncPlugins, BuildsThatAreNoNumbersCountAsZero)
{
    addRecorder("Demo.1.0.4294967296.dll");
    addRecorder("Demo.1.0.beta.dll");
    addRecorder("Demo.1.0.1.dll");
    for (const char *const name : {"Demo.1.0.4294967296.dll", "Demo.1.0.beta.dll"}) {
        EXPECT_EQ(listed(name).value(QStringLiteral("build")).toInt(-1), 0);
        EXPECT_EQ(codes(listed(name)), "shadowed-by-higher-build");
    }
    EXPECT_TRUE(selected("Demo.1.0.1.dll"));
}

TEST_F(KvsyncPlugins, SuffixIsFoundInAnyCase)
{
    addRecorder("Demo.1.0.1.DLL");
    EXPECT_EQ(codes(listed("Demo.1.0.1.DLL")), "");
}

struct NameRow
{
    const char *name;
    const char *fileName;
    const char *text;
};

void PrintTo(const NameRow &row, std::ostream *stream)
{
    *stream << row.name;
}

class KvsyncPluginsName : public KvsyncPlugins, public ::testing::WithParamInterface<NameRow>
{
};

TEST_P(KvsyncPluginsName, IsNotFound)
{
    addRecorder(GetParam().fileName);
    const QJsonObject file = listed(GetParam().fileName);
    EXPECT_EQ(codes(file), "name-pattern");
    EXPECT_EQ(firstText(file), GetParam().text);
    EXPECT_FALSE(file.value(QStringLiteral("selected")).toBool(true));
}

INSTANTIATE_TEST_SUITE_P(
    Names, KvsyncPluginsName,
    ::testing::Values(
        NameRow{"DottedName", "My.Demo.1.0.3.dll",
                "the name is read as My | Demo | 1 | 0, and My.0.1.*.dll does not find it"},
        NameRow{"NoBuild", "Demo.1.0.dll",
                "the name is read as Demo | 1 | 0 | dll, and Demo.1.0.*.dll does not find it"},
        NameRow{"LeadingZero", "Demo.01.0.1.dll",
                "the name is read as Demo | 01 | 0 | 1, and Demo.1.0.*.dll does not find it"},
        NameRow{
            "LetterThatIsNotAscii", "D\u00e9mo.1.0.1.dll",
            "the core's search spoils letters of D\u00e9mo that are not ASCII, and does not find "
            "it"},
        NameRow{"SharedObject", "libDemo.so",
                "the name is read as libDemo | so, and libDemo.0.0.*.dll does not find it"}),
    [](const auto &row) { return std::string(row.param.name); });

TEST_F(KvsyncPlugins, FolderNamedLikeAPluginIsNone)
{
    ASSERT_TRUE(QDir().mkdir(logic("Demo.1.0.9.dll")));
    addRecorder("Demo.1.0.1.dll");
    EXPECT_EQ(codes(listed("Demo.1.0.9.dll")), "not-a-plugin");
    EXPECT_EQ(firstText(listed("Demo.1.0.9.dll")), "it is a folder");
    EXPECT_EQ(codes(listed("Demo.1.0.1.dll")), "");
}

#if !defined(_WIN32)
TEST_F(KvsyncPlugins, PipeIsNoPluginAndNobodyWaitsForItsWriter)
{
    ASSERT_EQ(mkfifo(QFile::encodeName(logic("Demo.1.0.1.dll")).constData(), 0600), 0);
    EXPECT_EQ(codes(listed("Demo.1.0.1.dll")), "not-a-plugin");
    EXPECT_EQ(firstText(listed("Demo.1.0.1.dll")), "it is no regular file");
}

TEST_F(KvsyncPlugins, HiddenFileIsNotFound)
{
    addRecorder(".1.0.1.dll");
    EXPECT_EQ(codes(listed(".1.0.1.dll")), "name-pattern");
    EXPECT_EQ(firstText(listed(".1.0.1.dll")),
              "it is hidden, and .1.0.*.dll finds no hidden files");
    EXPECT_FALSE(selected(".1.0.1.dll"));
}

TEST_F(KvsyncPlugins, LinkCountsAsItsTarget)
{
    ASSERT_TRUE(QFile::link(recorder(), logic("Demo.1.0.1.dll")));
    EXPECT_EQ(codes(listed("Demo.1.0.1.dll")), "");
}

TEST_F(KvsyncPlugins, BrokenLinkIsNoPlugin)
{
    ASSERT_TRUE(QFile::link(logic("gone"), logic("Demo.1.0.1.dll")));
    EXPECT_EQ(codes(listed("Demo.1.0.1.dll")), "not-a-plugin");
    EXPECT_EQ(firstText(listed("Demo.1.0.1.dll")),
              "it is a link to " + logic("gone").toStdString() + ", which does not exist");
    EXPECT_EQ(codes(folders.why(logic("Demo.1.0.1.dll"))), "not-a-plugin");
}
#endif

TEST_F(KvsyncPlugins, EmptyAndTextFilesAreNone)
{
    writeFile(logic("Demo.1.0.1.dll"), "");
    writeFile(logic("Text.1.0.1.dll"), "not a module");
    EXPECT_EQ(firstText(listed("Demo.1.0.1.dll")), "it is empty");
    EXPECT_EQ(firstText(listed("Text.1.0.1.dll")), "it is neither ELF nor PE");
    EXPECT_EQ(codes(listed("Text.1.0.1.dll")), "not-a-plugin");
}

TEST_F(KvsyncPlugins, DamagedLibraryIsNone)
{
    writeFile(logic("Demo.1.0.1.dll"), contentOf(recorder()).left(60));
    EXPECT_EQ(codes(listed("Demo.1.0.1.dll")), "not-a-plugin");
    EXPECT_EQ(firstText(listed("Demo.1.0.1.dll")),
              "it is damaged, or no shared library: it is cut off, or points outside itself");
}

TEST_F(KvsyncPlugins, LibraryWithoutMetadataIsNone)
{
    QByteArray module = contentOf(recorder());
    module.replace("QTMETADATA", "XXMETADATA");
    writeFile(logic("Demo.1.0.1.dll"), module);
    EXPECT_EQ(codes(listed("Demo.1.0.1.dll")), "not-a-plugin");
    EXPECT_EQ(firstText(listed("Demo.1.0.1.dll")),
              "it is a library without metadata of a Qt plug-in");
}

TEST_F(KvsyncPlugins, QtThatDoesNotFitIsToldFromTheMetadata)
{
    QByteArray module = contentOf(recorder());
    // Behind the mark: the layout's version, then Qt's major and minor number.
    const int mark = module.indexOf(QByteArray("QTMETADATA !\0\5\17", 15));
    ASSERT_GE(mark, 0);
    module[mark + 14] = 99;
    writeFile(logic("Demo.1.0.1.dll"), module);
    EXPECT_EQ(codes(listed("Demo.1.0.1.dll")), "built-with-incompatible-qt");
    EXPECT_NE(firstText(listed("Demo.1.0.1.dll")).find("(5.99.0)"), std::string::npos);
}

TEST_F(KvsyncPlugins, OlderIdentifierInTheMetadataIsAWarning)
{
    const QString name = QStringLiteral("Old.1.0.1.dll");
    copyFile(deviceFixture(QStringLiteral("OlderFactory")), folders.deviceFile(name));
    const QJsonObject file = folders.listed(name);
    EXPECT_EQ(codes(file), "");
    EXPECT_TRUE(file.value(QStringLiteral("loads")).toBool());
    EXPECT_EQ(warnings(file), "wrong-iid: its metadata name Veltrano.Device.IFactory.1.0.190315, "
                              "not Veltrano.Device.IFactory.2.0.200324");
    EXPECT_TRUE(file.value(QStringLiteral("kind")).isNull());
}

TEST_F(KvsyncPlugins, CommandPluginAmongDevicePluginsIsAWarning)
{
    const QString name = QStringLiteral("Demo.1.0.1.dll");
    copyFile(recorder(), folders.deviceFile(name));
    EXPECT_EQ(codes(folders.listed(name)), "");
    EXPECT_EQ(warnings(folders.listed(name)),
              "wrong-iid: its metadata name Veltrano.CommandInterface_v1.0.0.20200424, not "
              "Veltrano.Device.IFactory.2.0.200324");
    EXPECT_EQ(folders.listed(name).value(QStringLiteral("kind")).toString().toStdString(),
              "command");
}

TEST_F(KvsyncPlugins, NamesTheLibraryThatIsMissing)
{
    copyFile(commandFixture(QStringLiteral("MissingLibrary")), logic("Demo.1.0.1.dll"));
    const QJsonObject file = listed("Demo.1.0.1.dll");
    EXPECT_EQ(codes(file), "missing-library");
#if defined(_WIN32)
    EXPECT_EQ(firstText(file), "libAbsentLibrary.dll is missing; Demo.1.0.1.dll needs it");
#else
    EXPECT_EQ(firstText(file), "libAbsentLibrary.so is missing; Demo.1.0.1.dll needs it");
#endif
}

TEST_F(KvsyncPlugins, TellsPeopleOfAWarningBehindTheResult)
{
    copyFile(commandFixture(QStringLiteral("OtherMetadata")), logic("Demo.1.0.1.dll"));
    const QString output = folders.run({QStringLiteral("plugins")}).output;
    EXPECT_TRUE(output.contains(QStringLiteral(
        "  -  loads, but wrong-iid: its metadata name KvSyncTest.SomethingElse, not ")))
        << output.toStdString();
}

TEST_F(KvsyncPlugins, StrictFailsIfSomethingThereDoesNotLoad)
{
    addRecorder("Demo.1.0.1.dll");
    addRecorder("Demo.1.0.2.dll");
    writeFile(folders.deviceFile(QStringLiteral("Text.1.0.1.dll")), "not a module");
    const Outcome outcome = folders.run({QStringLiteral("plugins"), QStringLiteral("--strict")});
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_EQ(outcome.output.count(QLatin1Char('\n')), 5) << outcome.output.toStdString();
    EXPECT_EQ(outcome.errors.toStdString(),
              "kvsync: PluginLoadFailed (0x01000002): 2 of 3 files do not load\n");
}

TEST_F(KvsyncPlugins, StrictIsContentWithWarnings)
{
    copyFile(commandFixture(QStringLiteral("OtherMetadata")), logic("Demo.1.0.1.dll"));
    const Outcome outcome = folders.run({QStringLiteral("plugins"), QStringLiteral("--strict")});
    EXPECT_EQ(outcome.exitCode, 0) << outcome.errors.toStdString();
}

TEST_F(KvsyncPlugins, StrictFindsWhatOnlyLoadingShows)
{
    addRecorder("Demo.1.0.1.dll");
    copyFile(commandFixture(QStringLiteral("ConstructorThrows")), logic("Dark.1.0.1.dll"));
    const QStringList words{QStringLiteral("plugins"), QStringLiteral("--strict")};
    EXPECT_EQ(folders.run(words).exitCode, 0);
    const Outcome outcome = folders.run(words + loadPatiently());
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_TRUE(outcome.output.contains(
        QStringLiteral("load-failed: its code threw: the scanner is switched off")))
        << outcome.output.toStdString();
}

TEST_F(KvsyncPlugins, LibraryForAnotherSystemIsWrong)
{
#if defined(_WIN32)
    // Of a narrow ELF file the header says enough.
    writeFile(logic("Demo.1.0.1.dll"), QByteArray("\177ELF\1\1\1\0\0\0\0\0\0\0\0\0\3\0\3\0", 20));
    EXPECT_EQ(codes(listed("Demo.1.0.1.dll")), "wrong-architecture");
    EXPECT_EQ(firstText(listed("Demo.1.0.1.dll")),
              "it is made for another system or processor: ELF, 32 bits, machine 3");
#else
    QByteArray module = contentOf(recorder());
    module[18] = char(183);
    module[19] = 0;
    writeFile(logic("Demo.1.0.1.dll"), module);
    EXPECT_EQ(codes(listed("Demo.1.0.1.dll")), "wrong-architecture");
    EXPECT_EQ(firstText(listed("Demo.1.0.1.dll")),
              "it is made for another system or processor: ELF, 64 bits, machine 183");
#endif
}

TEST_F(KvsyncPlugins, SurvivesModulesThatAreCutOffOrChanged)
{
    const QByteArray whole = contentOf(recorder());
    int files = 0;
    for (int size = 1; size < whole.size(); size += size < 200 ? 7 : whole.size() / 12)
        writeFile(logic(qPrintable(QStringLiteral("Cut.1.0.%1.dll").arg(++files))),
                  whole.left(size));
    for (int at = 4; at < 64; at += 2) {
        QByteArray changed = whole;
        changed[at] = char(0xff);
        changed[at + 1] = char(0xff);
        writeFile(logic(qPrintable(QStringLiteral("Changed.1.0.%1.dll").arg(++files))), changed);
    }
    const Outcome outcome = folders.run({QStringLiteral("plugins"), QStringLiteral("--json")});
    EXPECT_EQ(outcome.exitCode, 0) << outcome.errors.toStdString();
    const QJsonArray folder = outcome.json().value(QStringLiteral("folders")).toArray();
    EXPECT_EQ(folder.at(0).toObject().value(QStringLiteral("files")).toArray().size(), files);
}
