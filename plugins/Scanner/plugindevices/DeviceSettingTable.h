#ifndef SCANNER_DEVICESETTINGTABLE_H
#define SCANNER_DEVICESETTINGTABLE_H

#include "Numbers.h"

#include <KvSyncCore/DeviceController.h>

#include <vector>

namespace Scanner {

/// One setting that a capability offers.
struct DeviceSetting
{
    QLatin1String name;
    BaseDeviceSpace::DeviceType capability; ///< a camera's setting is one of each sensor
    NumberForm form;
    ErrorCode (*read)(KvSyncCore::DeviceController &controller, qint64 handle, signed char sensor,
                      Numbers &numbers);
    /// Null where it can only be read.
    ErrorCode (*write)(KvSyncCore::DeviceController &controller, qint64 handle, signed char sensor,
                       const Numbers &numbers);
};

/// Every one of them, in the order in which they are listed.
const std::vector<DeviceSetting> &deviceSettingTable();

} // namespace Scanner

#endif
