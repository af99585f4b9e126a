#include "DeviceSettingTable.h"

namespace Scanner {

using KvSyncCore::DeviceController;
using namespace BaseDeviceSpace;

namespace {

using Text = QLatin1String;
using C = DeviceController;

constexpr double largest = 2147483647.0;

ErrorCode readExposureRange(C &c, qint64 handle, signed char sensor, Numbers &numbers)
{
    unsigned int minimumUs = 0;
    unsigned int maximumUs = 0;
    const ErrorCode result = c.getExposureTimeRange(handle, minimumUs, maximumUs, sensor);
    numbers = {double(minimumUs), double(maximumUs)};
    return result;
}

ErrorCode readGainRange(C &c, qint64 handle, signed char sensor, Numbers &numbers)
{
    unsigned short minimum = 0;
    unsigned int maximum = 0;
    const ErrorCode result = c.getGainRange(handle, minimum, maximum, sensor);
    numbers = {double(minimum), double(maximum)};
    return result;
}

using PairReader = ErrorCode (C::*)(const DeviceHandle, unsigned int &, unsigned int &,
                                    signed char);
using PairWriter = ErrorCode (C::*)(const DeviceHandle, unsigned int, unsigned int, signed char);

template <PairReader operation>
ErrorCode readPair(C &c, qint64 handle, signed char sensor, Numbers &numbers)
{
    unsigned int first = 0;
    unsigned int second = 0;
    const ErrorCode result = (c.*operation)(handle, first, second, sensor);
    numbers = {double(first), double(second)};
    return result;
}

template <PairWriter operation>
ErrorCode writePair(C &c, qint64 handle, signed char sensor, const Numbers &numbers)
{
    return (c.*operation)(handle, static_cast<unsigned int>(numbers[0]),
                          static_cast<unsigned int>(numbers[1]), sensor);
}

ErrorCode readPixelFormat(C &c, qint64 handle, signed char sensor, Numbers &numbers)
{
    auto format = CameraSpace::Mono8;
    const ErrorCode result = c.getPixelFormat(handle, format, sensor);
    numbers[0] = static_cast<int>(format);
    return result;
}

ErrorCode readTriggerMode(C &c, qint64 handle, signed char sensor, Numbers &numbers)
{
    auto mode = CameraSpace::FreeRunning;
    const ErrorCode result = c.getTriggerMode(handle, mode, sensor);
    numbers[0] = static_cast<int>(mode);
    return result;
}

ErrorCode writeTriggerMode(C &c, qint64 handle, signed char sensor, const Numbers &numbers)
{
    const auto mode = static_cast<CameraSpace::TriggerMode>(static_cast<int>(numbers[0]));
    return c.setTriggerMode(handle, mode, sensor);
}

template <ErrorCode (C::*operation)(const DeviceHandle, bool &)>
ErrorCode readFlag(C &c, qint64 handle, signed char, Numbers &numbers)
{
    bool on = false;
    const ErrorCode result = (c.*operation)(handle, on);
    numbers[0] = on ? 1 : 0;
    return result;
}

template <ErrorCode (C::*operation)(const DeviceHandle, bool)>
ErrorCode writeFlag(C &c, qint64 handle, signed char, const Numbers &numbers)
{
    return (c.*operation)(handle, numbers[0] != 0.0);
}

ErrorCode readLuminance(C &c, qint64 handle, signed char, Numbers &numbers)
{
    unsigned char red = 0;
    unsigned char green = 0;
    unsigned char blue = 0;
    const ErrorCode result = c.getProjectorLuminance(handle, red, green, blue);
    numbers = {double(red), double(green), double(blue)};
    return result;
}

ErrorCode writeLuminance(C &c, qint64 handle, signed char, const Numbers &numbers)
{
    return c.setProjectorLuminance(handle, static_cast<unsigned char>(numbers[0]),
                                   static_cast<unsigned char>(numbers[1]),
                                   static_cast<unsigned char>(numbers[2]));
}

} // namespace

// clang-format off
const std::vector<DeviceSetting> &deviceSettingTable()
{
    static const std::vector<DeviceSetting> table = {
        {Text("exposureRangeUs"), CameraDevice, {Precision::Whole, Text("us"), 0, largest, 2},
         readExposureRange, nullptr},
        {Text("gainRange"), CameraDevice, {Precision::Whole, Text(""), 0, largest, 2},
         readGainRange, nullptr},
        {Text("maximumSize"), CameraDevice, {Precision::Whole, Text("px"), 0, largest, 2},
         readPair<&C::getMaxImageSize>, nullptr},
        {Text("size"), CameraDevice, {Precision::Whole, Text("px"), 0, largest, 2},
         readPair<&C::getInterestSize>, writePair<&C::setInterestSize>},
        {Text("offset"), CameraDevice, {Precision::Whole, Text("px"), 0, largest, 2},
         readPair<&C::getAOIOffset>, writePair<&C::setAOIOffset>},
        {Text("pixelFormat"), CameraDevice, {Precision::Whole, Text(""), 0, largest, 1},
         readPixelFormat, nullptr},
        {Text("triggerMode"), CameraDevice, {Precision::Whole, Text(""), 0, CameraSpace::HardwareTrigger, 1},
         readTriggerMode, writeTriggerMode},
        {Text("projectorPwm"), ProjectorDevice, {Precision::Flag, Text(""), 0, 1, 1},
         readFlag<&C::currentProjectorPWM>, writeFlag<&C::projectorPWM>},
        {Text("projectorLed"), ProjectorDevice, {Precision::Flag, Text(""), 0, 1, 1},
         readFlag<&C::currentProjectorLEDSwitch>, writeFlag<&C::projectorLEDSwitch>},
        {Text("luminance"), ProjectorDevice, {Precision::Whole, Text(""), 0, 255, 3},
         readLuminance, writeLuminance},
    };
    return table;
}
// clang-format on

} // namespace Scanner
