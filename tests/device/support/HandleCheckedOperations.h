#ifndef KVSYNC_TESTS_HANDLECHECKEDOPERATIONS_H
#define KVSYNC_TESTS_HANDLECHECKEDOPERATIONS_H

#include "device/DeviceManager.h"
#include "device/support/Call.h"

#include <functional>

namespace KvSyncTest {

/// What a device needs for an operation.
enum class Reached { Device, Camera, Controller, Motor, Projector };

struct HandleCheckedOperation
{
    const char *name;
    Reached reached;
    std::function<Outcome<ErrorCode>(KvSyncCore::DeviceManager &, DeviceHandle, Sample)> invoke;
};

void PrintTo(const HandleCheckedOperation &operation, std::ostream *stream);

/// All thirty-three.
const std::vector<HandleCheckedOperation> &handleCheckedOperations();

} // namespace KvSyncTest

#endif
