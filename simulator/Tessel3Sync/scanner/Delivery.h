// What one call of the scan callback hands over, and what a fault makes of it. Nothing here knows
// of scanners, threads or time.
#ifndef TESSEL3SYNCSIMULATOR_DELIVERY_H
#define TESSEL3SYNCSIMULATOR_DELIVERY_H

#include <Tessel3SyncSimulator/Control.h>

#include <vector>

namespace Tessel3SyncSimulator {

struct Delivery
{
    std::vector<unsigned char *> images;
    int width = 0;
    int height = 0;
    std::vector<int> numbers; ///< one for each image

    /// Buffers as large as the reported size asks for, where the images are smaller.
    std::vector<std::vector<unsigned char>> enlarged;
};

/// Makes a good delivery the bad one that is planned for its frame. The numbers stay.
void applyFault(Delivery &delivery, const FrameFault &fault);

/// Turns every byte into its complement.
void complement(unsigned char *bytes, std::size_t count);

} // namespace Tessel3SyncSimulator

#endif
