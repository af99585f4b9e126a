#ifndef SCANNER_SETTINGTABLE_H
#define SCANNER_SETTINGTABLE_H

#include <KvSyncCore/DeviceController.h>
#include <QtCore/QLatin1String>

#include <array>
#include <vector>

namespace Scanner {

/// The numbers of one setting; most have one.
using Numbers = std::array<double, 3>;

enum class Scope { Camera, WholeScanner };
enum class Precision { Real, Whole };

/// One setting of the direct link.
struct Setting
{
    QLatin1String name;
    Scope scope;
    Precision precision;
    QLatin1String unit;
    double minimum;
    double maximum;
    int count; ///< of numbers
    /// Null where the scanner cannot be asked.
    ErrorCode (*read)(KvSyncCore::DeviceController &controller, int camera, Numbers &numbers);
    ErrorCode (*write)(KvSyncCore::DeviceController &controller, int camera,
                       const Numbers &numbers);
};

/// Every setting, in the order in which they are listed.
const std::vector<Setting> &settingTable();

} // namespace Scanner

#endif
