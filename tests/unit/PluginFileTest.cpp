#include "PluginFile.h"

#include <gtest/gtest.h>

namespace {

using namespace KvSyncCore;

struct KeyRow
{
    QString name;
    QVersionNumber version;
    QString key;
};

class EachKey : public ::testing::TestWithParam<KeyRow>
{
};

TEST_P(EachKey, IsMadeOfNameMajorAndMinor)
{
    const auto &[name, version, key] = GetParam();
    EXPECT_EQ(PluginFile::key(name, version).toStdString(), key.toStdString());
}

TEST_P(EachKey, BeginsThePatternOfItsBuilds)
{
    const auto &[name, version, key] = GetParam();
    EXPECT_EQ(PluginFile::buildPattern(name, version), key + ".*.dll");
}

const KeyRow segments[] = {
    {"Demo", {}, "Demo.0.0"},       {"Demo", {2}, "Demo.2.0"},
    {"Demo", {2, 1}, "Demo.2.1"},   {"Demo", {2, 1, 9}, "Demo.2.1"},
    {"Demo", {-3, 4}, "Demo.-3.4"}, {"Demo", {2147483647, 0}, "Demo.2147483647.0"},
};
INSTANTIATE_TEST_SUITE_P(Segments, EachKey, ::testing::ValuesIn(segments));

// The name is cut down to Latin-1 and those bytes are read as UTF-8.
const KeyRow names[] = {
    {"", {1}, ".1.0"},
    {"My Demo", {1}, "My Demo.1.0"},
    {"my.Demo", {1}, "my.Demo.1.0"},
    {"100%s", {1}, "100%s.1.0"},
    {"De?o*[x]", {1}, "De?o*[x].1.0"},
    {QStringLiteral("D\u00e9mo"), {1}, QStringLiteral("D\ufffdmo.1.0")},
    {QStringLiteral("\u00e9\u00e0"), {1}, QStringLiteral("\ufffd\ufffd.1.0")},
    {QStringLiteral("\u00c3\u00a9"), {1}, QStringLiteral("\u00e9.1.0")},
    {QStringLiteral("\u0414emo"), {1}, "?emo.1.0"},
    {QStringLiteral("\u6f22\u5b57"), {1}, "??.1.0"},
    {QString::fromUtf16(u"De\0mo", 5), {1}, "De.1.0"},
};
INSTANTIATE_TEST_SUITE_P(Names, EachKey, ::testing::ValuesIn(names));

TEST(PluginFile, PatternOfEveryVersionLeavesMajorMinorAndBuildOpen)
{
    EXPECT_EQ(PluginFile::versionPattern("Demo"), "Demo.*.*.*.dll");
    EXPECT_EQ(PluginFile::versionPattern(QStringLiteral("D\u00e9mo")),
              QStringLiteral("D\ufffdmo.*.*.*.dll"));
}

struct VersionRow
{
    const char *fileName;
    QVersionNumber version;
};

class EachFileName : public ::testing::TestWithParam<VersionRow>
{
};

TEST_P(EachFileName, TellsItsVersionByThePartsAfterTheFirst)
{
    EXPECT_EQ(PluginFile::versionOf(GetParam().fileName), GetParam().version);
}

const VersionRow fileNames[] = {
    {"Demo.1.2.12.dll", {1, 2, 12}},
    {"Demo.1.2.012.dll", {1, 2, 12}},
    {"Demo.one.2.beta.dll", {0, 2, 0}},
    {"Demo.1.2.0x10.dll", {1, 2, 0}},
    {"Demo.1.2.-3.dll", {1, 2, -3}},
    {"Demo.1.2.2147483648.dll", {1, 2, 0}},
    {"Demo..2..dll", {0, 2, 0}},
    {"Demo", {0, 0, 0}},
    {"", {0, 0, 0}},
    // A dot in the name shifts the parts.
    {"my.Demo.1.2.12.dll", {0, 1, 2}},
};
INSTANTIATE_TEST_SUITE_P(FileNames, EachFileName, ::testing::ValuesIn(fileNames));

struct HighestRow
{
    QStringList listed;
    QString chosen;
};

class HighestVersion : public ::testing::TestWithParam<HighestRow>
{
};

TEST_P(HighestVersion, IsTheFirstOfTheListByEachNumberInTurn)
{
    EXPECT_EQ(PluginFile::highestVersion(GetParam().listed), GetParam().chosen);
}

const HighestRow versions[] = {
    {{}, ""},
    {{"D.1.9.9.dll", "D.2.0.0.dll"}, "D.2.0.0.dll"},
    {{"D.1.9.1.dll", "D.1.10.0.dll"}, "D.1.10.0.dll"},
    {{"D.1.0.9.dll", "D.1.0.10.dll"}, "D.1.0.10.dll"},
    {{"D.1.0.5.dll", "D.01.0.05.dll"}, "D.1.0.5.dll"},
};
INSTANTIATE_TEST_SUITE_P(PluginFile, HighestVersion, ::testing::ValuesIn(versions));

} // namespace
