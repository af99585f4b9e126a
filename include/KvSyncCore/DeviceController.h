#ifndef KVSYNCCORE_DEVICECONTROLLER_H
#define KVSYNCCORE_DEVICECONTROLLER_H

#include "KvSyncCore/Export.h"
#include "KvSyncDevice/CameraInterface.h"
#include "KvSyncDevice/ControllerInterface.h"
#include "KvSyncDevice/DeviceHandle.h"
#include "KvSyncDevice/DeviceInterface.h"
#include "KvSyncDevice/MotorInterface.h"
#include "KvSyncDevice/ProjectorInterface.h"
#include "KvSyncTool/ErrorCode.h"

#include <QtCore/QByteArray>
#include <QtCore/QList>
#include <QtCore/QMap>
#include <QtCore/QPair>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QVariant>
#include <QtCore/QVector>
#include <QtCore/QVersionNumber>

namespace KvSyncCore {

class DeviceManager;

/// The device side of the service core: devices of device plug-ins, addressed by handle, and the
/// one scanner that is linked directly.
///
/// Command plug-ins receive one through CommandInterface::setDeviceController; a host creates none.
/// It is a pointer in value form: copies operate on the same devices. It must not be used after the
/// SyncCore that it came from is gone.
///
/// Every operation returns an ErrorCode and throws nothing of its own; exceptions and codes of a
/// device plug-in pass through unchanged. The log has the reasons.
///
/// Threads: operations on plug-in devices may be called from any thread, several at once. A device
/// must not be deleted while another thread uses it. Operations of the direct link take no lock:
/// call them from one thread at a time. Its callbacks run on threads of the scanner library and may
/// call stopScan.
///
/// Every name, argument type and width below is a binary contract, including the spellings
/// "Exopsure", "Dutio" and "Fireware" (see docs/compatibility.md).
class KVSYNCCORE_EXPORT DeviceController
{
public:
    /// Operates on `manager`, which must outlive this object; null is not detected.
    explicit DeviceController(DeviceManager *manager);
    DeviceController(const DeviceController &other);
    ~DeviceController();
    /// Operates on the other's manager from now on.
    DeviceController &operator=(const DeviceController &other);

    // Device plug-ins and their devices

    /// Loads the newest build of the plug-in's version line (the first two segments). Repeating it
    /// does not load again. Both arguments are passed by value: part of the contract.
    /// `InvalidParameter` (empty name or version), `PathNotExist`, `PluginFileNotExist`,
    /// `PluginLoadFailed`, `DeviceOperationFailed` (a loader could not be allocated).
    ErrorCode loadDevicePlugin(QString pluginName, QVersionNumber version);

    /// The number of devices that a loaded plug-in can create.
    /// `PluginNameOrVersionNull`, `PluginNotLoaded` (also: loaded, but not a device factory).
    QPair<ErrorCode, int> enumDevice(const QString &pluginName, const QVersionNumber &version);

    /// Creates a device of a loaded plug-in; deleteDevice or the destruction of the SyncCore
    /// destroys it. Errors as for enumDevice; the handle is then 0.
    QPair<ErrorCode, qint64> createDevice(const QString &pluginName, const QVersionNumber &version);

    /// Deletes a device. `HandleInvalid`, or the code with which the plug-in refused; the handle
    /// then stays valid.
    ErrorCode deleteDevice(const DeviceHandle handle);

    /// The device's name, or `HandleInvalid` and an empty text.
    QPair<ErrorCode, QString> name(const DeviceHandle handle);

    /// The kinds that the device belongs to, or `HandleInvalid` and none.
    QPair<ErrorCode, QFlags<BaseDeviceSpace::DeviceType>> types(const DeviceHandle handle);

    // Operations of a plug-in device. `HandleInvalid` if the handle names no device or the device
    // lacks the capability, otherwise the plug-in's own code. Only the plug-in writes output
    // arguments. Meaning, units and ranges: see the same operation in KvSyncDevice/.

    // DeviceInterface
    ErrorCode connectDeviceByIndex(const DeviceHandle handle, int index);
    ErrorCode getProperty(const DeviceHandle handle, const QString &property,
                          QMap<QString, QVariant> &values);
    ErrorCode setProperty(const DeviceHandle handle, const QString &property,
                          const QMap<QString, QVariant> &values);

    // CameraInterface
    ErrorCode getExposureTimeRange(const DeviceHandle handle, unsigned int &minimumUs,
                                   unsigned int &maximumUs, signed char selector);
    ErrorCode getGainRange(const DeviceHandle handle, unsigned short &minimum,
                           unsigned int &maximum, signed char selector);
    ErrorCode getMaxImageSize(const DeviceHandle handle, unsigned int &width, unsigned int &height,
                              signed char selector);
    ErrorCode setInterestSize(const DeviceHandle handle, unsigned int width, unsigned int height,
                              signed char selector);
    ErrorCode getInterestSize(const DeviceHandle handle, unsigned int &width, unsigned int &height,
                              signed char selector);
    ErrorCode setAOIOffset(const DeviceHandle handle, unsigned int x, unsigned int y,
                           signed char selector);
    ErrorCode getAOIOffset(const DeviceHandle handle, unsigned int &x, unsigned int &y,
                           signed char selector);
    ErrorCode getPixelFormat(const DeviceHandle handle, CameraSpace::PixelFormatType &format,
                             signed char selector);
    ErrorCode setTriggerMode(const DeviceHandle handle, CameraSpace::TriggerMode mode,
                             signed char selector);
    ErrorCode getTriggerMode(const DeviceHandle handle, CameraSpace::TriggerMode &mode,
                             signed char selector);
    ErrorCode discardFrames(const DeviceHandle handle, signed char selector);
    ErrorCode startStream(const DeviceHandle handle, signed char selector);
    ErrorCode stopStream(const DeviceHandle handle, signed char selector);

    // ControllerInterface
    ErrorCode updateFireware(const DeviceHandle handle, ControllerSpace::FirewareType type,
                             const QByteArray &image);
    ErrorCode sendCommand(const DeviceHandle handle, ControllerSpace::CmdType type,
                          const QByteArray &payload);
    ErrorCode readCommand(const DeviceHandle handle, ControllerSpace::CmdType type,
                          QByteArray &answer);
    ErrorCode lockCommandChannel(const DeviceHandle handle);
    ErrorCode unlockCommandChannel(const DeviceHandle handle);

    // MotorInterface
    ErrorCode rotate(const DeviceHandle handle, const QList<MotorSpace::RotateInfo> &movements);
    ErrorCode waitMotorStop(const DeviceHandle handle, const QList<MotorSpace::AxisType> &axes);
    ErrorCode resetMotor(const DeviceHandle handle, const QList<MotorSpace::AxisType> &axes);
    ErrorCode stopMotor(const DeviceHandle handle, const QList<MotorSpace::AxisType> &axes);

    // ProjectorInterface
    ErrorCode projectorPWM(const DeviceHandle handle, bool on);
    ErrorCode currentProjectorPWM(const DeviceHandle handle, bool &on);
    ErrorCode projectorLEDSwitch(const DeviceHandle handle, bool on);
    ErrorCode currentProjectorLEDSwitch(const DeviceHandle handle, bool &on);
    ErrorCode setProjectorLuminance(const DeviceHandle handle, unsigned char red,
                                    unsigned char green, unsigned char blue);
    ErrorCode getProjectorLuminance(const DeviceHandle handle, unsigned char &red,
                                    unsigned char &green, unsigned char &blue);
    ErrorCode scan(const DeviceHandle handle, ProjectorSpace::ScanType type, bool on);
    ErrorCode writePatternToFlash(const DeviceHandle handle, ProjectorSpace::MajorPatternType major,
                                  ProjectorSpace::SubPatternType sub, int index, int width,
                                  int height, const QByteArray &pattern);

    // The direct link. Handle arguments are ignored: there is one scanner. No operation checks
    // whether it is connected; the scanner library does.

    // Discovery and connection. Texts travel in the local 8-bit encoding.

    /// Connects the scanner with that serial number; an empty one selects the scanner that is
    /// present. Prints its progress on standard output. `ConnectFailed`.
    ErrorCode connectDeviceBySerial(const DeviceHandle handle, const QString &serial);
    /// Closes the cameras and connects again. `ConnectFailed`.
    ErrorCode reconnectDevice(const DeviceHandle handle);
    /// Removes the scan callback and disconnects. `ConnectFailed`.
    ErrorCode disconnectDevice(const DeviceHandle handle);

    // Queries. `DeviceOperationFailed` if the scanner library refuses; output arguments are written
    // even then.

    /// Whether the named scanner is connected to a fast USB port.
    ErrorCode isConnectedOnU3(const QString &deviceName, bool &connected);
    /// The scanner library defines the two texts.
    ErrorCode getFirewareVersion(const QString &first, const QString &second, QString &version);
    /// Serial numbers and values of the named scanner's cameras; the connection is not affected.
    /// The lists are replaced. The scanner library defines the meaning of values and flags.
    ErrorCode getCamerasInformation(const QString &deviceName, QStringList &serials,
                                    QVector<int> &valuesA, QVector<int> &valuesB,
                                    QVector<bool> &flags, int &count);
    ErrorCode getCameraCount(const QString &deviceName, int &count);
    /// The scanner library's text for one of its status numbers. Always `Success`.
    ErrorCode getStatusDescriptionString(const int &status, QString &text);
    ErrorCode getConnectCameraCount(int &count);
    /// Serial number of camera `index` (from 0); prints it on standard output.
    ErrorCode getCameraSerialNumber(const int &index, QString &serial);
    /// Size of camera `index` (from 0), in pixels.
    ErrorCode getCameraResolution(const int &index, int &width, int &height);

    // Scan session

    /// Registers `function`, a Tessel3Sync::ScanCallBack taken as a pointer, and the context that
    /// it receives; null removes it. It runs on a thread of the scanner library. `CameraFailed`.
    ErrorCode setScanCallback(const DeviceHandle handle, void *function, void *context);
    /// The same for a Tessel3Sync::StatusCallBack. Always `Success`, even if refused.
    ErrorCode setStatusCallback(const DeviceHandle handle, void *function, void *context);
    /// Starts a scan. Reads "bEnableColor" (bool), "colorMode" (int) and "iPeriod" (int,
    /// milliseconds); a missing key is added to the map and reads as false or 0. Always `Success`,
    /// even if refused.
    ErrorCode startScan(QMap<QString, QVariant> &parameters);
    /// Stops it. Always `Success`, even if refused.
    ErrorCode stopScan();

    /// Runs one of the thirteen commands by name (see docs/direct-link.md); missing keys are added
    /// to the map and read as 0 or false. The handle is ignored. `CommandFailed` if the scanner
    /// library refuses; "startScan", "stopScan" and unknown names return `Success`.
    ErrorCode executeCommand(const DeviceHandle handle, const QString &command,
                             QMap<QString, QVariant> &parameters);

    // Settings. `DeviceOperationFailed` when the scanner library refuses, but setGain and getGain
    // always return `Success`. Getters write their result even then. Exposure times are in
    // the scanner library's unit; `camera` counts from 0.

    ErrorCode setGainAndExpo(const DeviceHandle handle, unsigned short gain, double exposure,
                             signed char camera);
    /// The gain is cut to its low 16 bits.
    ErrorCode getGainAndExpo(const DeviceHandle handle, unsigned short &gain, double &exposure,
                             signed char camera);
    ErrorCode setExopsureTime(const DeviceHandle handle, double exposure, signed char camera);
    ErrorCode getExposureTime(const DeviceHandle handle, double &exposure, signed char camera);
    ErrorCode setGain(const DeviceHandle handle, unsigned short gain, signed char camera);
    /// The gain is cut to its low 16 bits.
    ErrorCode getGain(const DeviceHandle handle, unsigned short &gain, signed char camera);
    /// Time between two triggers, in milliseconds.
    ErrorCode setVideoTriggerPeriod(int period);
    ErrorCode getVideoTriggerPeriod(int &period);
    ErrorCode setStrobeDutioRatio(const int &first, const int &second, const int &third);
    ErrorCode getStrobeDutioRatio(int &first, int &second, int &third);
    ErrorCode setProjectDutioRatio(int ratio);
    ErrorCode getProjectDutioRatio(int &ratio);
    ErrorCode setProjectorBrightness(int brightness);
    ErrorCode getProjectorBrightness(int &brightness);
    /// Set by the command "SetLaserLineDutioRatio".
    ErrorCode getLaserLineDutioRatio(int &ratio);
    /// Set by the command "SetIRLaserDutioRatio".
    ErrorCode getIRLaserDutioRatio(int &ratio);
    ErrorCode setDistanceIndicate(int status);

    // Capture, projection, user information

    /// Takes a color snapshot and appends one block per image, which the caller deletes. The
    /// scanner library defines `route`. `CameraFailed`: the list is unchanged.
    ErrorCode grabImage(const DeviceHandle handle, unsigned int route,
                        QList<CameraSpace::ImageBlock *> &blocks);
    /// Writes text in the local 8-bit encoding, of less than 512 bytes in UTF-8, to the scanner's
    /// store. `InvalidParameter` (longer: nothing is written), `DeviceOperationFailed`.
    ErrorCode writeCustomInfo(const DeviceHandle handle, unsigned int address,
                              const QByteArray &data);
    /// Reads text from the scanner's store, in the local 8-bit encoding. `data` is overwritten even
    /// if refused. `DeviceOperationFailed`.
    ErrorCode readCustomInfo(const DeviceHandle handle, unsigned int address, QByteArray &data);
    /// Sends the major type as the scanner's projection work type; the sub type is not used.
    /// `ProjectorFailed`.
    ErrorCode project(const DeviceHandle handle, ProjectorSpace::MajorPatternType major,
                      ProjectorSpace::SubPatternType sub);

private:
    DeviceManager *manager;
};

} // namespace KvSyncCore

#endif
