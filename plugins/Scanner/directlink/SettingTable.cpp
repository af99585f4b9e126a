#include "SettingTable.h"

#include "DirectLink.h"

#include <QtCore/QMap>
#include <QtCore/QVariant>

namespace Scanner {

using KvSyncCore::DeviceController;

namespace {

signed char cameraNumber(int camera)
{
    return static_cast<signed char>(camera);
}

ErrorCode readExposure(DeviceController &c, int camera, Numbers &numbers)
{
    return c.getExposureTime(DirectLink::handle, numbers[0], cameraNumber(camera));
}

ErrorCode writeExposure(DeviceController &c, int camera, const Numbers &numbers)
{
    return c.setExopsureTime(DirectLink::handle, numbers[0], cameraNumber(camera));
}

// Gains go together with the exposure: getGain and setGain do not tell whether the scanner refused.

ErrorCode readGain(DeviceController &c, int camera, Numbers &numbers)
{
    unsigned short gain = 0;
    double exposure = 0.0;
    const ErrorCode result =
        c.getGainAndExpo(DirectLink::handle, gain, exposure, cameraNumber(camera));
    numbers[0] = gain;
    return result;
}

ErrorCode writeGain(DeviceController &c, int camera, const Numbers &numbers)
{
    unsigned short gain = 0;
    double exposure = 0.0;
    const ErrorCode result =
        c.getGainAndExpo(DirectLink::handle, gain, exposure, cameraNumber(camera));
    if (result != Success)
        return result;
    return c.setGainAndExpo(DirectLink::handle, static_cast<unsigned short>(numbers[0]), exposure,
                            cameraNumber(camera));
}

template <ErrorCode (DeviceController::*operation)(int &)>
ErrorCode readWhole(DeviceController &c, int, Numbers &numbers)
{
    int value = 0;
    const ErrorCode result = (c.*operation)(value);
    numbers[0] = value;
    return result;
}

template <ErrorCode (DeviceController::*operation)(int)>
ErrorCode writeWhole(DeviceController &c, int, const Numbers &numbers)
{
    return (c.*operation)(static_cast<int>(numbers[0]));
}

ErrorCode readStrobeRatios(DeviceController &c, int, Numbers &numbers)
{
    int first = 0;
    int second = 0;
    int third = 0;
    const ErrorCode result = c.getStrobeDutioRatio(first, second, third);
    numbers = {double(first), double(second), double(third)};
    return result;
}

ErrorCode writeStrobeRatios(DeviceController &c, int, const Numbers &numbers)
{
    return c.setStrobeDutioRatio(static_cast<int>(numbers[0]), static_cast<int>(numbers[1]),
                                 static_cast<int>(numbers[2]));
}

ErrorCode writeRatioByCommand(DeviceController &c, const QString &command, const Numbers &numbers)
{
    QMap<QString, QVariant> parameters{
        {QStringLiteral("dutioRatio"), static_cast<int>(numbers[0])}};
    return c.executeCommand(DirectLink::handle, command, parameters);
}

ErrorCode writeLaserLineRatio(DeviceController &c, int, const Numbers &numbers)
{
    return writeRatioByCommand(c, QStringLiteral("SetLaserLineDutioRatio"), numbers);
}

ErrorCode writeInfraredRatio(DeviceController &c, int, const Numbers &numbers)
{
    return writeRatioByCommand(c, QStringLiteral("SetIRLaserDutioRatio"), numbers);
}

using Text = QLatin1String;
using C = DeviceController;

} // namespace

// clang-format off
const std::vector<Setting> &settingTable()
{
    static const std::vector<Setting> table = {
        {Text("exposureUs"), Scope::Camera, {Precision::Real, Text("us"), 1, 1000000, 1},
         readExposure, writeExposure},
        {Text("gain"), Scope::Camera, {Precision::Whole, Text(""), 0, 65535, 1},
         readGain, writeGain},
        {Text("periodMs"), Scope::WholeScanner, {Precision::Whole, Text("ms"), 1, 60000, 1},
         readWhole<&C::getVideoTriggerPeriod>, writeWhole<&C::setVideoTriggerPeriod>},
        {Text("projectorBrightness"), Scope::WholeScanner, {Precision::Whole, Text("%"), 0, 100, 1},
         readWhole<&C::getProjectorBrightness>, writeWhole<&C::setProjectorBrightness>},
        {Text("projectorDutyRatio"), Scope::WholeScanner, {Precision::Whole, Text("%"), 0, 100, 1},
         readWhole<&C::getProjectDutioRatio>, writeWhole<&C::setProjectDutioRatio>},
        {Text("strobeDutyRatios"), Scope::WholeScanner, {Precision::Whole, Text("%"), 0, 100, 3},
         readStrobeRatios, writeStrobeRatios},
        {Text("laserLineDutyRatio"), Scope::WholeScanner, {Precision::Whole, Text("%"), 0, 100, 1},
         readWhole<&C::getLaserLineDutioRatio>, writeLaserLineRatio},
        {Text("infraredDutyRatio"), Scope::WholeScanner, {Precision::Whole, Text("%"), 0, 100, 1},
         readWhole<&C::getIRLaserDutioRatio>, writeInfraredRatio},
        {Text("distanceIndication"), Scope::WholeScanner, {Precision::Whole, Text(""), 0, 3, 1},
         nullptr, writeWhole<&C::setDistanceIndicate>},
    };
    return table;
}
// clang-format on

} // namespace Scanner
