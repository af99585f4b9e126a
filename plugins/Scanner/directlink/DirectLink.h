#ifndef SCANNER_DIRECTLINK_H
#define SCANNER_DIRECTLINK_H

#include <KvSyncCore/DeviceController.h>
#include <QtCore/QString>
#include <QtCore/QVariant>

#include <mutex>

namespace Scanner {

/// The one scanner behind the direct link, and whether it is open. The link takes no lock of its
/// own, so every call goes through the one here; any thread may call.
class DirectLink
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
    /// Stops a scan, leaves the projector dark and disconnects. Closed afterwards, even if the
    /// library refuses to disconnect, which throws `ConnectFailed`.
    void close(qint64 askedHandle);
    /// Closes the cameras and connects them again. Throws `ConnectFailed`.
    void reset(qint64 askedHandle);

    /// One map for each scanner that is open or can be opened.
    QVariantList list();
    /// What the open scanner says about itself.
    QVariantMap facts();

    /// Throws `HandleInvalid` unless it is the open scanner's.
    void requireOpen(qint64 askedHandle);

    /// Runs `action` with the controller, alone. Throws `HandleInvalid` if no scanner is open.
    template <typename Action>
    auto call(Action action)
    {
        const std::lock_guard<std::mutex> lock(mutex);
        checkOpen(handle);
        return action(*controller);
    }

    /// The same; does nothing if no scanner is open.
    template <typename Action>
    void callIfOpen(Action action)
    {
        const std::lock_guard<std::mutex> lock(mutex);
        if (isOpen)
            action(*controller);
    }

private:
    void checkOpen(qint64 askedHandle) const;
    QString whyNotConnected(const QString &serial);

    std::mutex mutex;
    KvSyncCore::DeviceController *controller = nullptr;
    bool isOpen = false;
    QString openSerial;
};

} // namespace Scanner

#endif
