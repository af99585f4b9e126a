#ifndef KVSYNC_CONTACTSHEET_H
#define KVSYNC_CONTACTSHEET_H

#include <QtCore/QMap>
#include <QtCore/QPair>
#include <QtGui/QImage>

namespace KvSyncCli {

/// Small pictures of a scan on one sheet: a row a camera, a column a frame, their numbers beside
/// them. A long scan is shown by frames at even distances.
class ContactSheet
{
public:
    /// `frames` frames of how many pictures will be added at most.
    explicit ContactSheet(const QList<int> &frames);

    /// Keeps a small copy, if the frame is one of those shown.
    void add(int frame, int camera, const QImage &image);

    /// The sheet; null if nothing was added.
    QImage draw() const;

private:
    QList<int> shownFrames;
    QMap<QPair<int, int>, QImage> pictures; ///< by camera and frame
};

} // namespace KvSyncCli

#endif
