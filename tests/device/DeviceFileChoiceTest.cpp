// Which file loadDevicePlugin takes.

#include "device/support/DeviceLoading.h"
#include "support/LocaleCodec.h"
#include "support/PluginFileChoices.h"
#include "support/RowName.h"

namespace {

using namespace KvSyncTest;

class DeviceFileChoice : public DeviceLoading,
                         public ::testing::WithParamInterface<PluginFileChoice>
{
protected:
    const LocaleCodec utf8{"UTF-8"};
};

TEST_P(DeviceFileChoice, IsThatOfTheTable)
{
    const auto &[name, plugin, asked, key, files, taken] = GetParam();
    provideFiles(GetParam(), folder.path(), deviceFixture("Scripted"));
    if (taken.isEmpty()) {
        expectNoFile(plugin, asked);
    } else {
        expectLoads(plugin, asked, taken);
        EXPECT_EQ(manager->enumDevice(plugin, asked), qMakePair(Success, 5));
    }
}

INSTANTIATE_TEST_SUITE_P(DeviceManager, DeviceFileChoice, ::testing::ValuesIn(pluginFileChoices()),
                         rowName);

} // namespace
