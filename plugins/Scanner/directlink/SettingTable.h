#ifndef SCANNER_SETTINGTABLE_H
#define SCANNER_SETTINGTABLE_H

#include "Numbers.h"

#include <KvSyncCore/DeviceController.h>

#include <vector>

namespace Scanner {

enum class Scope { Camera, WholeScanner };

/// One setting of the direct link.
struct Setting
{
    QLatin1String name;
    Scope scope;
    NumberForm form;
    /// Null where the scanner cannot be asked.
    ErrorCode (*read)(KvSyncCore::DeviceController &controller, int camera, Numbers &numbers);
    ErrorCode (*write)(KvSyncCore::DeviceController &controller, int camera,
                       const Numbers &numbers);
};

/// Every setting, in the order in which they are listed.
const std::vector<Setting> &settingTable();

} // namespace Scanner

#endif
