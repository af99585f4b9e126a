#ifndef KVSYNCCORE_DEVICEMANAGER_H
#define KVSYNCCORE_DEVICEMANAGER_H

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
#include <QtCore/QReadWriteLock>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QVariant>
#include <QtCore/QVector>
#include <QtCore/QVersionNumber>

#include <vector>

class IFactory;
class QPluginLoader;

namespace KvSyncCore {

/// One loaded device plug-in. The root object belongs to the loader, the loader to the record.
struct DevicePluginRecord
{
    QString fileName; ///< bare file name
    QObject *instance = nullptr;
    QPluginLoader *loader = nullptr;
};

/// The device side. One class in several files: DeviceManager.cpp holds construction, destruction
/// and the plug-in directory; DevicePlugins.cpp loads plug-ins and keeps the registry of devices;
/// DeviceOperations.cpp makes the handle-checked calls; directlink/ drives the scanner that needs
/// no plug-in. Each operation is documented at its namesake in KvSyncCore/DeviceController.h.
///
/// No operation is const, and none is overloaded: the log shows their signatures, which are part of
/// the contract (docs/compatibility.md says what that means).
class DeviceManager
{
public:
    DeviceManager();
    ~DeviceManager();
    DeviceManager(const DeviceManager &) = delete;
    DeviceManager &operator=(const DeviceManager &) = delete;

    /// A folder below the application's; nothing is looked up on disk here. `InvalidParameter` for
    /// an empty name, which changes nothing. Not guarded by the lock: set it before loading.
    ErrorCode setPluginDirPath(const QString &dir);

    // Device plug-ins and their devices: DevicePlugins.cpp
    ErrorCode loadDevicePlugin(const QString &pluginName, const QVersionNumber &version);
    QPair<ErrorCode, int> enumDevice(const QString &pluginName, const QVersionNumber &version);
    QPair<ErrorCode, qint64> createDevice(const QString &pluginName, const QVersionNumber &version);
    ErrorCode deleteDevice(const DeviceHandle handle);
    QPair<ErrorCode, QString> name(const DeviceHandle handle);
    QPair<ErrorCode, QFlags<BaseDeviceSpace::DeviceType>> types(const DeviceHandle handle);

    // Handle-checked operations of one device: DeviceOperations.cpp
    ErrorCode connectDeviceByIndex(const DeviceHandle handle, int index);
    ErrorCode getProperty(const DeviceHandle handle, const QString &property,
                          QMap<QString, QVariant> &values);
    ErrorCode setProperty(const DeviceHandle handle, const QString &property,
                          const QMap<QString, QVariant> &values);
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
    ErrorCode updateFireware(const DeviceHandle handle, ControllerSpace::FirewareType type,
                             const QByteArray &image);
    ErrorCode sendCommand(const DeviceHandle handle, ControllerSpace::CmdType type,
                          const QByteArray &payload);
    ErrorCode readCommand(const DeviceHandle handle, ControllerSpace::CmdType type,
                          QByteArray &answer);
    ErrorCode lockCommandChannel(const DeviceHandle handle);
    ErrorCode unlockCommandChannel(const DeviceHandle handle);
    ErrorCode rotate(const DeviceHandle handle, const QList<MotorSpace::RotateInfo> &movements);
    ErrorCode waitMotorStop(const DeviceHandle handle, const QList<MotorSpace::AxisType> &axes);
    ErrorCode resetMotor(const DeviceHandle handle, const QList<MotorSpace::AxisType> &axes);
    ErrorCode stopMotor(const DeviceHandle handle, const QList<MotorSpace::AxisType> &axes);
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

    // Direct link, discovery and connection: DirectLinkConnection.cpp
    ErrorCode connectDeviceBySerial(const DeviceHandle handle, const QString &serial);
    ErrorCode reconnectDevice(const DeviceHandle handle);
    ErrorCode disconnectDevice(const DeviceHandle handle);
    ErrorCode isConnectedOnU3(const QString &deviceName, bool &connected);
    ErrorCode getFirewareVersion(const QString &first, const QString &second, QString &version);
    ErrorCode getCamerasInformation(const QString &deviceName, QStringList &serials,
                                    QVector<int> &valuesA, QVector<int> &valuesB,
                                    QVector<bool> &flags, int &count);
    ErrorCode getCameraCount(const QString &deviceName, int &count);
    ErrorCode getStatusDescriptionString(const int &status, QString &text);
    ErrorCode getConnectCameraCount(int &count);
    ErrorCode getCameraSerialNumber(const int &index, QString &serial);
    ErrorCode getCameraResolution(const int &index, int &width, int &height);

    // Direct link, scan session: DirectLinkScan.cpp; command table: DirectLinkCommands.cpp
    ErrorCode setScanCallback(const DeviceHandle handle, void *function, void *context);
    ErrorCode setStatusCallback(const DeviceHandle handle, void *function, void *context);
    ErrorCode startScan(QMap<QString, QVariant> &parameters);
    ErrorCode stopScan();
    ErrorCode executeCommand(const QString &command, QMap<QString, QVariant> &parameters);

    // Direct link, settings: DirectLinkSettings.cpp
    ErrorCode setGainAndExpo(const DeviceHandle handle, unsigned short gain, double exposure,
                             signed char camera);
    ErrorCode getGainAndExpo(const DeviceHandle handle, unsigned short &gain, double &exposure,
                             signed char camera);
    ErrorCode setExopsureTime(const DeviceHandle handle, double exposure, signed char camera);
    ErrorCode getExposureTime(const DeviceHandle handle, double &exposure, signed char camera);
    ErrorCode setGain(const DeviceHandle handle, unsigned short gain, signed char camera);
    ErrorCode getGain(const DeviceHandle handle, unsigned short &gain, signed char camera);
    ErrorCode setVideoTriggerPeriod(const int period);
    ErrorCode getVideoTriggerPeriod(int &period);
    ErrorCode setStrobeDutioRatio(const int &first, const int &second, const int &third);
    ErrorCode getStrobeDutioRatio(int &first, int &second, int &third);
    ErrorCode setProjectDutioRatio(const int ratio);
    ErrorCode getProjectDutioRatio(int &ratio);
    ErrorCode SetProjectorBrightness(int brightness);
    ErrorCode getProjectorBrightness(int &brightness);
    ErrorCode getLaserLineDutioRatio(int &ratio);
    ErrorCode getIRLaserDutioRatio(int &ratio);
    ErrorCode setDistanceIndicate(const int status);

    // Direct link, capture, projection and user information: DirectLinkCapture.cpp
    ErrorCode grabImage(const DeviceHandle handle, unsigned int route,
                        QList<CameraSpace::ImageBlock *> &blocks);
    ErrorCode writeCustomInfo(const DeviceHandle handle, unsigned int address,
                              const QByteArray &data);
    ErrorCode readCustomInfo(const DeviceHandle handle, unsigned int address, QByteArray &data);
    ErrorCode project(const DeviceHandle handle, ProjectorSpace::MajorPatternType major,
                      ProjectorSpace::SubPatternType sub);

private:
    /// What the tables say about one handle at one moment.
    struct Registration
    {
        BaseDeviceSpace::DeviceInterface *device = nullptr; ///< null: not registered
        QObject *plugin = nullptr; ///< the root object that created it; null: none
        quint64 number = 0;
    };

    bool isLoaded(const QString &name, const QVersionNumber &version);
    IFactory *factoryOfPlugin(const QString &name, const QVersionNumber &version);
    BaseDeviceSpace::DeviceInterface *device(const DeviceHandle handle);
    Registration registrationOf(const DeviceHandle handle);
    void endRegistration(const DeviceHandle handle);
    QList<qint64> allHandles();
    void deleteAllDevices();
    void unloadAllPlugins();
    QPluginLoader *takeFirstLoader();

    template <typename Capability>
    Capability *capability(const DeviceHandle handle);

    // Direct link: what the scanner library was given and handed back. Strings are the library's.
    void *libraryDevice = nullptr;
    std::vector<char *> cameraSerials;
    std::vector<int> cameraValuesA;
    std::vector<int> cameraValuesB;
    std::vector<bool> cameraFlags;

    // Read for lookups, write for insertion and removal; never held while plug-in code runs.
    QReadWriteLock registryLock;
    QMap<qint64, QString> devices;             ///< device handle to plug-in key
    QMap<QString, DevicePluginRecord> plugins; ///< by plug-in key
    QMap<qint64, quint64> registrationNumbers; ///< by device handle; a newer one is higher
    quint64 lastRegistrationNumber = 0;

    QString pluginDirPath = QStringLiteral("Device");
    int colorMode = 0; ///< as given to the last startScan, even if it ran without color
};

} // namespace KvSyncCore

#endif
