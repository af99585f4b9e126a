#ifndef KVSYNC_SCANRECORD_H
#define KVSYNC_SCANRECORD_H

#include <QtCore/QByteArray>
#include <QtCore/QJsonObject>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <deque>

namespace KvSyncCli {

/// One image of a scan.
struct ImageEntry
{
    int frame = 0;
    int camera = 0;
    int width = 0;
    int height = 0;
    double timeMs = 0.0; ///< from the scan's start to the frame's arrival
    QString file;        ///< its name
    QByteArray sha256;   ///< of the pixels, 32 bytes; empty until the file is written
    QString failure;     ///< why there is no file; empty if there is or will be one
};

/// What a scan was asked for, brought and cost.
struct ScanRecord
{
    QJsonObject facts;    ///< what is known before the first frame
    QString reason;       ///< why it ended; empty while it runs
    QString text;         ///< the reason as a sentence
    QString began;        ///< ISO 8601, UTC
    QString ended;        ///< likewise
    QJsonObject account;  ///< the plug-in's own
    int frames = 0;       ///< that came here
    double firstMs = 0.0; ///< when the first of them arrived
    double lastMs = 0.0;  ///< and the last
    bool hasContactSheet = false;
    std::deque<ImageEntry> images; ///< those that came, in this order

    double seconds() const;
    /// Counted over the intervals between frames; 0 if there is none.
    double framesPerSecond() const;
    /// What is wrong with images or frames, a sentence each; none if all is well.
    QStringList warnings() const;
    /// Whether every frame that the plug-in counted came here or was dropped for a cause.
    bool isBalanced() const;
};

/// Writes it as a JSON object. Throws `PathNotExist`; an earlier file stays.
void writeRecord(const QString &path, const ScanRecord &record);

/// The same for people.
QString recordText(const ScanRecord &record);

} // namespace KvSyncCli

#endif
