#ifndef KVSYNC_DIGITS_H
#define KVSYNC_DIGITS_H

#include <QtGui/QImage>

namespace KvSyncCli {

/// Writes a number from 0 in black on an image, its left upper corner at the place
/// given; what does not fit is cut off. Fonts would need a whole graphical application.
void drawNumber(QImage &image, int number, int left, int top);

} // namespace KvSyncCli

#endif
