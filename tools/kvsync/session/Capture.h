#ifndef KVSYNC_CAPTURE_H
#define KVSYNC_CAPTURE_H

#include "OpenScanner.h"
#include "ProgressBar.h"
#include "output/ScanWriter.h"

#include <exception>
#include <optional>

namespace KvSyncCli {

/// One scan, from an open device into a folder.
class Capture
{
public:
    Capture(Interruption &ofProcess, ScanFolder &folder);

    /// Takes the device's events, on the thread that captures. Throws nothing: Qt would have to
    /// carry it.
    void hear(const Event &event);

    /// Captures and closes the device. `parameters` are captureImage's; `facts` begin the record.
    /// Throws what ended it before its last frame, once the record tells of it.
    void run(OpenScanner &openDevice, QVariantMap parameters, const QJsonObject &facts);

    const ScanRecord &record() const { return writer.record(); }

private:
    void take(const QVariantList &images);
    void show(const QVariantMap &account);
    void finish();
    void noteFailure();
    void tell();
    QString reason() const;

    Interruption &interruption;
    ScanWriter writer;
    std::optional<ProgressBar> bar{std::in_place};
    OpenScanner *device = nullptr;
    QVariantMap end; ///< of the event scanEnded; empty if no scan had begun
    std::exception_ptr failure;
    QString failureText;
};

} // namespace KvSyncCli

#endif
