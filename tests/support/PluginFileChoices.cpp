#include "support/PluginFileChoices.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <gtest/gtest.h>

namespace KvSyncTest {

namespace {

const QString part = "Part";
const QVersionNumber version{1, 0};
const QString partKey = "Part.1.0";

const PluginFileChoice builds[] = {
    {"HighestBuildAsANumber",
     part,
     version,
     partKey,
     {"Part.1.0.3.dll", "Part.1.0.10.dll", "Part.1.0.9.dll"},
     "Part.1.0.10.dll"},
    {"FirstListedOfEqualBuilds",
     part,
     version,
     partKey,
     {"Part.1.0.07.dll", "Part.1.0.7.dll", "Part.1.0.007.dll"},
     "Part.1.0.007.dll"},
    {"LettersCountAsZero",
     part,
     version,
     partKey,
     {"Part.1.0.1.dll", "Part.1.0.beta.dll"},
     "Part.1.0.1.dll"},
    {"FirstListedOfLetters",
     part,
     version,
     partKey,
     {"Part.1.0.beta.dll", "Part.1.0.alpha.dll"},
     "Part.1.0.alpha.dll"},
    {"NegativeBuildIsBelowZero",
     part,
     version,
     partKey,
     {"Part.1.0.-1.dll", "Part.1.0.x.dll"},
     "Part.1.0.x.dll"},
    // 4294967396 is 100 if cut to 32 bits.
    {"BeyondThirtyTwoBitsCountsAsZero",
     part,
     version,
     partKey,
     {"Part.1.0.1.dll", "Part.1.0.2147483648.dll", "Part.1.0.4294967396.dll",
      "Part.1.0.9223372036854775807.dll", "Part.1.0.9223372036854775808.dll"},
     "Part.1.0.1.dll"},
    {"LargestInt",
     part,
     version,
     partKey,
     {"Part.1.0.2147483646.dll", "Part.1.0.2147483647.dll", "Part.1.0.2147483648.dll"},
     "Part.1.0.2147483647.dll"},
    {"EmptyBuildCountsAsZero",
     part,
     version,
     partKey,
     {"Part.1.0..dll", "Part.1.0.1.dll"},
     "Part.1.0.1.dll"},
    {"FirstOfSeveralParts",
     part,
     version,
     partKey,
     {"Part.1.0.4.99.dll", "Part.1.0.5.1.dll"},
     "Part.1.0.5.1.dll"},
    {"BuildAlone",
     "P*",
     version,
     "P*.1.0",
     {"Part.1.0.5.dll", "P.9.9.1.0.1.dll"},
     "Part.1.0.5.dll"},
};

const PluginFileChoice versions[] = {
    {"OneSegmentMeansMinorZero",
     part,
     QVersionNumber(1),
     partKey,
     {"Part.1.0.4.dll", "Part.1.1.9.dll"},
     "Part.1.0.4.dll"},
    {"OneZero", part, QVersionNumber(0), "Part.0.0", {"Part.0.0.1.dll"}, "Part.0.0.1.dll"},
    {"ThirdSegmentDoesNotCount", part, {1, 0, 7}, partKey, {"Part.1.0.4.dll"}, "Part.1.0.4.dll"},
    {"NoneOfThatVersion",
     part,
     version,
     partKey,
     {"Part.1.1.1.dll", "Part.2.0.1.dll", "Part.1.0.dll"},
     ""},
};

// A name is converted to Latin-1, and those bytes are read as UTF-8.
const PluginFileChoice names[] = {
    {"WholeNameAndSuffix",
     part,
     version,
     partKey,
     {"Part.1.0.1.dll", "Part2.1.0.9.dll", "MyPart.1.0.9.dll", "Part.1.0.9.dll.old",
      "Part.1.0.9.so"},
     "Part.1.0.1.dll"},
    {"AnyCase", "part", version, "part.1.0", {"PART.1.0.1.DLL"}, "PART.1.0.1.DLL"},
    {"Blanks", "My Part", version, "My Part.1.0", {"My Part.1.0.1.dll"}, "My Part.1.0.1.dll"},
    {"PercentSigns", "50%s%n", version, "50%s%n.1.0", {"50%s%n.1.0.1.dll"}, "50%s%n.1.0.1.dll"},
    {"Wildcards", "P?r*", version, "P?r*.1.0", {"Part.1.0.1.dll"}, "Part.1.0.1.dll"},
    {"SetOfLetters", "P[ao]rt", version, "P[ao]rt.1.0", {"Part.1.0.1.dll"}, "Part.1.0.1.dll"},
    {"LetterOfLatin1BecomesTheReplacementCharacter",
     QStringLiteral("P\u00e4rt"),
     version,
     QStringLiteral("P\ufffdrt.1.0"),
     {QStringLiteral("P\ufffdrt.1.0.1.dll")},
     QStringLiteral("P\ufffdrt.1.0.1.dll")},
    {"LetterOfLatin1DoesNotFindItself",
     QStringLiteral("P\u00e4rt"),
     version,
     QStringLiteral("P\ufffdrt.1.0"),
     {QStringLiteral("P\u00e4rt.1.0.1.dll")},
     ""},
    {"LetterBeyondLatin1FindsItself",
     QStringLiteral("\u626bart"),
     version,
     "?art.1.0",
     {QStringLiteral("\u626bart.1.0.1.dll")},
     QStringLiteral("\u626bart.1.0.1.dll")},
    {"LetterBeyondLatin1FindsAnyOther",
     QStringLiteral("\u626bart"),
     version,
     "?art.1.0",
     {"Xart.1.0.1.dll"},
     "Xart.1.0.1.dll"},
    // The dot shifts the numbers: the minor versions are compared, and they are equal.
    {"DottedNameTakesTheFirstListed",
     "my.Part",
     version,
     "my.Part.1.0",
     {"my.Part.1.0.1.dll", "my.Part.1.0.2.dll"},
     "my.Part.1.0.1.dll"},
    {"NoneInAnotherFolder",
     "below/Part",
     version,
     "below/Part.1.0",
     {"below/", "below/Part.1.0.1.dll"},
     ""},
};

const PluginFileChoice entries[] = {
    {"FolderIsNoFile", part, version, partKey, {"Part.1.0.9.dll/"}, ""},
    {"FolderDoesNotShadowAFile",
     part,
     version,
     partKey,
     {"Part.1.0.9.dll/", "Part.1.0.3.dll"},
     "Part.1.0.3.dll"},
#ifdef Q_OS_UNIX
    {"HiddenFileIsNotFound", ".Part", version, ".Part.1.0", {".Part.1.0.1.dll"}, ""},
    {"LinkCountsUnderItsOwnName",
     part,
     version,
     partKey,
     {"Part.1.0.1.dll -> elsewhere.bin"},
     "Part.1.0.1.dll"},
    {"LinkToNothingIsNoFile", part, version, partKey, {"Part.1.0.1.dll -> gone.bin"}, ""},
    {"LinkToAFolderIsNoFile", part, version, partKey, {"below/", "Part.1.0.1.dll -> below"}, ""},
#endif
};

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return file.readAll();
}

void write(const QString &path, const QByteArray &content)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly)) << path.toStdString();
    EXPECT_EQ(file.write(content), content.size());
}

} // namespace

std::ostream &operator<<(std::ostream &stream, const PluginFileChoice &choice)
{
    return stream << choice.name;
}

std::vector<PluginFileChoice> pluginFileChoices()
{
    std::vector<PluginFileChoice> all(std::begin(builds), std::end(builds));
    all.insert(all.end(), std::begin(versions), std::end(versions));
    all.insert(all.end(), std::begin(names), std::end(names));
    all.insert(all.end(), std::begin(entries), std::end(entries));
    return all;
}

void provideFiles(const PluginFileChoice &choice, const QString &folder, const QString &modulePath)
{
    const QString below = folder + '/';
    for (const QString &entry : choice.files) {
        const QStringList link = entry.split(" -> ");
        if (link.size() == 2) {
            EXPECT_TRUE(QFile::link(below + link[1], below + link[0]));
        }
        if (entry.endsWith('/')) {
            EXPECT_TRUE(QDir(folder).mkpath(entry));
        } else if (link[0] == choice.taken) {
            write(below + choice.taken, contentOf(modulePath)); // through a link, to what it names
        } else if (link.size() == 1) {
            write(below + entry, "not a module");
        }
    }
}

} // namespace KvSyncTest
