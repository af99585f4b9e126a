#ifndef SCANNER_DIRECTLINK_CONNECTION_H
#define SCANNER_DIRECTLINK_CONNECTION_H

#include <KvSyncCore/DeviceController.h>
#include <QtCore/QString>
#include <QtCore/QVariant>

#include <mutex>

namespace Scanner::DirectLink {

/// The one scanner behind the direct link: closed, open, or open with its connection lost. A
/// connection that was found lost stays so until `reset`, also when the scanner is back: its
/// cameras are closed then. The link takes no lock of its own, so every call goes through the one
/// here; any thread may call.
class Connection
{
public:
    /// The handle of the open scanner; there is one scanner, so it never changes.
    static constexpr qint64 handle = 1;

    /// Everything goes to `newController` from now on. A scanner that is not connected behind it
    /// counts as closed.
    void setController(KvSyncCore::DeviceController *newController);

    /// Throws `ConnectFailed` with the reason. `statusFunction`, a Tessel3Sync::StatusCallBack, is
    /// registered with its context, which must live as long as the process.
    void open(const QString &serial, void *statusFunction, void *statusContext);
    /// Stops a scan, leaves lasers and projector dark and disconnects. Closed afterwards, even if
    /// the library refuses to disconnect, which throws `ConnectFailed`.
    void close(qint64 askedHandle);
    /// Closes the cameras and connects them again, also after the connection was lost. Throws
    /// `ConnectFailed`, as long as the scanner is not back for one.
    void reset(qint64 askedHandle);

    /// One map for each scanner that is open or can be opened: see ScannerPlugin.
    QVariantList list();
    /// What the open scanner says about itself.
    QVariantMap facts();

    /// Throws `HandleInvalid` unless it is the open scanner's, its connection lost or not.
    void requireOpen(qint64 askedHandle);
    /// Asks the scanner. Throws `HandleInvalid` if none is open, `ConnectFailed` if its connection
    /// is lost.
    void requireConnection();
    /// Runs `action` if the open scanner, asked, turns out to be lost.
    template <typename Action>
    void ifLost(Action action)
    {
        const std::lock_guard<std::mutex> lock(mutex);
        if (state != State::Closed && !isConnected())
            action();
    }

    /// Runs `action` with the controller, alone. If it does not return `Success`, its code is
    /// thrown with `text`, or `ConnectFailed` if the connection turns out to be lost; that, and
    /// `HandleInvalid`, are thrown before it runs, too.
    template <typename Action>
    void run(const QString &text, Action action)
    {
        const std::lock_guard<std::mutex> lock(mutex);
        checkOpen(handle);
        if (state == State::Lost)
            raiseLost();
        expect(action(*controller), text);
    }

    /// Runs `action` with the controller if the scanner is open, its connection lost or not.
    template <typename Action>
    void callIfOpen(Action action)
    {
        const std::lock_guard<std::mutex> lock(mutex);
        if (state != State::Closed)
            action(*controller);
    }

private:
    enum class State { Closed, Open, Lost };

    void checkOpen(qint64 askedHandle) const;
    bool isConnected();
    void expect(ErrorCode result, const QString &text);
    [[noreturn]] static void raiseLost();
    QVariantList connectedCameras();
    QString whyNotConnected(const QString &serial);

    std::mutex mutex;
    KvSyncCore::DeviceController *controller = nullptr;
    State state = State::Closed;
    QString openSerial;
};

} // namespace Scanner::DirectLink

#endif
