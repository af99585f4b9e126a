#include "DirectLink.h"

#include <limits>

namespace KvSyncTest {

using KvSyncCore::DeviceController;
using ::testing::Contains;

using Controller = ConnectedScanner;

TEST_F(Controller, SharesTheConnectionWithEveryOtherOverItsManager)
{
    DeviceController other(&link.manager);
    EXPECT_THAT(journalOf([&] { other.setGain(anyHandle, 1, 0); }),
                Contains("SetCameraGain(device, 0, 1)"));
}

TEST_F(Controller, CopyServesTheSameScanner)
{
    DeviceController copy(controller);
    EXPECT_THAT(journalOf([&] { copy.setGain(anyHandle, 1, 0); }),
                Contains("SetCameraGain(device, 0, 1)"));
}

TEST_F(Controller, ServesTheOthersScannerAfterAssignment)
{
    KvSyncCore::DeviceManager unconnected;
    DeviceController other(&unconnected);
    EXPECT_THAT(journalOf([&] { other.setGain(anyHandle, 1, 0); }),
                Contains("SetCameraGain(null, 0, 1)"));
    EXPECT_EQ(&(other = controller), &other);
    EXPECT_THAT(journalOf([&] { other.setGain(anyHandle, 1, 0); }),
                Contains("SetCameraGain(device, 0, 1)"));
}

TEST_F(Controller, ReachesTheScannerByCommandWithAnyHandle)
{
    for (const DeviceHandle handle :
         {DeviceHandle(0), DeviceHandle(-1), std::numeric_limits<DeviceHandle>::max()}) {
        QMap<QString, QVariant> parameters{{"projectWorkType", 4}};
        ErrorCode code = HandleInvalid;
        const Journal journal =
            journalOf([&] { code = controller.executeCommand(handle, "Project", parameters); });
        EXPECT_EQ(code, Success);
        EXPECT_THAT(journal, Contains("Project(device, 4)"));
    }
}

} // namespace KvSyncTest
