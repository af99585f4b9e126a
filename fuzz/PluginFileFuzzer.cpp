// Any plug-in name, version and file names: keys and patterns keep their shape, and choosing a file
// neither loses nor invents one.

#include "PluginFile.h"
#include "Require.h"

#include <fuzzer/FuzzedDataProvider.h>

namespace {

using namespace KvSyncCore;

QString anyText(FuzzedDataProvider &data)
{
    return QString::fromStdString(data.ConsumeRandomLengthString(60));
}

int buildOf(const QString &fileName)
{
    return PluginFile::versionOf(fileName).segmentAt(2);
}

void checkTexts(FuzzedDataProvider &data)
{
    const QString name = anyText(data);
    const QVersionNumber version(data.ConsumeIntegral<int>(), data.ConsumeIntegral<int>());
    const QString key = PluginFile::key(name, version);
    KVSYNC_REQUIRE(key.endsWith(
        QStringLiteral(".%1.%2").arg(version.majorVersion()).arg(version.minorVersion())));
    KVSYNC_REQUIRE(PluginFile::buildPattern(name, version) == key + QStringLiteral(".*.dll"));
    KVSYNC_REQUIRE(PluginFile::versionPattern(name).endsWith(QStringLiteral(".*.*.*.dll")));
    KVSYNC_REQUIRE(PluginFile::noPathText(name).endsWith(QStringLiteral(" is no exist path")));
    KVSYNC_REQUIRE(PluginFile::noFileText(name).endsWith(QStringLiteral(" is no exist dll")));
    for (const QString &fileName : PluginFile::list(QStringLiteral("."), name))
        KVSYNC_REQUIRE(!fileName.contains(QLatin1Char('/')));
}

void checkChoice(FuzzedDataProvider &data)
{
    QStringList fileNames;
    while (data.remaining_bytes() > 0 && fileNames.size() < 20)
        fileNames.append(anyText(data));

    const QString build = PluginFile::highestBuild(fileNames);
    const QString highest = PluginFile::highestVersion(fileNames);
    KVSYNC_REQUIRE(fileNames.isEmpty() ? build.isEmpty() : fileNames.contains(build));
    KVSYNC_REQUIRE(fileNames.isEmpty() ? highest.isEmpty() : fileNames.contains(highest));
    for (const QString &fileName : qAsConst(fileNames)) {
        const QVersionNumber version = PluginFile::versionOf(fileName);
        KVSYNC_REQUIRE(version.segmentCount() == 3);
        KVSYNC_REQUIRE(buildOf(fileName) <= buildOf(build));
        KVSYNC_REQUIRE(version <= PluginFile::versionOf(highest));
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *bytes, size_t size)
{
    FuzzedDataProvider data(bytes, size);
    checkTexts(data);
    checkChoice(data);
    return 0;
}
