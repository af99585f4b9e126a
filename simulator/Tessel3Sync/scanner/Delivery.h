// A delivery as it is planned: faults of the frame, and the number that it is told to have. Nothing
// here knows of scanners, threads or time.
#ifndef TESSEL3SYNCSIMULATOR_DELIVERY_H
#define TESSEL3SYNCSIMULATOR_DELIVERY_H

#include <Tessel3SyncSimulator/Control.h>

#include <vector>

namespace Tessel3SyncSimulator {

/// What one call of the scan callback hands over.
struct Delivery
{
    std::vector<unsigned char *> images;
    int width = 0;
    int height = 0;
    std::vector<int> numbers; ///< one for each image

    /// Buffers that the sizes told ask for, in the place of smaller ones.
    std::vector<std::vector<unsigned char>> enlarged;
};

/// Makes of a good delivery what is planned for its frame; the numbers stay.
void alter(Delivery &delivery, const FrameFault &fault);

} // namespace Tessel3SyncSimulator

#endif
