#ifndef KVSYNC_SCANRECORDER_H
#define KVSYNC_SCANRECORDER_H

#include "output/Console.h"
#include "output/ScanWriter.h"

#include <exception>
#include <optional>

namespace KvSyncCli {

class Interruption;
class ServiceSession;
struct PluginEvent;

/// Takes the frames of one scan from an open device and records them in a folder. Each image is
/// written when it comes; few are held. The record stands there from the beginning and tells in the
/// end what came and why it ended.
class ScanRecorder
{
public:
    ScanRecorder(Interruption &ofProcess, ScanFolder &folder);

    /// Handles the device's events, on the thread that captures. Throws nothing: Qt would have to
    /// carry it.
    void onEvent(const PluginEvent &event);

    /// Captures and closes the device. `parameters` are captureImage's; `asked` is all that the
    /// record says was asked for. Throws what ended it before its last frame, once the record tells
    /// of it, `PathNotExist` or `DeviceOperationFailed` if a file cannot be written.
    void run(ServiceSession &openSession, QVariantMap parameters, const QVariantMap &asked);

    const ScanRecord &record() const { return writer.record(); }

private:
    void take(const QVariantList &images);
    void show(const QVariantMap &account);
    void finish();
    void noteFailure();
    void conclude();
    QString reason() const;

    Interruption &interruption;
    ScanWriter writer;
    std::optional<ProgressBar> bar{std::in_place};
    ServiceSession *session = nullptr;
    QVariantMap end; ///< of the event scanEnded; empty if no scan had begun
    std::exception_ptr failure;
    QString failureText;
};

} // namespace KvSyncCli

#endif
