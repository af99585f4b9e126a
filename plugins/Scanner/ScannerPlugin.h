#ifndef SCANNER_SCANNERPLUGIN_H
#define SCANNER_SCANNERPLUGIN_H

#include "DirectLink.h"
#include "EventThread.h"
#include "FrameReceiver.h"
#include "Settings.h"
#include "Stream.h"

#include <KvSyncCore/CommandInterface.h>

/// A scanner service over the core's DeviceController: the command plug-in "Scanner", version 1.0.
///
/// Failures are KvSyncTool::Exception. Any thread may call, several at once; one scan runs at a
/// time. Events, by signal name and payload:
///
///   frameArrived   one map {"camera", "frame", "width", "height", "bitDepth", "data"} an image
///   progress       one map {"delivered", "dropped", "frames"}, during captureImage
///   statusChanged  one map {"first", "second"}: the scanner's two status bytes
///
/// Those of captureImage come on the thread that called it, all others on a thread of the
/// plug-in's own, where what a slot throws is logged. A slot may call the plug-in.
class ScannerPlugin : public CommandInterface
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID CommandInterface_iid)
    Q_INTERFACES(CommandInterface)

public:
    ScannerPlugin();

    void setDeviceController(KvSyncCore::DeviceController *controller) override;
    /// One map for each scanner that is open or can be opened: {"serial", "connected", "cameras",
    /// "fastUsb"} and, if it is open, {"handle"}.
    QVariantList getRunningDevList() override;
    /// {"serial": text}: the scanner of the direct link; an empty text takes the one that is there.
    qint64 openDevices(const QVariantMap &parameters) override;
    /// Ends a scan first, in whatever thread it runs. Unless a slot calls it, no event of the
    /// plug-in's own thread comes after it.
    void closeDevices(qint64 handle) override;
    /// Closes the scanner's cameras and connects them again.
    void resetDevices(qint64 handle) override;
    /// A setting by its name; "list" answers with all of them: see Settings. The value is not used.
    QVariant getProperty(qint64 handle, const QString &name, const QVariant &value) override;
    void setProperty(qint64 handle, const QString &name, const QVariant &value) override;
    /// "light": lasers and projector off. "settings", or a setting's name: as it was when the
    /// scanner was opened.
    void resetInterface(qint64 handle, const QString &name) override;
    /// See switchFlag.
    void setFlagBitInterface(qint64 handle, const QString &name, bool flag) override;
    /// See projectPattern.
    void project(qint64 handle, const QString &pattern) override;
    /// "scan": see captureScan. "color": see captureSnapshot.
    QVariantList captureImage(qint64 handle, const QString &kind,
                              const QVariantMap &parameters) override;
    /// See rotateTurntable; `flag` makes the angle a relative one.
    void turntableRotate(qint64 handle, const QString &name, const QVariantMap &parameters,
                         bool flag) override;
    /// "startScan" [parameters] and "stopScan": see Stream. "info": facts about the scanner.
    /// "readUserInformation" [address] and "writeUserInformation" [address, text]. And each other
    /// command of the direct link, [parameters]: see runLinkCommand.
    QVariant execute(qint64 handle, const QString &command, const QVariantList &arguments) override;

private:
    static void receiveStatus(const void *const &context, const unsigned char &first,
                              const unsigned char &second);
    void publish(const QString &name, const QVariantList &payload);
    Scanner::Publish publisher();
    QVariant startScan(const QVariantList &arguments);
    QVariant stopScan(const QVariantList &arguments);
    QVariant info(const QVariantList &arguments);
    QVariant readUserInformation(const QVariantList &arguments);
    QVariant writeUserInformation(const QVariantList &arguments);

    Scanner::DirectLink link;
    Scanner::FrameReceiver receiver;
    Scanner::EventThread events;
    Scanner::Stream stream;
    Scanner::Settings settings;
};

#endif
