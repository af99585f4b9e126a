// Any plug-in name, version and file names: keys and patterns keep their shape, and choosing a file
// neither loses nor invents one.

#include "PluginFile.h"
#include "Require.h"

#include <fuzzer/FuzzedDataProvider.h>

#include <algorithm>

namespace {

using namespace KvSyncCore;

QString anyText(FuzzedDataProvider &data)
{
    return QString::fromStdString(data.ConsumeRandomLengthString(60));
}

QStringList sorted(QStringList list)
{
    list.sort();
    return list;
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
    const QStringList before = sorted(fileNames);

    PluginFile::moveHighestBuildToFront(fileNames);
    KVSYNC_REQUIRE(sorted(fileNames) == before);
    for (const QString &fileName : qAsConst(fileNames)) {
        KVSYNC_REQUIRE(PluginFile::versionOf(fileName).segmentCount() == 3);
        KVSYNC_REQUIRE(buildOf(fileName) <= buildOf(fileNames.first()));
    }

    PluginFile::moveHighestVersionToFront(fileNames);
    KVSYNC_REQUIRE(sorted(fileNames) == before);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *bytes, size_t size)
{
    FuzzedDataProvider data(bytes, size);
    checkTexts(data);
    checkChoice(data);
    return 0;
}
