#ifndef SCANNER_DIRECTLINK_DEVICE_H
#define SCANNER_DIRECTLINK_DEVICE_H

#include "Callbacks.h"
#include "Capture.h"
#include "Connection.h"
#include "DeviceFunctions.h"
#include "EventThread.h"
#include "Scan.h"
#include "Settings.h"

namespace Scanner::DirectLink {

/// The scanner of the direct link, open or not. It must live as long as the process: the library
/// may call back at any time.
///
/// Publishes "frameArrived", "progress", "scanEnded" and "statusChanged"; see ScannerPlugin.
class Device : public DeviceFunctions
{
public:
    /// `threadMaker` makes the thread of its events, when a scanner is opened.
    Device(Publish publishEvent, EventThread::Maker threadMaker);

    void setController(KvSyncCore::DeviceController *controller);
    /// {"serial": text}; an empty text takes the scanner that is there. Throws `ConnectFailed`,
    /// also if the thread of the events cannot be started.
    void open(const QVariantMap &parameters);
    /// See Connection::list.
    QVariantList list();
    /// Throws `HandleInvalid` unless the scanner is open.
    void requireOpen();

    /// Unless a slot calls it, no event of the event thread comes after it.
    void close() override;
    void reset() override;
    QVariant getProperty(const QString &name, const QVariant &value) override;
    void setProperty(const QString &name, const QVariant &value) override;
    void resetInterface(const QString &name) override;
    void setFlag(const QString &name, bool on) override;
    void project(const QString &pattern) override;
    QVariantList capture(const QString &kind, const QVariantMap &parameters) override;
    void rotate(const QString &name, const QVariantMap &parameters, bool isRelative) override;
    QVariant execute(const QString &command, const QVariantList &arguments) override;

private:
    struct Command
    {
        CommandInfo info;
        QVariant (Device::*run)(const QVariantList &arguments);
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
    Connection link;
    FrameReceiver receiver;
    StatusQueue status;
    Stream stream;
    Settings settings;
    EventThread events; ///< ends first: what it runs uses the others
};

} // namespace Scanner::DirectLink

#endif
