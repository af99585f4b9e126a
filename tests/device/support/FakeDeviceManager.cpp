#include "device/support/FakeDeviceManager.h"

#include "device/support/Call.h"

namespace KvSyncCore {

using KvSyncTest::answer;
using KvSyncTest::received;

namespace {

using CodeAndCount = QPair<ErrorCode, int>;
using CodeAndHandle = QPair<ErrorCode, qint64>;
using CodeAndText = QPair<ErrorCode, QString>;
using CodeAndTypes = QPair<ErrorCode, QFlags<BaseDeviceSpace::DeviceType>>;
using Values = QMap<QString, QVariant>;

std::vector<std::pair<const DeviceManager *, KvSyncTest::Call>> calls;

template <typename Result>
struct Keeper
{
    const DeviceManager *manager;
    const char *operation;

    template <typename... Arguments>
    Result operator()(const Arguments &...arguments) const
    {
        calls.emplace_back(manager, received(operation, arguments...));
        return answer<Result>();
    }
};

} // namespace

#define KEEPS(Result, operation, parameters, arguments)                                            \
    Result DeviceManager::operation parameters                                                     \
    {                                                                                              \
        return Keeper<Result>{this, #operation} arguments;                                         \
    }

DeviceManager::DeviceManager() = default;
DeviceManager::~DeviceManager() = default;

// By content: the controller takes these two by value.
KEEPS(ErrorCode, loadDevicePlugin, (const QString &pluginName, const QVersionNumber &version),
      (pluginName, version))

// All others by identity.
KEEPS(CodeAndCount, enumDevice, (const QString &pluginName, const QVersionNumber &version),
      (&pluginName, &version))
KEEPS(CodeAndHandle, createDevice, (const QString &pluginName, const QVersionNumber &version),
      (&pluginName, &version))
KEEPS(ErrorCode, deleteDevice, (const DeviceHandle handle), (handle))
KEEPS(CodeAndText, name, (const DeviceHandle handle), (handle))
KEEPS(CodeAndTypes, types, (const DeviceHandle handle), (handle))
KEEPS(ErrorCode, connectDeviceByIndex, (const DeviceHandle handle, int index), (handle, index))
KEEPS(ErrorCode, getProperty, (const DeviceHandle handle, const QString &property, Values &values),
      (handle, &property, &values))
KEEPS(ErrorCode, setProperty,
      (const DeviceHandle handle, const QString &property, const Values &values),
      (handle, &property, &values))
KEEPS(ErrorCode, getExposureTimeRange,
      (const DeviceHandle handle, unsigned int &minimumUs, unsigned int &maximumUs,
       signed char selector),
      (handle, &minimumUs, &maximumUs, selector))
KEEPS(ErrorCode, getGainRange,
      (const DeviceHandle handle, unsigned short &minimum, unsigned int &maximum,
       signed char selector),
      (handle, &minimum, &maximum, selector))
KEEPS(ErrorCode, getMaxImageSize,
      (const DeviceHandle handle, unsigned int &width, unsigned int &height, signed char selector),
      (handle, &width, &height, selector))
KEEPS(ErrorCode, setInterestSize,
      (const DeviceHandle handle, unsigned int width, unsigned int height, signed char selector),
      (handle, width, height, selector))
KEEPS(ErrorCode, getInterestSize,
      (const DeviceHandle handle, unsigned int &width, unsigned int &height, signed char selector),
      (handle, &width, &height, selector))
KEEPS(ErrorCode, setAOIOffset,
      (const DeviceHandle handle, unsigned int x, unsigned int y, signed char selector),
      (handle, x, y, selector))
KEEPS(ErrorCode, getAOIOffset,
      (const DeviceHandle handle, unsigned int &x, unsigned int &y, signed char selector),
      (handle, &x, &y, selector))
KEEPS(ErrorCode, getPixelFormat,
      (const DeviceHandle handle, CameraSpace::PixelFormatType &format, signed char selector),
      (handle, &format, selector))
KEEPS(ErrorCode, setTriggerMode,
      (const DeviceHandle handle, CameraSpace::TriggerMode mode, signed char selector),
      (handle, mode, selector))
KEEPS(ErrorCode, getTriggerMode,
      (const DeviceHandle handle, CameraSpace::TriggerMode &mode, signed char selector),
      (handle, &mode, selector))
KEEPS(ErrorCode, discardFrames, (const DeviceHandle handle, signed char selector),
      (handle, selector))
KEEPS(ErrorCode, startStream, (const DeviceHandle handle, signed char selector), (handle, selector))
KEEPS(ErrorCode, stopStream, (const DeviceHandle handle, signed char selector), (handle, selector))
KEEPS(ErrorCode, updateFireware,
      (const DeviceHandle handle, ControllerSpace::FirewareType type, const QByteArray &image),
      (handle, type, &image))
KEEPS(ErrorCode, sendCommand,
      (const DeviceHandle handle, ControllerSpace::CmdType type, const QByteArray &payload),
      (handle, type, &payload))
KEEPS(ErrorCode, readCommand,
      (const DeviceHandle handle, ControllerSpace::CmdType type, QByteArray &answer),
      (handle, type, &answer))
KEEPS(ErrorCode, lockCommandChannel, (const DeviceHandle handle), (handle))
KEEPS(ErrorCode, unlockCommandChannel, (const DeviceHandle handle), (handle))
KEEPS(ErrorCode, rotate,
      (const DeviceHandle handle, const QList<MotorSpace::RotateInfo> &movements),
      (handle, &movements))
KEEPS(ErrorCode, waitMotorStop,
      (const DeviceHandle handle, const QList<MotorSpace::AxisType> &axes), (handle, &axes))
KEEPS(ErrorCode, resetMotor, (const DeviceHandle handle, const QList<MotorSpace::AxisType> &axes),
      (handle, &axes))
KEEPS(ErrorCode, stopMotor, (const DeviceHandle handle, const QList<MotorSpace::AxisType> &axes),
      (handle, &axes))
KEEPS(ErrorCode, projectorPWM, (const DeviceHandle handle, bool on), (handle, on))
KEEPS(ErrorCode, currentProjectorPWM, (const DeviceHandle handle, bool &on), (handle, &on))
KEEPS(ErrorCode, projectorLEDSwitch, (const DeviceHandle handle, bool on), (handle, on))
KEEPS(ErrorCode, currentProjectorLEDSwitch, (const DeviceHandle handle, bool &on), (handle, &on))
KEEPS(ErrorCode, setProjectorLuminance,
      (const DeviceHandle handle, unsigned char red, unsigned char green, unsigned char blue),
      (handle, red, green, blue))
KEEPS(ErrorCode, getProjectorLuminance,
      (const DeviceHandle handle, unsigned char &red, unsigned char &green, unsigned char &blue),
      (handle, &red, &green, &blue))
KEEPS(ErrorCode, scan, (const DeviceHandle handle, ProjectorSpace::ScanType type, bool on),
      (handle, type, on))
KEEPS(ErrorCode, writePatternToFlash,
      (const DeviceHandle handle, ProjectorSpace::MajorPatternType major,
       ProjectorSpace::SubPatternType sub, int index, int width, int height,
       const QByteArray &pattern),
      (handle, major, sub, index, width, height, &pattern))
KEEPS(ErrorCode, connectDeviceBySerial, (const DeviceHandle handle, const QString &serial),
      (handle, &serial))
KEEPS(ErrorCode, reconnectDevice, (const DeviceHandle handle), (handle))
KEEPS(ErrorCode, disconnectDevice, (const DeviceHandle handle), (handle))
KEEPS(ErrorCode, isConnectedOnU3, (const QString &deviceName, bool &connected),
      (&deviceName, &connected))
KEEPS(ErrorCode, getFirewareVersion,
      (const QString &first, const QString &second, QString &version), (&first, &second, &version))
KEEPS(ErrorCode, getCamerasInformation,
      (const QString &deviceName, QStringList &serials, QVector<int> &valuesA,
       QVector<int> &valuesB, QVector<bool> &flags, int &count),
      (&deviceName, &serials, &valuesA, &valuesB, &flags, &count))
KEEPS(ErrorCode, getCameraCount, (const QString &deviceName, int &count), (&deviceName, &count))
KEEPS(ErrorCode, getStatusDescriptionString, (const int &status, QString &text), (&status, &text))
KEEPS(ErrorCode, getConnectCameraCount, (int &count), (&count))
KEEPS(ErrorCode, getCameraSerialNumber, (const int &index, QString &serial), (&index, &serial))
KEEPS(ErrorCode, getCameraResolution, (const int &index, int &width, int &height),
      (&index, &width, &height))
KEEPS(ErrorCode, setScanCallback, (const DeviceHandle handle, void *function, void *context),
      (handle, function, context))
KEEPS(ErrorCode, setStatusCallback, (const DeviceHandle handle, void *function, void *context),
      (handle, function, context))
KEEPS(ErrorCode, startScan, (Values & parameters), (&parameters))
KEEPS(ErrorCode, stopScan, (), ())
KEEPS(ErrorCode, executeCommand, (const QString &command, Values &parameters),
      (&command, &parameters))
KEEPS(ErrorCode, setGainAndExpo,
      (const DeviceHandle handle, unsigned short gain, double exposure, signed char camera),
      (handle, gain, exposure, camera))
KEEPS(ErrorCode, getGainAndExpo,
      (const DeviceHandle handle, unsigned short &gain, double &exposure, signed char camera),
      (handle, &gain, &exposure, camera))
KEEPS(ErrorCode, setExopsureTime, (const DeviceHandle handle, double exposure, signed char camera),
      (handle, exposure, camera))
KEEPS(ErrorCode, getExposureTime, (const DeviceHandle handle, double &exposure, signed char camera),
      (handle, &exposure, camera))
KEEPS(ErrorCode, setGain, (const DeviceHandle handle, unsigned short gain, signed char camera),
      (handle, gain, camera))
KEEPS(ErrorCode, getGain, (const DeviceHandle handle, unsigned short &gain, signed char camera),
      (handle, &gain, camera))
KEEPS(ErrorCode, setVideoTriggerPeriod, (const int period), (period))
KEEPS(ErrorCode, getVideoTriggerPeriod, (int &period), (&period))
KEEPS(ErrorCode, setStrobeDutioRatio, (const int &first, const int &second, const int &third),
      (&first, &second, &third))
KEEPS(ErrorCode, getStrobeDutioRatio, (int &first, int &second, int &third),
      (&first, &second, &third))
KEEPS(ErrorCode, setProjectDutioRatio, (const int ratio), (ratio))
KEEPS(ErrorCode, getProjectDutioRatio, (int &ratio), (&ratio))
KEEPS(ErrorCode, SetProjectorBrightness, (int brightness), (brightness))
KEEPS(ErrorCode, getProjectorBrightness, (int &brightness), (&brightness))
KEEPS(ErrorCode, getLaserLineDutioRatio, (int &ratio), (&ratio))
KEEPS(ErrorCode, getIRLaserDutioRatio, (int &ratio), (&ratio))
KEEPS(ErrorCode, setDistanceIndicate, (const int status), (status))
KEEPS(ErrorCode, grabImage,
      (const DeviceHandle handle, unsigned int route, QList<CameraSpace::ImageBlock *> &blocks),
      (handle, route, &blocks))
KEEPS(ErrorCode, writeCustomInfo,
      (const DeviceHandle handle, unsigned int address, const QByteArray &data),
      (handle, address, &data))
KEEPS(ErrorCode, readCustomInfo,
      (const DeviceHandle handle, unsigned int address, QByteArray &data), (handle, address, &data))
KEEPS(ErrorCode, project,
      (const DeviceHandle handle, ProjectorSpace::MajorPatternType major,
       ProjectorSpace::SubPatternType sub),
      (handle, major, sub))

} // namespace KvSyncCore

namespace KvSyncTest {

std::vector<std::pair<const KvSyncCore::DeviceManager *, Call>> takeManagerCalls()
{
    return std::exchange(KvSyncCore::calls, {});
}

} // namespace KvSyncTest
