#ifndef KVSYNC_FRAMEREPORT_H
#define KVSYNC_FRAMEREPORT_H

#include <QtCore/QJsonArray>
#include <QtCore/QJsonObject>
#include <QtCore/QString>

namespace KvSyncCli {

/// What a scan brought and cost.
struct FrameReport
{
    QString folder;
    QString contactSheet;
    QJsonArray images; ///< {"frame", "camera", "width", "height", "file", "sha256"} of the pixels
    int requested = 0;
    int delivered = 0;    ///< frames in the result
    int dropped = 0;      ///< as the plug-in counted them
    int produced = 0;     ///< the last frame's number, since numbers begin at 1
    double seconds = 0.0; ///< from the first frame's arrival to the last one's

    bool isBalanced() const { return produced == delivered + dropped; }
    double framesPerSecond() const { return seconds > 0.0 ? (delivered - 1) / seconds : 0.0; }
};

QJsonObject reportJson(const FrameReport &report);
QString reportText(const FrameReport &report);

} // namespace KvSyncCli

#endif
