#ifndef SCANNER_SCANNERPLUGIN_H
#define SCANNER_SCANNERPLUGIN_H

#include "directlink/Device.h"
#include "plugindevices/Registry.h"

#include <KvSyncCore/CommandInterface.h>

/// The scanner service over the core's DeviceController: the command plug-in "Scanner",
/// version 1.0. It serves the scanner of the direct link (handle 1) and the devices of device
/// plug-ins (their handles are the core's) with the same functions; DeviceFunctions says what they
/// do, and README.md what their names and parameters are for each.
///
/// Failures are KvSyncTool::Exception. Any thread may call, several at once; one scan runs on a
/// device at a time. Events, by signal name and payload:
///
///   frameArrived   one map {"camera", "frame", "width", "height", "bitDepth", "data", "timeMs"}
///   per
///                  image
///   progress       the account so far, after each frame of captureImage: see FrameAccount
///   scanEnded      {"reason", "text", "account"}: complete, stopped, connectionLost or failed
///   statusChanged  {"first", "second"}: the scanner's two status bytes; {"dropped"} if so many
///                  before it were dropped, since the host's slots are slow
///
/// The last only from the direct link. Those of captureImage come on the thread that called it, all
/// others on a thread of the plug-in's own, where what a slot throws is logged, as it is for
/// scanEnded everywhere. A slot may call the plug-in.
class ScannerPlugin : public CommandInterface
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID CommandInterface_iid)
    Q_INTERFACES(CommandInterface)

public:
    ScannerPlugin();

    void setDeviceController(KvSyncCore::DeviceController *controller) override;
    /// One map for the scanner of the direct link, if it is open or can be opened: {"serial",
    /// "connected" (open, and its connection not lost), "present" (it responds), "cameras",
    /// "fastUsb"} and, if it is open, {"handle"}. Then one for each open device of a device
    /// plug-in: {"plugin", "version", "index", "name", "types", "handle"}.
    QVariantList getRunningDevList() override;
    /// {"serial": text}: the scanner of the direct link; an empty text takes the one that is there.
    /// {"plugin": text, "version": text, "index": number}: a device of a device plug-in.
    qint64 openDevices(const QVariantMap &parameters) override;
    void closeDevices(qint64 handle) override;
    void resetDevices(qint64 handle) override;
    QVariant getProperty(qint64 handle, const QString &name, const QVariant &value) override;
    void setProperty(qint64 handle, const QString &name, const QVariant &value) override;
    void resetInterface(qint64 handle, const QString &name) override;
    void setFlagBitInterface(qint64 handle, const QString &name, bool flag) override;
    void project(qint64 handle, const QString &pattern) override;
    QVariantList captureImage(qint64 handle, const QString &kind,
                              const QVariantMap &parameters) override;
    /// `flag` makes the angle a relative one.
    void turntableRotate(qint64 handle, const QString &name, const QVariantMap &parameters,
                         bool flag) override;
    /// Handle 0 is the plug-in itself: "listDevices" lists the devices of a device plug-in.
    QVariant execute(qint64 handle, const QString &command, const QVariantList &arguments) override;

private:
    std::shared_ptr<Scanner::DeviceFunctions> device(qint64 handle);
    QVariant executeWithoutDevice(const QString &command, const QVariantList &arguments);
    Scanner::Publish publisher();

    const std::shared_ptr<Scanner::DirectLink::Device> link;
    Scanner::PluginDevices::Registry plugins;
};

#endif
