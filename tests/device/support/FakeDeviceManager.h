#ifndef KVSYNC_TESTS_FAKEDEVICEMANAGER_H
#define KVSYNC_TESTS_FAKEDEVICEMANAGER_H

#include "device/DeviceManager.h"
#include "device/support/Call.h"

#include <utility>
#include <vector>

namespace KvSyncTest {

// A DeviceManager of the real declaration whose operations only keep their calls: it stands in for
// the real one where this test links, so that the controller is seen alone.

/// Every call since the last take, with the manager that received it.
std::vector<std::pair<const KvSyncCore::DeviceManager *, Call>> takeManagerCalls();

/// What the operations of that result type answer.
template <typename Result>
Result answer()
{
    constexpr ErrorCode code = static_cast<ErrorCode>(0x5A5A0043);
    if constexpr (std::is_same_v<Result, ErrorCode>)
        return code;
    else if constexpr (std::is_same_v<Result, QPair<ErrorCode, int>>)
        return {code, 17};
    else if constexpr (std::is_same_v<Result, QPair<ErrorCode, qint64>>)
        return {code, Q_INT64_C(0x1234567890)};
    else if constexpr (std::is_same_v<Result, QPair<ErrorCode, QString>>)
        return {code, "answered"};
    else
        return {code, BaseDeviceSpace::MotorDevice};
}

} // namespace KvSyncTest

#endif
