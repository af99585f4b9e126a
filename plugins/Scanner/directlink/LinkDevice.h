#ifndef SCANNER_LINKDEVICE_H
#define SCANNER_LINKDEVICE_H

#include "Device.h"
#include "DirectLink.h"
#include "EventThread.h"
#include "FrameReceiver.h"
#include "Publish.h"
#include "Settings.h"
#include "StatusQueue.h"
#include "Stream.h"

namespace Scanner {

/// The scanner of the direct link, open or not. It must live as long as the process: the library
/// may call back at any time.
///
/// Publishes "frameArrived", "progress", "scanEnded" and "statusChanged"; see ScannerPlugin.
class LinkDevice : public Device
{
public:
    /// `threadMaker` makes the thread of its events, when a scanner is opened.
    LinkDevice(Publish publishEvent, EventThread::Maker threadMaker);

    void setController(KvSyncCore::DeviceController *controller);
    /// {"serial": text}; an empty text takes the scanner that is there. Throws `ConnectFailed`,
    /// also if the thread of the events cannot be started.
    void open(const QVariantMap &parameters);
    /// See DirectLink::list.
    QVariantList list();
    /// Throws `HandleInvalid` unless the scanner is open.
    void requireOpen();

    /// Ends a scan first, in whatever thread it runs. Unless a slot calls it, no event of the event
    /// thread comes after it.
    void close() override;
    /// Ends a scan, closes the scanner's cameras and connects them again: the way back after the
    /// connection was lost.
    void reset() override;
    /// A setting by its name; "list" answers with all of them: see Settings. The value is not used.
    QVariant getProperty(const QString &name, const QVariant &value) override;
    void setProperty(const QString &name, const QVariant &value) override;
    /// "light": lasers and projector off. "settings", or a setting's name: as it was when the
    /// scanner was opened.
    void resetInterface(const QString &name) override;
    /// See switchFlag.
    void setFlag(const QString &name, bool on) override;
    /// See projectPattern.
    void project(const QString &pattern) override;
    /// "scan": see captureScan. "color": see captureSnapshot.
    QVariantList capture(const QString &kind, const QVariantMap &parameters) override;
    /// See rotateTurntable.
    void rotate(const QString &name, const QVariantMap &parameters, bool isRelative) override;
    /// "commands": what it serves, see CommandInfo::describe.
    /// "startScan" [parameters] and "stopScan": see Stream. "info": facts about the scanner.
    /// "readUserInformation" [address] and "writeUserInformation" [address, text]. And each other
    /// command of the direct link, [parameters]: see runLinkCommand.
    QVariant execute(const QString &command, const QVariantList &arguments) override;

private:
    struct Command
    {
        CommandInfo info;
        QVariant (LinkDevice::*run)(const QVariantList &arguments);
    };

    static const std::vector<Command> &ownCommands();
    static void receiveStatus(const void *const &context, const unsigned char &first,
                              const unsigned char &second) noexcept;
    void startThread();
    void passStatus();
    FrameAccount endScan(const QString &text);
    void endScanQuietly(const QString &text);
    void endScanIfLost();
    QVariant listCommands(const QVariantList &arguments);
    QVariant startScan(const QVariantList &arguments);
    QVariant stopScan(const QVariantList &arguments);
    QVariant info(const QVariantList &arguments);
    QVariant readUserInformation(const QVariantList &arguments);
    QVariant writeUserInformation(const QVariantList &arguments);

    const Publish publish;
    DirectLink link;
    FrameReceiver receiver;
    StatusQueue status;
    Stream stream;
    Settings settings;
    EventThread events; ///< ends first: what it runs uses the others
};

} // namespace Scanner

#endif
