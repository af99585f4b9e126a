#ifndef KVSYNC_CONTACTSHEET_H
#define KVSYNC_CONTACTSHEET_H

#include <QtCore/QMap>
#include <QtGui/QImage>

#include <mutex>

namespace KvSyncCli {

/// Small pictures of a scan on one sheet: a row a camera, a column a frame, their numbers beside
/// them; in color if one of the pictures is. However long a scan gets, few pictures are held: they
/// stand at even distances, which double as the scan goes on. Any thread.
class ContactSheet
{
public:
    /// Keeps a small copy if the sheet has a place for it. `place` counts the frames of the scan,
    /// from 0.
    void add(int place, int frame, int camera, const QImage &image);

    /// The sheet; null if nothing was added.
    QImage draw() const;

private:
    struct Column
    {
        int frame = 0;
        QMap<int, QImage> pictures; ///< by camera
    };

    bool wants(int place) const;
    void insert(int place, int frame, int camera, const QImage &picture);
    QList<Column> chosenColumns() const;

    mutable std::mutex mutex;
    int distance = 1;
    QMap<int, Column> columns; ///< by place
};

} // namespace KvSyncCli

#endif
